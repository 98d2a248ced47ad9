#include <zrbasic/platform/foundation/format_argument.h>

#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/unicode_p.h>

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>

namespace zr::detail {

namespace {

constexpr int fieldLimit = 4096;

struct Directive {
    bool left = false;
    bool plus = false;
    bool space = false;
    bool alternate = false;
    bool zero = false;
    int width = 0;
    int precision = -1;
    int bytes = sizeof(int);
    char16_t conversion = 0;
};

double truncatedToRange(double value, double low, double high) noexcept {
    return std::isnan(value) ? 0.0 : std::clamp(std::trunc(value), low, high);
}

std::uint64_t bitsOf(double value) noexcept {
    constexpr double limit = 9223372036854775808.0;
    if (value >= limit) {
        // Doubles below 2^64 still have their exact unsigned value.
        return value >= 2 * limit ? std::numeric_limits<std::uint64_t>::max() : static_cast<std::uint64_t>(value);
    }
    return static_cast<std::uint64_t>(static_cast<std::int64_t>(truncatedToRange(value, -limit, limit)));
}

/// Reads the arguments as whatever a directive wants.
class Arguments {
  public:
    Arguments(const FormatArgument* first, std::size_t count) : m_first(first), m_count(count) {}

    void select(std::size_t position) { m_position = position; }

    [[nodiscard]] const FormatArgument::Value& next() {
        static const FormatArgument::Value missing = static_cast<const NSObject*>(nullptr);
        const std::size_t position = m_position++;
        return position < m_count ? m_first[position].value() : missing;
    }

