#pragma once

#include <zrbasic/platform/appkit/text_view.h>

#include <functional>

namespace zr {

/// Many lines of styled text with links, to be read only; as large as its text, but at least 20 by 20 points.
///
///     auto terms = make<ZRXHTMLLabel>();
///     terms->setHTMLString("I accept the <a href=\"https://example.com/terms\">terms</a>."_ns);
///     terms->setLinkClickAction([](NSObject* link, NSUInteger index) { ... });
///
/// It is its own delegate. Text that is not valid (see `ZRXTextValid`) is not shown: what was there stays. Main thread
/// only.
class ZR_EXPORT ZRXHTMLLabel : public NSTextView {
    ZR_DECLARE_CLASS(ZRXHTMLLabel, NSTextView)
  public:
    /// Called with what the link carries, a URL or a string, and the index of the character that was clicked on.
    using LinkClickAction = std::function<void(NSObject* link, NSUInteger index)>;

    ZRXHTMLLabel();
    ~ZRXHTMLLabel() override;

    id initWithFrame(NSRect frame) override;

    /// Shows HTML, as the toolkit reads it.
    virtual void setHTMLString(NSString* html);
    /// Shows text in which anchors are links and everything else is as it stands (see collections/html_links.h). A link
    /// target that is no URL raises `NSInvalidArgumentException`, and nothing changes.
    virtual void setCustomizedHTMLString(NSString* text);

    /// Empty at first: a click opens the link then, as in any text view. One that is set has the clicks to itself.
    [[nodiscard]] const LinkClickAction& linkClickAction() const { return m_linkClickAction.get(); }
    virtual void setLinkClickAction(const LinkClickAction& action);
    /// Runs the action; false when there is none.
    virtual bool textView_clickedOnLink_atIndex(NSTextView* view, NSObject* link, NSUInteger index);

    /// The extent of the text, its lines broken only where it says so; 0 by 0 when it is empty.
    [[nodiscard]] NSSize intrinsicContentSize() const override;

  private:
    void show(NSTextStorage* storage);

    detail::Slot<LinkClickAction> m_linkClickAction;
};

} // namespace zr
