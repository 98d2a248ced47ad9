#pragma once

#include <zrbasic/platform/appkit/view.h>

namespace zr {

/// Keeps a view, which it makes when it is first asked for.
///
/// In the responder chain it stands between its view and the view's superview. A class of one's own overrides
/// `loadView` to make its view, and `viewDidLoad` to fill it. Main thread only.
class ZR_EXPORT NSViewController : public NSResponder {
    ZR_DECLARE_CLASS(NSViewController, NSResponder)
  public:
    NSViewController();
    ~NSViewController() override;

    /// Made by `loadView` when there is none. Raises `NSInternalInconsistencyException` when that sets none either, and
    /// when it is asked for the view that it is about to make.
    [[nodiscard]] virtual Ref<NSView> view();
    /// The view before is nobody's. Null lets the next question make a new one.
    virtual void setView(NSView* view);
    [[nodiscard]] bool isViewLoaded() const { return m_view != nullptr; }
    /// Sets the view; a plain one with the zero frame unless overridden. Not to be called by others.
    virtual void loadView();
    /// Called after `loadView`; nothing unless overridden.
    virtual void viewDidLoad();

    /// What the view is called, such as on the tab of a tab view; null at first. Copied when set.
    [[nodiscard]] Ref<NSString> title() const { return m_title; }
    virtual void setTitle(NSString* title);
    /// What the controller is known by; null at first. Copied when set.
    [[nodiscard]] Ref<NSString> identifier() const { return m_identifier; }
    void setIdentifier(NSString* identifier);
    /// What the view shows; null at first. Kept.
    [[nodiscard]] id representedObject() const { return m_representedObject; }
    virtual void setRepresentedObject(NSObject* object);

    /// The view's superview, or the window that it is the content of, unless another was set.
    [[nodiscard]] Ref<NSResponder> nextResponder() const override;
    void setNextResponder(NSResponder* responder) override;

  private:
    void letGoOfView();

    Ref<NSView> m_view;
    bool m_isLoading = false;
    bool m_hasOwnNextResponder = false;
    Ref<NSString> m_title;
    Ref<NSString> m_identifier;
    id m_representedObject;
};

} // namespace zr
