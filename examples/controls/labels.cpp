#include "shades.h"
#include "specimen.h"

#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/ui/html_label.h>
#include <zrbasic/ui/label.h>

namespace controls {
namespace {

using namespace zr;

Ref<ZRXLabel> label(const char* text, NSUInteger style) {
    const Ref<ZRXLabel> made = make<ZRXLabel>(&ZRXLabel::initWithStyle, style);
    made->setFrame(NSMakeRect(0, 0, 200, 18));
    made->setStringValue(NSString::fromUtf8(text));
    return made;
}

Ref<ZRXHTMLLabel> message(double height) {
    const Ref<ZRXHTMLLabel> made = make<ZRXHTMLLabel>(&ZRXHTMLLabel::initWithFrame, NSMakeRect(0, 0, 320, height));
    made->setLinkClickAction([](NSObject*, NSUInteger) {});
    return made;
}

} // namespace

Section labels() {
    Section section{"Labels", {}};
    auto& specimens = section.specimens;
    specimens.push_back({"label/plain", "plain", label("Last trade 14:32:07", 0), {}});

    const Ref<ZRXLabel> hand = label("Hand over all of it", 1);
    hand->setTextColor(accent());
    specimens.push_back({"label/hand", "style 1", hand, {}});

    const Ref<ZRXLabel> link = label("Contract details", 2);
    link->setTextColor(accent());
    specimens.push_back({"label/link", "style 2", link, {}});

    const Ref<ZRXLabel> hovered = label("Contract details", 2);
    hovered->setTextColor(accent());
    specimens.push_back({"label/hovered", "style 2, pointed at", hovered, [hovered] {
                             EventFields fields;
                             fields.type = NSEventTypeMouseEntered;
                             hovered->mouseEntered(NSEvent::eventWithFields(fields));
                         }});

    const Ref<ZRXLabel> disabled = label("Market closed", 0);
    disabled->setEnabled(false);
    specimens.push_back({"label/disabled", "disabled", disabled, {}});

    const Ref<ZRXLabel> shortened = label("A notice that is too long for its place in the window", 0);
    shortened->setUsesSingleLineMode(true);
    shortened->setLineBreakMode(NSLineBreakByTruncatingTail);
    specimens.push_back({"label/shortened", "shortened", shortened, {}});
    return section;
}

Section messages() {
    Section section{"Messages", {}};
    const Ref<ZRXHTMLLabel> html = message(38);
    html->setHTMLString(NSString::stringWithFormat(
        "<b>Margin call</b> on <i>ETHUSDT</i>: deposit by <font color=\"%@\">16:00</font>.<br>"
        "See the <a href=\"https://example.com/rules\">rules</a> and "
        "<a href=\"https://example.com/desk\">ask the desk</a>."_ns,
        NSAppearance::currentDrawingAppearance()->isDark() ? "#ff736b"_ns : "#cc2e29"_ns));
    section.specimens.push_back({"message/html", "HTML", html, {}});

    const Ref<ZRXHTMLLabel> reduced = message(20);
    reduced->setCustomizedHTMLString("Order 4711 filled: <a href=\"https://example.com/4711\">show it</a>"_ns);
    section.specimens.push_back({"message/links", "links alone", reduced, {}});
    return section;
}

} // namespace controls
