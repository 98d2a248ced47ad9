#pragma once

#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/panel.h>

namespace zr {

class ColorPickerView;

/// The panel's colour has changed; its object is the panel.
[[nodiscard]] ZR_EXPORT Ref<NSString> NSColorPanelColorDidChangeNotification();

/// The panel in which a user chooses a colour, beside the windows that the colour is for.
///
/// How it looks is up to the toolkit; nothing in it is handed key presses. Main thread only.
class ZR_EXPORT NSColorPanel : public NSPanel {
    ZR_DECLARE_CLASS(NSColorPanel, NSPanel)
  public:
    NSColorPanel();
    ~NSColorPanel() override;

    /// The same one every time, made when it is first asked for.
    [[nodiscard]] static Ref<NSColorPanel> sharedColorPanel();

    id init() override;
    id initWithContentRect_styleMask(NSRect contentRect, NSUInteger styleMask) override;

    /// White at first, never null.
    [[nodiscard]] Ref<NSColor> color() const { return m_color; }
    /// Posts `NSColorPanelColorDidChangeNotification` and sends the action, as for a colour that the user chose. Null
    /// and the colour that it has already do nothing.
    virtual void setColor(NSColor* color);
    /// Whether colours are told of while the user still drags, or only in the end; false at first.
    [[nodiscard]] bool isContinuous() const { return m_isContinuous; }
    void setContinuous(bool continuous) { m_isContinuous = continuous; }
    /// Whether the user can choose how opaque the colour is; false at first.
    [[nodiscard]] bool showsAlpha() const { return m_showsAlpha; }
    void setShowsAlpha(bool shows);

    /// Who is sent the action, with the panel as its argument; nobody at first. Not kept. One that does not have the
    /// action is sent nothing.
    void setTarget(NSObject* target) { m_target = Weak<NSObject>(target); }
    void setAction(SEL action) { m_action = action; }

    /// Asked by message, from C++ too, so that whoever replaces the operation decides for every caller.
    [[nodiscard]] bool canBecomeKeyWindow() const override;

    // For toolkits

    /// The user has come to that colour, and stays there unless `isDragging`.
    void userDidChoose(NSColor* color, bool isDragging);

  private:
    void announce();

    Ref<NSColor> m_color;
    Ref<ColorPickerView> m_picker;
    Weak<NSObject> m_target;
    SEL m_action;
    bool m_isContinuous = false;
    bool m_showsAlpha = false;
    /// Whether there is a colour that nobody has been told of yet.
    bool m_isUntold = false;
};

/// What fills a colour panel: a toolkit puts its own means of choosing a colour there, and looks at the panel again
/// whenever the view's content changes. Main thread only.
class ZR_EXPORT ColorPickerView : public NSView {
    ZR_DECLARE_CLASS(ColorPickerView, NSView)
  public:
    ColorPickerView();
    ~ColorPickerView() override;

    /// The one that it was made for; null when that is gone.
    [[nodiscard]] Ref<NSColorPanel> panel() const { return m_panel.lock(); }

  private:
    friend class NSColorPanel;

    Weak<NSColorPanel> m_panel;
};

} // namespace zr
