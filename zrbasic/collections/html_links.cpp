#include <zrbasic/collections/html_links.h>

#include <zrbasic/collections/dictionary_writing.h>
#include <zrbasic/collections/html_anchors_p.h>
#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/font.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/foundation/mutable_attributed_string.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/url.h>

#include <vector>

namespace zr {

namespace {

Ref<NSDictionary> blueLink(NSString* href) {
    // The dictionary refuses the null that a bad target gives here.
    return dictionary({{NSForegroundColorAttributeName(), NSColor::blueColor()},
                       {NSLinkAttributeName(), NSURL::URLWithString(href)}});
}

Ref<NSMutableDictionary> colorAndFont(NSColor* color, NSFont* font) {
    const Ref<NSMutableDictionary> attributes = NSMutableDictionary::dictionary();
    zr_setObject_forKey(attributes, color, NSForegroundColorAttributeName());
    zr_setObject_forKey(attributes, font, NSFontAttributeName());
    return attributes;
}

} // namespace

ZR_GROUP(NSAttributedString, ZRXHelper) {
    is.classMethod<&replaceHTMLLinksFromString_attributes_linkAttributeBuilder>(
        "replaceHTMLLinksFromString:attributes:linkAttributeBuilder:");
    is.classMethod<&replaceHTMLLinksFromString_withTextColor_linkColor_font>(
        "replaceHTMLLinksFromString:withTextColor:linkColor:font:");
    is.classMethod<&replaceHTMLLinksFromString_withTextColor>("replaceHTMLLinksFromString:withTextColor:");
    is.classMethod<&replaceHTMLLinksFromString>("replaceHTMLLinksFromString:");
}

Ref<NSMutableAttributedString> replaceHTMLLinksFromString_attributes_linkAttributeBuilder(
    NSString* text, NSDictionary* attributes, ZRXLinkAttributeBuilder linkAttributes) {
    if (!text) {
        NSException::raise(NSInvalidArgumentException,
                           "*** +[NSAttributedString replaceHTMLLinksFromString:attributes:linkAttributeBuilder:]: nil "
                           "argument");
    }
    // A builder may change what was handed in, or let go of it.
    const Ref<NSString> source(cast<NSString>(text->copy()));
    const Ref<NSDictionary> base = detail::frozenAttributes(attributes);
    const std::u16string_view units = source->view();
    const std::vector<detail::HtmlAnchor> anchors = detail::htmlAnchors(units);

    // Builders are called from the last link to the first, which is what shared dictionaries rely on; the text is put
    // together from first to last, because replacing link by link would move everything behind each of them.
    std::vector<Ref<NSDictionary>> links(anchors.size());
    for (std::size_t index = anchors.size(); index-- > 0;) {
        const NSRange range = anchors[index].href;
        const Ref<NSString> href = NSString::fromUtf16(units.substr(range.location, range.length));
        const Ref<NSDictionary> built = linkAttributes ? linkAttributes(href) : blueLink(href);
        links[index] = detail::frozenAttributes(built);
    }

    const Ref<NSMutableAttributedString> result = make<NSMutableAttributedString>();
    NSUInteger done = 0;
    for (std::size_t index = 0; index < anchors.size(); ++index) {
        const detail::HtmlAnchor& anchor = anchors[index];
        result->append(units.substr(done, anchor.whole.location - done), base);
        result->append(units.substr(anchor.text.location, anchor.text.length), links[index]);
        done = NSMaxRange(anchor.whole);
    }
    result->append(units.substr(done), base);
    return result;
}

Ref<NSMutableAttributedString> replaceHTMLLinksFromString_withTextColor_linkColor_font(NSString* text,
                                                                                       NSColor* textColor,
                                                                                       NSColor* linkColor,
                                                                                       NSFont* font) {
    const Ref<NSMutableDictionary> attributes = colorAndFont(textColor, font);
    const Ref<NSMutableDictionary> linkAttributes = colorAndFont(linkColor, font);
    if (linkAttributes->count() == 0) {
        return replaceHTMLLinksFromString_attributes_linkAttributeBuilder(text, attributes, nullptr);
    }
    // One dictionary for all links: a target of which no URL can be made leaves the one before it in place.
    return replaceHTMLLinksFromString_attributes_linkAttributeBuilder(
        text, attributes, [&linkAttributes](NSString* href) {
            zr_setObject_forKey(linkAttributes, NSURL::URLWithString(href), NSLinkAttributeName());
            return linkAttributes;
        });
}

Ref<NSMutableAttributedString> replaceHTMLLinksFromString_withTextColor(NSString* text, NSColor* textColor) {
    return replaceHTMLLinksFromString_withTextColor_linkColor_font(text, textColor, nullptr, nullptr);
}

Ref<NSMutableAttributedString> replaceHTMLLinksFromString(NSString* text) {
    return replaceHTMLLinksFromString_withTextColor(text, nullptr);
}

} // namespace zr
