#include "shades.h"
#include "specimen.h"

#include <zrbasic/core/number_formatters.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/ui/text_field.h>

namespace controls {
namespace {

using namespace zr;

constexpr NSRect fieldFrame = NSMakeRect(0, 0, 200, 26);

Ref<NSColor> faint() {
    return shade(NSColor::colorWithWhite_alpha(0.62, 1), NSColor::placeholderTextColor());
}

/// Black text in a light grey border is what these fields come with, in any appearance.
template <class Field>
Ref<Field> field(const char* text) {
    const Ref<Field> made = make<Field>(&Field::initWithFrame, fieldFrame);
    made->setStringValue(NSString::fromUtf8(text));
    made->setTextColor(ink());
    made->setBorderColor(shade(made->borderColor(), NSColor::colorWithWhite_alpha(0.4, 1)));
    made->setHighlightedBorderColor(accent());
    return made;
}

/// Gives the view the keyboard.
std::function<void()> focusing(const Ref<NSView>& view) {
    return [view] {
        if (const Ref<NSWindow> window = view->window()) {
            window->makeFirstResponder(view);
        }
    };
}

template <class Field>
std::vector<Specimen> common(const std::string& kind, const char* placeholder, const char* text) {
    std::vector<Specimen> specimens;
    specimens.push_back({kind + "/empty", "empty", field<Field>(""), {}});

    const Ref<Field> waiting = field<Field>("");
    waiting->setPlaceholderString(NSString::fromUtf8(placeholder));
    specimens.push_back({kind + "/placeholder", "placeholder", waiting, {}});

    // The text before the colour: a secure field colours only what is there already.
    const Ref<Field> colored = field<Field>("");
    colored->setPlaceholderString(NSString::fromUtf8(placeholder));
    colored->setPlaceholderColor(faint());
    specimens.push_back({kind + "/coloured-placeholder", "coloured placeholder", colored, {}});

    specimens.push_back({kind + "/filled", "filled", field<Field>(text), {}});

    const Ref<Field> edited = field<Field>(text);
    edited->setCursorColor(accent());
    specimens.push_back({kind + "/editing", "edited", edited, focusing(edited), true});

    const Ref<Field> refused = field<Field>(text);
    refused->setBorderColor(alarm());
    specimens.push_back({kind + "/refused", "refused", refused, {}});

    const Ref<Field> disabled = field<Field>(text);
    disabled->setEnabled(false);
    specimens.push_back({kind + "/disabled", "disabled", disabled, {}});
    return specimens;
}

} // namespace

Section textFields() {
    Section section{"Text fields", common<ZRXTextField>("text-field", "Price", "2241.78")};
    auto& specimens = section.specimens;

    const Ref<ZRXTextField> price = field<ZRXTextField>("0.05");
    price->setAlignment(NSTextAlignmentRight);
    price->setFormatter(inputFormatterWithMaxLength<ZRPriceNumberInputFormatter>(10));
    specimens.push_back({"text-field/right-aligned", "right aligned", price, {}});

    const Ref<ZRXTextField> rightToLeft = field<ZRXTextField>("\u05DE\u05D7\u05D9\u05E8 12.5");
    specimens.push_back({"text-field/right-to-left", "right to left", rightToLeft, {}});

    const Ref<ZRXTextField> tooLong = field<ZRXTextField>("A remark that is far too long for its field");
    specimens.push_back({"text-field/shortened", "shortened", tooLong, {}});

    const Ref<ZRXTextField> round = field<ZRXTextField>("padding 14, radius 8");
    round->setXPadding(14);
    round->setCornerRadius(8);
    round->setBorderWidth(2);
    specimens.push_back({"text-field/shaped", "wide border", round, {}});
    return section;
}

Section secureFields() {
    return {"Secure fields", common<ZRXSecureTextField>("secure-field", "Password", "correct horse")};
}

} // namespace controls
