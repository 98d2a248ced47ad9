#include <zrbasic/core/validation.h>

#include <zrbasic/core/validation_p.h>
#include <zrbasic/platform/foundation/code_point_set_p.h>
#include <zrbasic/platform/foundation/pattern_p.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/unicode_p.h>

#include <cassert>

namespace zr {
namespace {

using detail::CodePointSet;

// The classes of the patterns.
struct Characters {
    // What \w and \d mean to the pattern engine.
    CodePointSet word = CodePointSet::fromPattern(u"[\\p{Alphabetic}\\p{M}\\p{Nd}\\p{Pc}\\u200C\\u200D]");
    CodePointSet digit = CodePointSet::fromPattern(u"\\p{Nd}");
    CodePointSet hostLabel = word.united(CodePointSet(u"-"));
    CodePointSet path = word.united(CodePointSet(u"-\u00A0./?%&="));
    CodePointSet mailbox = word.united(CodePointSet(u"!#$%&'*+/=?^_`{|}~-"));
    CodePointSet dash{u"-"};
    CodePointSet sign{u"+-"};
    CodePointSet fractionMark{u".'"};
    CodePointSet lastOfIdCard = digit.united(CodePointSet(u"xX"));
    CodePointSet asciiDigit{{{u'0', u'9'}}};
    CodePointSet asciiLetter{{{u'a', u'z'}, {u'A', u'Z'}}};
    CodePointSet printable{{{u'!', u'~'}}};
};

const Characters& characters() {
    static const Characters& all = *new Characters;
    return all;
}

// A text on the way from its first character to its last. What was passed is never looked at again.
class Walk {
  public:
    explicit Walk(std::u16string_view text) : m_left(text) {}

    bool isAtEnd() const { return m_left.empty(); }

    bool pass(std::u16string_view text) {
        const bool isThere = m_left.substr(0, text.size()) == text;
        m_left.remove_prefix(isThere ? text.size() : 0);
        return isThere;
    }

    bool passOne(const CodePointSet& set) {
        if (m_left.empty())
            return false;
        const detail::CodePoint next = detail::codePointAt(m_left, 0);
        const bool isThere = set.contains(next.value);
        m_left.remove_prefix(isThere ? next.length : 0);
        return isThere;
    }

    // All characters of the set that follow; how many there were.
    std::size_t passAll(const CodePointSet& set) {
        std::size_t count = 0;
        while (passOne(set))
            ++count;
        return count;
    }

  private:
    std::u16string_view m_left;
};

// How many items with dots between them follow; 0 when an item is missing.
template <typename PassItem>
std::size_t passDotted(Walk& walk, PassItem passItem) {
    std::size_t count = 0;
    do {
        if (!passItem())
            return 0;
        ++count;
    } while (walk.pass(u"."));
    return count;
}

bool isURL(Walk walk) {
    const Characters& sets = characters();
    if (!walk.pass(u"https://"))
        walk.pass(u"http://");
    if (passDotted(walk, [&] { return walk.passAll(sets.hostLabel) > 0; }) < 2)
        return false;
    if (walk.pass(u"/"))
        walk.passAll(sets.path);
    return walk.isAtEnd();
}

bool isPhoneNumber(Walk walk) {
    return walk.pass(u"1") && walk.passAll(characters().asciiDigit) == 10 && walk.isAtEnd();
}

bool isEmailAddress(Walk walk) {
    const Characters& sets = characters();
    if (passDotted(walk, [&] { return walk.passAll(sets.mailbox) > 0; }) == 0 || !walk.pass(u"@"))
        return false;
    // Runs of word characters with dashes between them: the same as dashes anywhere but at the ends.
    const auto passLabel = [&] {
        do {
            if (walk.passAll(sets.word) == 0)
                return false;
        } while (walk.passAll(sets.dash) > 0);
        return true;
    };
    return passDotted(walk, passLabel) >= 2 && walk.isAtEnd();
}

bool isPassword(Walk walk) {
    const Characters& sets = characters();
    std::size_t digits = 0;
    std::size_t letters = 0;
    std::size_t symbols = 0;
    while (!walk.isAtEnd() && digits + letters + symbols <= 24) {
        if (walk.passOne(sets.asciiDigit))
            ++digits;
        else if (walk.passOne(sets.asciiLetter))
            ++letters;
        else if (walk.passOne(sets.printable))
            ++symbols;
        else
            return false;
    }
    const std::size_t length = digits + letters + symbols;
    return length >= 8 && length <= 24 && (digits > 0) + (letters > 0) + (symbols > 0) >= 2;
}

bool isCommonEnglish(Walk walk) {
    walk.passAll(characters().printable);
    return walk.isAtEnd();
}

bool isFuturesPrice(Walk walk) {
    const Characters& sets = characters();
    walk.passOne(sets.sign);
    walk.passAll(sets.asciiDigit);
    walk.passOne(sets.fractionMark);
    walk.passAll(sets.asciiDigit);
    walk.pass(u"%");
    return walk.isAtEnd();
}

bool isPureNumber(Walk walk) {
    return walk.passAll(characters().digit) > 0 && walk.isAtEnd();
}

bool isIdCardNumber(Walk walk) {
    const std::size_t digits = walk.passAll(characters().digit);
    if (walk.isAtEnd())
        return digits == 15 || digits == 18;
    return (digits == 14 || digits == 17) && (walk.pass(u"x") || walk.pass(u"X")) && walk.isAtEnd();
}

bool isLegal(NSObject* value, bool (*obeys)(Walk), [[maybe_unused]] std::u16string_view pattern) {
    const auto* text = cast<NSString>(value);
    if (text == nullptr)
        return false;
    const bool answer = obeys(Walk(text->view()));
    // The pattern has the last word on what a walk ought to say. A short text never brings the engine to its limits.
    assert(text->length() > 24 || answer == detail::matchesWhole(pattern, 0, text->view()));
    return answer;
}

} // namespace

ZR_GROUP(NSString, ZRXHelper) {
    is.method<&isLegalURLString>("isLegalURLString");
    is.method<&isLegalPhoneNumber>("isLegalPhoneNumber");
    is.method<&isLegalEmailAddress>("isLegalEmailAddress");
    is.method<&isLegalPassword>("isLegalPassword");
    is.method<&isLegalCommonEnglishCharacters>("isLegalCommonEnglishCharacters");
    is.method<&isLegalFuturesPrice>("isLegalFuturesPrice");
    is.method<&isPureNumberString>("isPureNumberString");
    is.method<&isLegalIdCardNumber>("isLegalIdCardNumber");
}

bool isLegalURLString(NSObject* self) {
    return isLegal(self, isURL, detail::urlPattern);
}

bool isLegalPhoneNumber(NSObject* self) {
    return isLegal(self, isPhoneNumber, detail::phoneNumberPattern);
}

bool isLegalEmailAddress(NSObject* self) {
    return isLegal(self, isEmailAddress, detail::emailAddressPattern);
}

bool isLegalPassword(NSObject* self) {
    return isLegal(self, isPassword, detail::passwordPattern);
}

bool isLegalCommonEnglishCharacters(NSObject* self) {
    return isLegal(self, isCommonEnglish, detail::commonEnglishPattern);
}

bool isLegalFuturesPrice(NSObject* self) {
    return isLegal(self, isFuturesPrice, detail::futuresPricePattern);
}

bool isPureNumberString(NSObject* self) {
    return isLegal(self, isPureNumber, detail::pureNumberPattern);
}

bool isLegalIdCardNumber(NSObject* self) {
    return isLegal(self, isIdCardNumber, detail::idCardNumberPattern);
}

} // namespace zr
