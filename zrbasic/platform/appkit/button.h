#pragma once

#include <zrbasic/platform/appkit/button_cell.h>
#include <zrbasic/platform/appkit/control.h>

namespace zr {

/// A button, check box or radio button. A click, which is a press and a release over it, or the space or return key
/// changes its state as its type says and then sends the action. What is said of title, image and state is done by its
/// cell (see button_cell.h); with a cell of another kind those read as nothing and are not set.
///
/// Main thread only.
class ZR_EXPORT NSButton : public NSControl {
    ZR_DECLARE_CLASS(NSButton, NSControl)
  public:
    NSButton();
    ~NSButton() override;

    [[nodiscard]] static Class* cellClass();
    /// As large as they need to be. Null titles are empty ones.
    [[nodiscard]] static Ref<NSButton> buttonWithTitle_target_action(NSString* title, NSObject* target, SEL action);
    [[nodiscard]] static Ref<NSButton> checkboxWithTitle_target_action(NSString* title, NSObject* target, SEL action);
    [[nodiscard]] static Ref<NSButton> radioButtonWithTitle_target_action(NSString* title, NSObject* target,
                                                                          SEL action);

    [[nodiscard]] Ref<NSString> title() const;
    void setTitle(NSString* title);
    [[nodiscard]] Ref<NSImage> image() const;
    void setImage(NSImage* image);
    [[nodiscard]] NSCellImagePosition imagePosition() const;
    void setImagePosition(NSCellImagePosition position);
    [[nodiscard]] Ref<NSString> keyEquivalent() const;
    void setKeyEquivalent(NSString* key);
    [[nodiscard]] NSUInteger keyEquivalentModifierMask() const;
    void setKeyEquivalentModifierMask(NSUInteger modifiers);
    void setButtonType(NSButtonType type);
    [[nodiscard]] NSInteger state() const;
    void setState(NSInteger state);
    [[nodiscard]] bool allowsMixedState() const;
    void setAllowsMixedState(bool allows);
    void setNextState();
    [[nodiscard]] bool isBordered() const;
    void setBordered(bool bordered);
    [[nodiscard]] bool isHighlighted() const;
    /// Shows it as pressed, or no longer.
    virtual void highlight(bool pressed);

    /// As a user clicks it, unless it is disabled. The action may let go of the button.
    virtual void performClick(NSObject* sender);

    bool becomeFirstResponder() override;
    bool resignFirstResponder() override;
    void mouseDown(NSEvent* event) override;
    void mouseDragged(NSEvent* event) override;
    void mouseUp(NSEvent* event) override;
    void keyDown(NSEvent* event) override;
    /// Clicks it for the key of its `keyEquivalent`, unless it is disabled or hidden. A key that is held down clicks
    /// once.
    bool performKeyEquivalent(NSEvent* event) override;
    void setEnabled(bool enabled) override;
    void viewWillMoveToWindow(NSWindow* window) override;

  private:
    [[nodiscard]] NSButtonCell* buttonCell() const;
    [[nodiscard]] bool isOver(NSEvent* event) const;
    void stopTracking();

    bool m_isPressed = false;
};

} // namespace zr
