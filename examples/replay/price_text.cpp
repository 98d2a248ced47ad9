#include "price_text.h"

#include <zrbasic/core/tools.h>

#include <string_view>

namespace replay {

using namespace zr;

namespace {

constexpr std::size_t mostDigits = 38;

std::size_t digitsFrom(std::u16string_view text, std::size_t position) {
    const std::size_t start = position;
    while (position < text.size() && text[position] >= u'0' && text[position] <= u'9') {
        ++position;
    }
    return position - start;
}

/// The platform's reading is generous ("12abc" is 12); a price must be a number from end to end.
bool isDecimalText(std::u16string_view text) {
    std::size_t position = !text.empty() && (text[0] == u'-' || text[0] == u'+') ? 1 : 0;
    const std::size_t whole = digitsFrom(text, position);
    position += whole;
    std::size_t fraction = 0;
    if (position < text.size() && text[position] == u'.') {
        fraction = digitsFrom(text, position + 1);
        position += 1 + fraction;
        if (fraction == 0) {
            return false;
        }
    }
    return whole > 0 && whole + fraction <= mostDigits && position == text.size();
}

} // namespace

Ref<NSDecimalNumber> decimalFrom(NSObject* value) {
    if (auto* const text = cast<NSString>(value)) {
        return isDecimalText(text->view()) ? NSDecimalNumber::decimalNumberWithString(text) : nullptr;
    }
    auto* const number = cast<NSNumber>(value);
    if (!number || number->isBoolean()) {
        return nullptr;
    }
    const NSDecimal decimal = number->decimalValue();
    return decimal.isNotANumber() ? nullptr : NSDecimalNumber::decimalNumberWithDecimal(decimal);
}

std::string textOf(NSNumber* number, std::size_t decimals) {
    if (!number) {
        return "-";
    }
    std::string text = number->stringValue()->utf8();
    const std::size_t present = ZRXTools::decimalsCountOfNumber(number);
    if (present < decimals) {
        text += present == 0 ? "." : "";
        text.append(decimals - present, '0');
    }
    return text;
}

std::string grouped(std::size_t count) {
    std::string text = std::to_string(count);
    for (std::size_t position = text.size(); position > 3;) {
        position -= 3;
        text.insert(position, 1, ',');
    }
    return text;
}

} // namespace replay
