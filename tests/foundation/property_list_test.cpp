#include <zrbasic/platform/foundation/property_list_p.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/data.h>
#include <zrbasic/platform/foundation/date.h>
#include <zrbasic/platform/foundation/decimal_number.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using namespace zr;

Ref<NSDictionary> sample() {
    return dictionary({
        {"string"_ns, u"\u4EF7 \"\\\n"_ns},
        {"half"_ns, NSString::fromUtf16(u"\xD83D")},
        {"number"_ns, box(12.5)},
        {"date"_ns, NSDate::dateWithTimeIntervalSinceReferenceDate(0.25)},
        {"data"_ns, NSData::fromBytes("\x01\xFE")},
        {"list"_ns, array({box(true), NSDecimalNumber::one(), dictionary({{NSString::fromUtf16(u"\xDC00"), box(1)}})})},
    });
}

/// Texts of any code units, half surrogate pairs included.
Ref<NSString> anyText() {
    const auto units = *rc::gen::container<std::vector<std::uint16_t>>(
        rc::gen::oneOf(rc::gen::inRange<std::uint16_t>(0, 0x80), rc::gen::arbitrary<std::uint16_t>()));
    return NSString::fromUtf16(std::u16string(units.begin(), units.end()));
}

double anyDouble() {
    const auto bits = *rc::gen::arbitrary<std::uint64_t>();
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

float anyFloat() {
    const auto bits = *rc::gen::arbitrary<std::uint32_t>();
    float value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

id anyValue(int depth) {
    switch (*rc::gen::inRange(0, depth > 0 ? 10 : 8)) {
        case 0:
            return anyText();
        case 1:
            return box(*rc::gen::arbitrary<std::int64_t>());
        case 2:
            return box(*rc::gen::arbitrary<std::uint64_t>());
        case 3:
            return box(*rc::gen::arbitrary<bool>());
        case 4:
            return box(anyDouble());
        case 5:
            return box(anyFloat());
        case 6:
            return NSDate::dateWithTimeIntervalSinceReferenceDate(anyDouble());
        case 7:
            return NSData::fromBytes(*rc::gen::arbitrary<std::string>());
        case 8: {
            std::vector<id> elements;
            for (int count = *rc::gen::inRange(0, 4); count > 0; --count) {
                elements.push_back(anyValue(depth - 1));
            }
            return NSArray::fromElements(std::move(elements));
        }
        default: {
            const auto entries = NSMutableDictionary::dictionary();
            for (int count = *rc::gen::inRange(0, 4); count > 0; --count) {
                entries->setObject_forKey(anyValue(depth - 1), anyText());
            }
            return entries->copy();
        }
    }
}

TEST(PropertyList, aTextCutAnywhereIsNoPropertyList) {
    const std::string text = detail::propertyListText(sample());
    ASSERT_TRUE(sample()->isEqual(detail::propertyListFromText(text)));
    const std::size_t end = text.find_last_not_of('\n') + 1;
    for (std::size_t length = 0; length < end; ++length) {
        EXPECT_FALSE(detail::propertyListFromText(std::string_view(text).substr(0, length))) << length;
    }
}

TEST(PropertyList, textDoesNotDependOnTheOrderOfEntries) {
    const auto forward = dictionary({{"a"_ns, box(1)}, {"b"_ns, box(2)}});
    const auto backward = dictionary({{"b"_ns, box(2)}, {"a"_ns, box(1)}});
    EXPECT_EQ(detail::propertyListText(forward), detail::propertyListText(backward));
    const auto other = dictionary({{"a"_ns, box(1.0)}, {"b"_ns, box(2)}});
    EXPECT_TRUE(forward->isEqual(other));
    EXPECT_NE(detail::propertyListText(forward), detail::propertyListText(other)) << "but on types";
}

TEST(PropertyList, plainStringsAreOfNoOtherClass) {
    const Ref<NSString> text = "text"_ns;
    EXPECT_EQ(detail::plainString(text), text);
    const auto changing = NSMutableString::stringWithString("text"_ns);
    const Ref<NSString> plain = detail::plainString(changing);
    EXPECT_NE(plain, changing);
    EXPECT_EQ(object_getClass(plain), NSString::classObject());
    EXPECT_EQ(plain->utf8(), "text");
}

TEST(PropertyList, nothingIsCopiedForNullAndOtherObjects) {
    EXPECT_FALSE(detail::propertyListCopy(nullptr));
    EXPECT_FALSE(detail::propertyListCopy(make<NSObject>()));
    EXPECT_FALSE(detail::propertyListCopy(NSDictionary::classObject()));
    EXPECT_TRUE(sample()->isEqual(detail::propertyListCopy(sample())));
}

RC_GTEST_PROP(PropertyList, whateverIsWrittenReadsBack, ()) {
    const auto values = dictionary({{"value"_ns, anyValue(3)}});
    const std::string text = detail::propertyListText(values);
    const Ref<NSDictionary> read = detail::propertyListFromText(text);
    RC_ASSERT(static_cast<bool>(read));
    RC_ASSERT(values->isEqual(read));
    // Types included, which equality does not mind.
    RC_ASSERT(detail::propertyListText(read) == text);
}

RC_GTEST_PROP(PropertyList, aDamagedTextIsRefusedOrReadsAsSomething, ()) {
    std::string text = detail::propertyListText(sample());
    for (int changes = *rc::gen::inRange(1, 4); changes > 0; --changes) {
        text[*rc::gen::inRange<std::size_t>(0, text.size())] = *rc::gen::arbitrary<char>();
    }
    if (const Ref<NSDictionary> read = detail::propertyListFromText(text)) {
        const Ref<NSDictionary> again = detail::propertyListFromText(detail::propertyListText(read));
        RC_ASSERT(read->isEqual(again));
    }
}

} // namespace
