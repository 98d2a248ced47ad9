#include <zrbasic/ui/html_label.h>

#include <zrbasic/collections/html_links.h>
#include <zrbasic/core/text.h>
#include <zrbasic/platform/appkit/layout_constraint.h>
#include <zrbasic/platform/appkit/layout_manager.h>
#include <zrbasic/platform/foundation/data.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/mutable_attributed_string.h>

namespace zr {
namespace {

/// Both directions; with one view in a format they change nothing.
constexpr NSUInteger formatOptions = 3 << 16;

} // namespace

ZR_DEFINE_CLASS(ZRXHTMLLabel) {
    is.property<ZRXHTMLLabel, &ZRXHTMLLabel::m_linkClickAction>("linkClickAction", "setLinkClickAction");
    is.method<&ZRXHTMLLabel::setHTMLString>("setHTMLString:");
    is.method<&ZRXHTMLLabel::setCustomizedHTMLString>("setCustomizedHTMLString:");
    is.method<&ZRXHTMLLabel::textView_clickedOnLink_atIndex>("textView:clickedOnLink:atIndex:");
}

ZRXHTMLLabel::ZRXHTMLLabel() = default;
ZRXHTMLLabel::~ZRXHTMLLabel() = default;

id ZRXHTMLLabel::initWithFrame(NSRect frame) {
    const id self = NSTextView::initWithFrame(frame);
    setDelegate(this);
    setEditable(false);
    setDrawsBackground(false);
    textContainer()->setWidthTracksTextView(false);
    textContainer()->setHeightTracksTextView(false);
    setTranslatesAutoresizingMaskIntoConstraints(false);
    setDisplaysLinkToolTips(false);
    const Ref<NSDictionary> views = dictionary({{"self"_ns, self}});
    for (const Ref<NSString>& format : {"H:[self(>=20)]"_ns, "V:[self(>=20)]"_ns}) {
        addConstraints(NSLayoutConstraint::constraintsWithVisualFormat_options_metrics_views(format, formatOptions,
                                                                                             nullptr, views));
    }
    return self;
}

void ZRXHTMLLabel::setHTMLString(NSString* html) {
    if (!ZRXTextValid(html)) {
        return;
    }
    const Ref<NSData> data = NSData::fromBytes(html->utf8());
    show(make<NSTextStorage>(&NSTextStorage::initWithHTML_documentAttributes, data, nullptr));
}

void ZRXHTMLLabel::setCustomizedHTMLString(NSString* text) {
    if (!ZRXTextValid(text)) {
        return;
    }
    const Ref<NSMutableAttributedString> styled = replaceHTMLLinksFromString(text);
    show(make<NSTextStorage>(&NSAttributedString::initWithAttributedString, styled));
}

void ZRXHTMLLabel::show(NSTextStorage* storage) {
    layoutManager()->replaceTextStorage(storage);
    layoutManager()->ensureLayoutForTextContainer(textContainer());
}

void ZRXHTMLLabel::setLinkClickAction(const LinkClickAction& action) {
    m_linkClickAction = action;
}

bool ZRXHTMLLabel::textView_clickedOnLink_atIndex(NSTextView*, NSObject* link, NSUInteger index) {
    // A copy, because the action may set another one or let go of the label.
    const LinkClickAction action = linkClickAction();
    if (!action) {
        return false;
    }
    action(link, index);
    return true;
}

NSSize ZRXHTMLLabel::intrinsicContentSize() const {
    const Ref<NSTextContainer> container = textContainer();
    layoutManager()->ensureLayoutForTextContainer(container);
    return layoutManager()->usedRectForTextContainer(container).size;
}

} // namespace zr
