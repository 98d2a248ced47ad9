#include "rule.h"

#include <zrbasic/collections/attribute_editing.h>
#include <zrbasic/collections/html_links.h>
#include <zrbasic/core/pattern_matching.h>
#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/mutable_attributed_string.h>

#include <fuzzer/FuzzedDataProvider.h>

#include <string>

using namespace zr;
using fuzz::rule;

namespace {

/// Mostly pieces of anchors, so that the engine need not find their spelling by itself.
Ref<NSString> messageFrom(FuzzedDataProvider& input) {
    static const char* const pieces[] = {"<a href=\"", "<A\tHREF='", "\">", "'>", "</a>", "</A>", "<a ", "\"", "\n"};
    std::string text;
    while (input.remaining_bytes() > 0)
        text += input.ConsumeBool() ? input.PickValueInArray(pieces) : input.ConsumeRandomLengthString(4);
    return NSString::fromUtf8(text);
}

} // namespace

// Anchors are found where the pattern finds them, and styled text keeps its attributes in order whatever is added.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const auto word = NSString::fromUtf8(input.ConsumeRandomLengthString(4));
    const auto text = messageFrom(input);

    NSUInteger links = 0;
    const auto message = replaceHTMLLinksFromString_attributes_linkAttributeBuilder(
        text, dictionary({{"base"_ns, "b"_ns}}), [&links](NSString* href) {
            ++links;
            return dictionary({{"href"_ns, href}});
        });
    const auto anchors = matchSubResultsWithPattern(text, "<a\\s+href=[\"'](.*?)[\"']>(.*?)</a>"_ns);
    rule(links == anchors->count(), "a link for every match of the pattern");

    NSUInteger end = 0;
    message->enumerateAttributesInRange_options_usingBlock(
        {0, message->length()}, 0, [&end](NSDictionary* attributes, NSRange range, bool&) {
            rule(range.location == end && range.length > 0, "runs follow each other without a gap");
            rule((attributes->peek("href"_ns) == nullptr) != (attributes->peek("base"_ns) == nullptr),
                 "text is a link's or the base's");
            end = NSMaxRange(range);
        });
    rule(end == message->length(), "and cover the text");

    addTextColor_ofSubString(message, NSColor::redColor(), word);
    rule(message->string()->length() == end, "adding attributes leaves the text alone");
    const auto coloured =
        replaceHTMLLinksFromString_withTextColor_linkColor_font(text, nullptr, NSColor::redColor(), nullptr);
    rule(coloured->string()->isEqual(message->string()), "both forms give the same text");
    return 0;
}
