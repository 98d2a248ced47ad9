#pragma once

#include <zrbasic/platform/runtime/export.h>
#include <zrbasic/platform/runtime/function_ref.h>
#include <zrbasic/platform/runtime/ref.h>

/// Server messages with anchor tags as text with links, for labels.
///
/// An anchor is `<a href="target">link text</a>`, in any letter case, with either kind of quotes, which need not agree,
/// and on one line but for the blanks before `href`. Whatever else stands between the quote behind `href=` and the
/// quote before `>` counts to the target: in `<a href="x" target="y">` the target is `x" target="y`. All else, other
/// tags included, is plain text; for reading HTML use something else.
///
/// The link text carries the link's attributes only, never those of the text around it. A null text raises
/// `NSInvalidArgumentException`. Takes time proportional to the text. May be used from any thread.
namespace zr {

class NSColor;
class NSDictionary;
class NSFont;
class NSMutableAttributedString;
class NSString;

/// Gives the attributes of the link text for a link's target; null for none.
using ZRXLinkAttributeBuilder = FunctionRef<Ref<NSDictionary>(NSString* href)>;

// NSAttributedString(ZRXHelper)

/// The text with `attributes`, null counting as none, and with what the builder gives where links are.
///
/// The builder is called once a link, from the last to the first, and its result is copied at once; what it throws
/// passes through. Without a builder links are blue and carry a URL as `NSLinkAttributeName`; a target of which no URL
/// can be made then raises `NSInvalidArgumentException`. Never null.
[[nodiscard]] ZR_EXPORT Ref<NSMutableAttributedString> replaceHTMLLinksFromString_attributes_linkAttributeBuilder(
    NSString* text, NSDictionary* attributes, ZRXLinkAttributeBuilder linkAttributes);

/// The text in a colour and a font, and the links in another colour and the same font; what is null is left out. With
/// neither a link colour nor a font, links are blue, and bad targets raise, as above. Otherwise no target raises:
///
/// A link whose target is no URL gets the URL of the next link in the text, or of the one after that, and so on; none
/// when all links behind it are bad as well.
[[nodiscard]] ZR_EXPORT Ref<NSMutableAttributedString> replaceHTMLLinksFromString_withTextColor_linkColor_font(
    NSString* text, NSColor* textColor, NSColor* linkColor, NSFont* font);
/// The text in a colour, or none for null, and blue links.
[[nodiscard]] ZR_EXPORT Ref<NSMutableAttributedString> replaceHTMLLinksFromString_withTextColor(NSString* text,
                                                                                                NSColor* textColor);
/// Plain text and blue links.
[[nodiscard]] ZR_EXPORT Ref<NSMutableAttributedString> replaceHTMLLinksFromString(NSString* text);

} // namespace zr
