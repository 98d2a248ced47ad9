#pragma once

#include <zrbasic/platform/appkit/view_controller.h>

namespace zr {

class NSTabView;

/// A tab of a tab view and what shows behind it. Main thread only.
class ZR_EXPORT NSTabViewItem : public NSObject {
    ZR_DECLARE_CLASS(NSTabViewItem, NSObject)
  public:
    NSTabViewItem();
    ~NSTabViewItem() override;

    /// Null counts as none, as with `init`.
    virtual id initWithIdentifier(NSObject* identifier);
    /// An item that shows the controller's view, with its title as the label; null shows nothing.
    [[nodiscard]] static Ref<NSTabViewItem> tabViewItemWithViewController(NSViewController* controller);

    /// What the item is known by, compared by `isEqual`; null at first. Kept.
    [[nodiscard]] id identifier() const { return m_identifier; }
    void setIdentifier(NSObject* identifier) { m_identifier = id(identifier); }
    /// What its tab says; empty at first, and for null. Copied when set.
    [[nodiscard]] Ref<NSString> label() const { return m_label; }
    void setLabel(NSString* label);
    /// The controller's, made when it is first asked for, where there is a controller. Null when there is none.
    [[nodiscard]] Ref<NSView> view();
    /// Has no effect while there is a controller.
    void setView(NSView* view);
    [[nodiscard]] Ref<NSViewController> viewController() const { return m_viewController; }
    void setViewController(NSViewController* controller);
    /// Null when it is in none.
    [[nodiscard]] Ref<NSTabView> tabView() const;

  private:
    friend class NSTabView;

    id m_identifier;
    Ref<NSString> m_label;
    Ref<NSView> m_view;
    Ref<NSViewController> m_viewController;
    Weak<NSTabView> m_tabView;
};

} // namespace zr
