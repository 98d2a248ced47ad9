#include "message_text.h"

#include "console.h"

#include <zrbasic/collections/html_links.h>
#include <zrbasic/core/color.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/mutable_attributed_string.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/url.h>

#include <cmath>
#include <cstdio>

namespace replay {

using namespace zr;

namespace {

/// The terminal's code for the attributes of a run; empty when it has neither a colour nor a link.
std::string codeFor(NSDictionary* attributes) {
    std::string code;
    if (auto* const color = cast<NSColor>(attributes->peek(NSForegroundColorAttributeName()))) {
        double red = 0, green = 0, blue = 0;
        color->getRed_green_blue_alpha(&red, &green, &blue, nullptr);
        char text[32];
        std::snprintf(text, sizeof text, "38;2;%ld;%ld;%ld", std::lround(red * 255), std::lround(green * 255),
                      std::lround(blue * 255));
        code = text;
    }
    if (attributes->peek(NSLinkAttributeName())) {
        code += code.empty() ? "4" : ";4";
    }
    return code;
}

/// One run without its line breaks between which `lineBreak` stands; the colour ends with each line.
std::string runText(std::u16string_view run, const std::string& code, const std::string& lineBreak) {
    std::string text;
    for (;;) {
        const std::size_t end = run.find(u'\n');
        const std::string line = printable(NSString::fromUtf16(run.substr(0, end))->utf8());
        text += code.empty() || line.empty() ? line : "\033[" + code + 'm' + line + "\033[0m";
        if (end == run.npos) {
            return text;
        }
        text += lineBreak;
        run.remove_prefix(end + 1);
    }
}

} // namespace

Ref<NSAttributedString> styledMessage(NSString* message) {
    if (!message) {
        return nullptr;
    }
    return replaceHTMLLinksFromString_withTextColor_linkColor_font(message, ZRHexColor(0x8B949E), ZRHexColor(0x388BFD),
                                                                   nullptr);
}

std::string messageText(NSAttributedString* message, std::size_t indent, bool isColoured) {
    const std::string margin(indent, ' ');
    std::string text = margin;
    message->enumerateAttributesInRange_options_usingBlock(
        {0, message->length()}, 0, [&](NSDictionary* attributes, NSRange range, bool&) {
            text += runText(message->view().substr(range.location, range.length), isColoured ? codeFor(attributes) : "",
                            '\n' + margin);
        });
    return text + '\n';
}

std::vector<MessageLink> linksOf(NSAttributedString* message) {
    std::vector<MessageLink> links;
    message->enumerateAttribute_inRange_options_usingBlock(
        NSLinkAttributeName(), {0, message->length()}, 0, [&](NSObject* value, NSRange range, bool&) {
            if (auto* const target = cast<NSURL>(value)) {
                links.push_back({NSString::fromUtf16(message->view().substr(range.location, range.length))->utf8(),
                                 target->absoluteString()->utf8()});
            }
        });
    return links;
}

} // namespace replay