  private:
    const FormatArgument* m_first;
    std::size_t m_count;
    std::size_t m_position = 0;
};

std::uint64_t integerFrom(const FormatArgument::Value& value) {
    if (const auto* number = std::get_if<std::int64_t>(&value)) {
        return static_cast<std::uint64_t>(*number);
    }
    if (const auto* number = std::get_if<std::uint64_t>(&value)) {
        return *number;
    }
    if (const auto* number = std::get_if<double>(&value)) {
        return bitsOf(*number);
    }
    return 0;
}

double doubleFrom(const FormatArgument::Value& value) {
    if (const auto* number = std::get_if<double>(&value)) {
        return *number;
    }
    if (const auto* number = std::get_if<std::int64_t>(&value)) {
        return static_cast<double>(*number);
    }
    if (const auto* number = std::get_if<std::uint64_t>(&value)) {
        return static_cast<double>(*number);
    }
    return 0.0;
}

std::u16string asciiText(std::string_view text) {
    return std::u16string(text.begin(), text.end());
}

std::u16string textFrom(const FormatArgument::Value& value) {
    struct Reader {
        std::u16string operator()(const NSObject* object) const {
            if (object == nullptr) {
                return u"(null)";
            }
            const Ref<NSString> description = object->description();
            return description ? std::u16string(description->view()) : std::u16string(u"(null)");
        }
        std::u16string operator()(std::int64_t number) const { return asciiText(std::to_string(number)); }
        std::u16string operator()(std::uint64_t number) const { return asciiText(std::to_string(number)); }
        std::u16string operator()(double number) const {
            const FormatArgument argument(number);
            return formatText(u"%g", &argument, 1);
        }
        std::u16string operator()(const char* text) const {
            return text == nullptr ? std::u16string(u"(null)") : utf16FromUtf8Replacing(text);
        }
        std::u16string operator()(const char16_t* text) const { return text == nullptr ? u"(null)" : text; }
    };
    return std::visit(Reader(), value);
}

// `digits` with its sign or base in front, filled up to the width.
void appendNumber(std::u16string& result, const Directive& directive, std::u16string_view prefix,
                  std::u16string_view digits, bool mayFillWithZeros) {
    const std::size_t length = prefix.size() + digits.size();
    const auto width = static_cast<std::size_t>(directive.width);
    const std::size_t fill = width > length ? width - length : 0;
    const bool fillsWithZeros = directive.zero && !directive.left && mayFillWithZeros;
    if (!directive.left && !fillsWithZeros) {
        result.append(fill, u' ');
    }
    result += prefix;
    if (fillsWithZeros) {
        result.append(fill, u'0');
    }
    result += digits;
    if (directive.left) {
        result.append(fill, u' ');
    }
}

std::u16string_view signText(const Directive& directive, bool negative) {
    return negative ? u"-" : directive.plus ? u"+" : directive.space ? u" " : u"";
}

void appendInteger(std::u16string& result, const Directive& directive, std::uint64_t bits) {
    const char16_t conversion = directive.conversion;
    const bool isSigned = conversion == u'd' || conversion == u'i' || conversion == u'D';
    const unsigned base = conversion == u'x' || conversion == u'X' || conversion == u'p' ? 16
                          : conversion == u'o' || conversion == u'O'                     ? 8
                                                                                         : 10;
    // The letters say how much of the argument counts, as they do in C.
    bool negative = false;
    if (directive.bytes < 8) {
        const int unused = 64 - 8 * directive.bytes;
        bits <<= unused;
        bits = isSigned ? static_cast<std::uint64_t>(static_cast<std::int64_t>(bits) >> unused) : bits >> unused;
    }
    if (isSigned && static_cast<std::int64_t>(bits) < 0) {
        negative = true;
        bits = 0 - bits;
    }

    const char16_t* const letters = conversion == u'X' ? u"0123456789ABCDEF" : u"0123456789abcdef";
    std::u16string digits;
    for (std::uint64_t left = bits; left != 0; left /= base) {
        digits.push_back(letters[left % base]);
    }
    const auto least = static_cast<std::size_t>(directive.precision < 0 ? 1 : directive.precision);
    if (digits.size() < least) {
        digits.append(least - digits.size(), u'0');
    }
    if (base == 8 && directive.alternate && (digits.empty() || digits.back() != u'0')) {
        digits.push_back(u'0');
    }
    std::reverse(digits.begin(), digits.end());

    std::u16string_view prefix = isSigned ? signText(directive, negative) : u"";
    if (conversion == u'p' || (base == 16 && directive.alternate && bits != 0)) {
        prefix = conversion == u'X' ? u"0X" : u"0x";
    }
    appendNumber(result, directive, prefix, digits, directive.precision < 0);
}

void appendDouble(std::u16string& result, const Directive& directive, double number) {
    const bool negative = std::signbit(number) && !std::isnan(number);
    const bool upper = directive.conversion < u'a';
    if (!std::isfinite(number)) {
        const std::u16string_view name = std::isnan(number) ? (upper ? u"NAN" : u"nan") : (upper ? u"INF" : u"inf");
        appendNumber(result, directive, signText(directive, negative), name, false);
        return;
    }
    char format[8] = "%";
    char* end = format + 1;
    if (directive.alternate) {
        *end++ = '#';
    }
    const bool hasPrecision = directive.precision >= 0;
    if (hasPrecision) {
        *end++ = '.';
        *end++ = '*';
    }
    *end++ = static_cast<char>(directive.conversion);
    *end = '\0';
    const double magnitude = std::fabs(number);
    auto print = [&](char* to, std::size_t capacity) {
        return hasPrecision ? std::snprintf(to, capacity, format, directive.precision, magnitude)
                            : std::snprintf(to, capacity, format, magnitude);
    };
    std::string text(64, '\0');
    int length = print(text.data(), text.size());
    if (length >= static_cast<int>(text.size())) {
        text.resize(static_cast<std::size_t>(length) + 1);
        length = print(text.data(), text.size());
    }
    text.resize(static_cast<std::size_t>(std::max(length, 0)));
    // The C library writes the user's decimal separator; numbers here always have a point.
    const std::string_view separator = std::localeconv()->decimal_point;
    if (separator != "." && !separator.empty()) {
        if (const std::size_t at = text.find(separator); at != std::string::npos) {
            text = text.substr(0, at) + '.' + text.substr(at + separator.size());
        }
    }
    std::u16string prefix(signText(directive, negative));
    std::u16string digits = asciiText(text);
    if (directive.conversion == u'a' || directive.conversion == u'A') {
        // Zeros go between "0x" and the digits.
        prefix += digits.substr(0, 2);
        digits.erase(0, 2);
    }
    appendNumber(result, directive, prefix, digits, true);
}

void appendText(std::u16string& result, const Directive& directive, std::u16string_view text) {
    if (directive.precision >= 0) {
        text = text.substr(0, static_cast<std::size_t>(directive.precision));
    }
    Directive blanks = directive;
    blanks.zero = false;
    appendNumber(result, blanks, u"", text, false);
}

void appendCharacter(std::u16string& result, const Directive& directive, std::uint64_t bits) {
    const auto unit = static_cast<char16_t>(directive.conversion == u'c' ? bits & 0xFF : bits & 0xFFFF);
    appendText(result, directive, std::u16string_view(&unit, 1));
}

/// Reads one directive after its "%".
class DirectiveParser {
  public:
    DirectiveParser(std::u16string_view format, std::size_t position, Arguments& arguments)
        : m_format(format), m_position(position), m_arguments(arguments) {}

