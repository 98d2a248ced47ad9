#include "price_entry.h"

#include "price_text.h"

#include <zrbasic/core/number_formatters.h>
#include <zrbasic/core/tick.h>
#include <zrbasic/platform/appkit/beep.h>
#include <zrbasic/platform/foundation/dictionary.h>

namespace replay {

using namespace zr;

namespace {

/// A text field as far as a formatter is concerned: it proposes the text with the new character at its end.
class PriceField {
  public:
    explicit PriceField(ZRInputFormatter* formatter) : m_formatter(formatter) {}

    Keystroke press(char16_t key) {
        const auto proposed = NSString::fromUtf16(std::u16string(m_text->view()) + key);
        Ref<NSString> replacement;
        const std::uint64_t beeps = beepCount();
        Keystroke stroke;
        if (m_formatter->isPartialStringValid_newEditingString_errorDescription(proposed, &replacement, nullptr)) {
            m_text = proposed;
        } else if (replacement) {
            m_text = replacement;
            stroke.verdict = Keystroke::Verdict::Replaced;
        } else {
            stroke.verdict = Keystroke::Verdict::Refused;
        }
        stroke.key = NSString::fromUtf16(std::u16string(1, key))->utf8();
        stroke.hasBeeped = beepCount() != beeps;
        stroke.shown = m_text->utf8();
        return stroke;
    }

    [[nodiscard]] const Ref<NSString>& text() const { return m_text; }

  private:
    ZRInputFormatter* m_formatter;
    Ref<NSString> m_text = ""_ns;
};

constexpr char16_t fullWidthComma = u'\uFF0C';

std::u16string keysFor(NSNumber* price) {
    std::u16string keys(price ? price->stringValue()->view() : u"1.5");
    const std::size_t point = keys.find(u'.');
    if (point == std::u16string::npos) {
        keys += fullWidthComma;
    } else {
        keys[point] = fullWidthComma;
    }
    return keys + u"x";
}

} // namespace

PriceEntry typePrice(Instrument* instrument, NSNumber* price) {
    PriceEntry entry;
    entry.instrument = Ref<Instrument>(instrument);
    const auto formatter = make<ZRPriceNumberInputFormatter>();
    formatter->setReplacedStringPairs(dictionary({{u"\uFF0C"_ns, "."_ns}, {","_ns, "."_ns}}));
    PriceField field(formatter);
    for (const char16_t key : keysFor(price)) {
        entry.keystrokes.push_back(field.press(key));
    }
    // An uneven tail that lies on no sensible tick, until the field is full.
    const std::u16string_view tail = u"4728351";
    for (std::size_t i = 0; entry.keystrokes.back().verdict != Keystroke::Verdict::Refused || i == 0; ++i) {
        entry.keystrokes.push_back(field.press(tail[i % tail.size()]));
    }
    entry.typed = NSDecimalNumber::decimalNumberWithString(field.text());
    const auto tick = instrument->tick();
    entry.plain = roundWithTick_roundingMode(entry.typed, tick, NSRoundPlain);
    entry.down = roundWithTick_roundingMode(entry.typed, tick, NSRoundDown);
    entry.up = roundWithTick_roundingMode(entry.typed, tick, NSRoundUp);
    return entry;
}

} // namespace replay