    /// False when the text ends first.
    bool parse(Directive& directive) {
        readArgumentNumber();
        readFlags(directive);
        directive.width = readField();
        if (directive.width < 0) {
            directive.left = true;
            directive.width = -directive.width;
        }
        if (peek() == u'.') {
            ++m_position;
            // A negative precision counts as none.
            directive.precision = std::max(readField(), -1);
        }
        readLength(directive);
        if (m_position == m_format.size()) {
            return false;
        }
        directive.conversion = m_format[m_position++];
        return true;
    }

    [[nodiscard]] std::size_t position() const { return m_position; }

  private:
    [[nodiscard]] char16_t peek() const { return m_position < m_format.size() ? m_format[m_position] : u'\0'; }
    [[nodiscard]] bool atDigit() const { return peek() >= u'0' && peek() <= u'9'; }

    int readDigits() {
        int value = 0;
        for (; atDigit(); ++m_position) {
            value = std::min(value * 10 + (peek() - u'0'), fieldLimit);
        }
        return value;
    }

    void readArgumentNumber() {
        const std::size_t start = m_position;
        const int number = readDigits();
        if (peek() == u'$' && number > 0) {
            ++m_position;
            m_arguments.select(static_cast<std::size_t>(number) - 1);
        } else {
            m_position = start;
        }
    }

    void readFlags(Directive& directive) {
        for (;; ++m_position) {
            switch (peek()) {
                case u'-':
                    directive.left = true;
                    break;
                case u'+':
                    directive.plus = true;
                    break;
                case u' ':
                    directive.space = true;
                    break;
                case u'#':
                    directive.alternate = true;
                    break;
                case u'0':
                    directive.zero = true;
                    break;
                case u'\'':
                    // Groups of thousands are a matter of locale, of which there is none here.
                    break;
                default:
                    return;
            }
        }
    }

    // A number or, for "*", the next argument.
    int readField() {
        if (peek() != u'*') {
            return readDigits();
        }
        ++m_position;
        const auto value = static_cast<std::int32_t>(integerFrom(m_arguments.next()));
        return std::clamp<std::int32_t>(value, -fieldLimit, fieldLimit);
    }

    void readLength(Directive& directive) {
        for (;; ++m_position) {
            switch (peek()) {
                case u'h':
                    directive.bytes = directive.bytes == 2 ? 1 : 2;
                    break;
                case u'l':
                case u'q':
                case u'L':
                case u'j':
                case u'z':
                case u't':
                    directive.bytes = 8;
                    break;
                default:
                    return;
            }
        }
    }

    std::u16string_view m_format;
    std::size_t m_position;
    Arguments& m_arguments;
};

// False for a conversion that is not known.
bool appendConverted(std::u16string& result, Directive& directive, Arguments& arguments) {
    switch (directive.conversion) {
        case u'%':
            result.push_back(u'%');
            return true;
        case u'@':
        case u's':
        case u'S':
            appendText(result, directive, textFrom(arguments.next()));
            return true;
        case u'D':
        case u'U':
        case u'O':
            directive.bytes = 8;
            [[fallthrough]];
        case u'd':
        case u'i':
        case u'u':
        case u'x':
        case u'X':
        case u'o':
            appendInteger(result, directive, integerFrom(arguments.next()));
            return true;
        case u'p': {
            const FormatArgument::Value& value = arguments.next();
            const auto* const* object = std::get_if<const NSObject*>(&value);
            directive.bytes = 8;
            appendInteger(result, directive,
                          object != nullptr ? reinterpret_cast<std::uintptr_t>(*object) : integerFrom(value));
            return true;
        }
        case u'c':
        case u'C':
            appendCharacter(result, directive, integerFrom(arguments.next()));
            return true;
        case u'f':
        case u'F':
        case u'e':
        case u'E':
        case u'g':
        case u'G':
        case u'a':
        case u'A':
            appendDouble(result, directive, doubleFrom(arguments.next()));
            return true;
        default:
            return false;
    }
}

} // namespace

std::u16string formatText(std::u16string_view format, const FormatArgument* arguments, std::size_t count) {
    std::u16string result;
    result.reserve(format.size() + 16);
    Arguments reader(arguments, count);
    for (std::size_t i = 0; i < format.size();) {
        const std::size_t percent = std::min(format.find(u'%', i), format.size());
        result += format.substr(i, percent - i);
        if (percent == format.size()) {
            break;
        }
        Directive directive;
        DirectiveParser parser(format, percent + 1, reader);
        const bool isComplete = parser.parse(directive);
        if (!isComplete || !appendConverted(result, directive, reader)) {
            result += format.substr(percent, parser.position() - percent);
        }
        i = parser.position();
    }
    return result;
}

} // namespace zr::detail
