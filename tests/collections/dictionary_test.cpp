#include <zrbasic/collections/dictionary.h>

#include "../foundation/checks.h"
#include "../foundation/listing.h"

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/decimal_number.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

#include <limits>

namespace zr {

namespace {

using test::listing;
using test::raised;
using test::raisedName;

/// One entry, "a".
Ref<NSDictionary> holding(const id& value) {
    return dictionary({{"a"_ns, value}});
}

TEST(DictionaryReads, givePresentValuesAndDefaultsForAbsentOnes) {
    const Ref<NSDictionary> reply = holding("x"_ns);
    EXPECT_EQ(zr_objectForKey(reply, "a"_ns).get(), ("x"_ns).get());
    EXPECT_FALSE(zr_objectForKey(reply, "b"_ns));
    EXPECT_EQ(zr_objectForKey_defaultValue(reply, "a"_ns, "d"_ns).get(), ("x"_ns).get());
    EXPECT_EQ(zr_objectForKey_defaultValue(reply, "b"_ns, "d"_ns).get(), ("d"_ns).get());
    EXPECT_FALSE(zr_objectForKey_defaultValue(reply, "b"_ns, nullptr));
}

TEST(DictionaryReads, theNullObjectIsAPresentValue) {
    const Ref<NSDictionary> reply = holding(NSNull::null());
    EXPECT_EQ(zr_objectForKey_defaultValue(reply, "a"_ns, "d"_ns).get(), NSNull::null());
    EXPECT_EQ(zr_objectForKey(reply, "a"_ns).get(), NSNull::null());
    EXPECT_EQ(zr_numberForKey_default(reply, "a"_ns, box(7)).get(), NSNull::null());
    EXPECT_EQ(zr_stringForKey_default(reply, "a"_ns, "d"_ns).get(), NSNull::null());
}

TEST(DictionaryReads, theNullKeyGivesNullAndNotTheDefault) {
    const Ref<NSDictionary> reply = holding("x"_ns);
    EXPECT_FALSE(zr_objectForKey_defaultValue(reply, nullptr, "d"_ns));
    EXPECT_FALSE(zr_objectForKey(reply, nullptr));
    EXPECT_FALSE(zr_numberForKey_default(reply, nullptr, box(7)));
    EXPECT_FALSE(zr_stringForKey_default(reply, nullptr, "d"_ns));
}

TEST(DictionaryReads, numberAndStringReadsDoNotCheckTheKind) {
    EXPECT_EQ(zr_numberForKey_default(holding("x"_ns), "a"_ns, box(7)).get(), ("x"_ns).get());
    EXPECT_TRUE(box(5)->isEqual(zr_stringForKey_default(holding(box(5)), "a"_ns, "d"_ns)));
    EXPECT_TRUE(zr_stringForKey_default(holding(array({})), "a"_ns, "d"_ns)->isKindOfClass(NSArray::classObject()));
    EXPECT_TRUE(box(7)->isEqual(zr_numberForKey_default(holding("x"_ns), "b"_ns, box(7))));
    EXPECT_FALSE(zr_stringForKey_default(holding("x"_ns), "b"_ns, nullptr));
}

struct Row {
    const char* name;
    id value;
    NSInteger asInteger;
    NSUInteger asUnsigned;
    bool asBool;
    double asDouble;
};

TEST(DictionaryReads, presentValuesConvertByTheirOwnRules) {
    constexpr auto largest = std::numeric_limits<NSUInteger>::max();
    const Row rows[] = {
        {"integer", box(12), 12, 12, true, 12.0},
        {"fraction", box(1.9), 1, 1, true, 1.9},
        {"half", box(0.5), 0, 0, true, 0.5},
        {"zero", box(0), 0, 0, false, 0.0},
        {"yes", box(true), 1, 1, true, 1.0},
        {"negative", box(-1), -1, largest, true, -1.0},
        {"decimal", NSDecimalNumber::decimalNumberWithString("2.75"_ns), 2, 2, true, 2.75},
        {"text that begins with a number", "12abc"_ns, 12, 12, true, 12.0},
        {"text of a fraction", "1.5"_ns, 1, 1, true, 1.5},
        {"negative text", "-1"_ns, -1, largest, true, -1.0},
        {"YES", "YES"_ns, 0, 0, true, 0.0},
        {"true", "true"_ns, 0, 0, true, 0.0},
        {"no number", "abc"_ns, 0, 0, false, 0.0},
        {"empty text", ""_ns, 0, 0, false, 0.0},
        {"exponent", "1e3"_ns, 1, 1, true, 1000.0},
        {"null object", NSNull::null(), 0, 0, false, 0.0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const Ref<NSDictionary> reply = holding(row.value);
        EXPECT_EQ(zr_integerForKey_default(reply, "a"_ns, 7), row.asInteger);
        EXPECT_EQ(zr_uintegerForKey_default(reply, "a"_ns, 7), row.asUnsigned);
        EXPECT_EQ(zr_boolForKey_default(reply, "a"_ns, !row.asBool), row.asBool);
        EXPECT_EQ(zr_floatForKey_default(reply, "a"_ns, 7.5), row.asDouble);
    }
}

TEST(DictionaryReads, absentKeysGiveTheDefault) {
    const Ref<NSDictionary> reply = holding(NSNull::null());
    EXPECT_EQ(zr_integerForKey_default(reply, "b"_ns, 7), 7);
    EXPECT_EQ(zr_integerForKey_default(reply, "b"_ns, std::numeric_limits<NSInteger>::min()),
              std::numeric_limits<NSInteger>::min());
    EXPECT_EQ(zr_uintegerForKey_default(reply, "b"_ns, std::numeric_limits<NSUInteger>::max()),
              std::numeric_limits<NSUInteger>::max());
    EXPECT_TRUE(zr_boolForKey_default(reply, "b"_ns, true));
    EXPECT_FALSE(zr_boolForKey_default(reply, "b"_ns, false));
    EXPECT_EQ(zr_floatForKey_default(reply, "b"_ns, 2.5), 2.5);
}

TEST(DictionaryReads, theNullObjectReadsAsZeroAndNeverAsTheDefault) {
    const Ref<NSDictionary> reply = holding(NSNull::null());
    EXPECT_EQ(zr_integerForKey_default(reply, "a"_ns, 7), 0);
    EXPECT_EQ(zr_uintegerForKey_default(reply, "a"_ns, 7), 0U);
    EXPECT_FALSE(zr_boolForKey_default(reply, "a"_ns, true));
    EXPECT_EQ(zr_floatForKey_default(reply, "a"_ns, 2.5), 0.0);
}

TEST(DictionaryReads, theNullKeyIsZeroForAllButTheFloatingRead) {
    const Ref<NSDictionary> reply = holding(box(3));
    EXPECT_EQ(zr_integerForKey_default(reply, nullptr, 7), 0);
    EXPECT_EQ(zr_uintegerForKey_default(reply, nullptr, 7), 0U);
    EXPECT_FALSE(zr_boolForKey_default(reply, nullptr, true));
    EXPECT_EQ(zr_floatForKey_default(reply, nullptr, 2.5), 2.5);
    EXPECT_EQ(send<double>(reply, "zr_floatForKey:default:"_sel, nullptr, 2.5), 2.5);
    EXPECT_EQ(send<NSInteger>(reply, "zr_integerForKey:default:"_sel, nullptr, 7), 0);
}

TEST(DictionaryReads, aNullReceiverGivesZero) {
    EXPECT_FALSE(zr_objectForKey(nullptr, "a"_ns));
    EXPECT_FALSE(zr_objectForKey_defaultValue(nullptr, "a"_ns, "d"_ns));
    EXPECT_EQ(zr_integerForKey_default(nullptr, "a"_ns, 7), 0);
    EXPECT_EQ(zr_uintegerForKey_default(nullptr, "a"_ns, 7), 0U);
    EXPECT_FALSE(zr_boolForKey_default(nullptr, "a"_ns, true));
    EXPECT_EQ(zr_floatForKey_default(nullptr, "a"_ns, 2.5), 0.0);
    EXPECT_FALSE(dictionaryByAddingObject_forKey(nullptr, "x"_ns, "a"_ns));
    EXPECT_FALSE(dictionaryByAddingKeyValues(nullptr, holding("x"_ns)));
}

TEST(DictionaryReads, anObjectWithoutTheConversionRaises) {
    const Ref<NSDictionary> reply = holding(array({box(1)}));
    EXPECT_NE(raised([&] {
                  static_cast<void>(zr_integerForKey_default(reply, "a"_ns, 7));
              }).find("integerValue]: unrecognized selector"),
              std::string::npos);
    EXPECT_EQ(raisedName([&] { static_cast<void>(zr_uintegerForKey_default(reply, "a"_ns, 7)); }),
              NSInvalidArgumentException);
    EXPECT_EQ(raisedName([&] { static_cast<void>(zr_boolForKey_default(reply, "a"_ns, true)); }),
              NSInvalidArgumentException);
    EXPECT_EQ(raisedName([&] { static_cast<void>(zr_floatForKey_default(reply, "a"_ns, 1.5)); }),
              NSInvalidArgumentException);
}

/// Converts in its own way, and takes itself out of the dictionary meanwhile.
class Odd : public NSObject {
    ZR_OBJECT(Odd, NSObject)

  public:
    NSInteger integerValue() {
        if (home) {
            home->removeAllObjects();
        }
        return answer;
    }
    ZR_METHOD(integerValue, "integerValue")
    NSMutableDictionary* home = nullptr;
    NSInteger answer = 42;
};

TEST(DictionaryReads, anyObjectConvertsByMessage) {
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::dictionary();
    Ref<Odd> odd = make<Odd>();
    odd->home = entries;
    entries->setObject_forKey(odd, "a"_ns);
    odd = nullptr;
    EXPECT_EQ(zr_integerForKey_default(entries, "a"_ns, 7), 42);
    EXPECT_EQ(entries->count(), 0U);
}

TEST(DictionaryReads, answerMessagesUnderTheirNames) {
    const Ref<NSDictionary> reply = dictionary({{"n"_ns, box(-2)}, {"s"_ns, "1.5"_ns}});
    EXPECT_TRUE(send<id>(reply, "zr_objectForKey:"_sel, "n"_ns));
    EXPECT_EQ(send<id>(reply, "zr_objectForKey:defaultValue:"_sel, "x"_ns, "d"_ns).get(), ("d"_ns).get());
    EXPECT_EQ(send<NSInteger>(reply, "zr_integerForKey:default:"_sel, "n"_ns, 7), -2);
    EXPECT_EQ(send<double>(reply, "zr_floatForKey:default:"_sel, "s"_ns, 7.0), 1.5);
    EXPECT_EQ(send<bool>(reply, "zr_boolForKey:default:"_sel, "s"_ns, false), true);
    EXPECT_EQ(send<NSUInteger>(reply, "zr_uintegerForKey:default:"_sel, "x"_ns, NSUInteger(7)), 7U);
    EXPECT_EQ(send<id>(reply, "zr_numberForKey:default:"_sel, "s"_ns, box(1)).get(), ("1.5"_ns).get());
    EXPECT_TRUE(send<id>(reply, "zr_stringForKey:default:"_sel, "n"_ns, ""_ns)->isEqual(box(-2)));
}

TEST(DerivedDictionaries, anImmutableReceiverIsCopied) {
    const Ref<NSDictionary> reply = holding(box(1));
    const Ref<NSMutableDictionary> added = dictionaryByAddingObject_forKey(reply, box(2), "b"_ns);
    EXPECT_EQ(listing(added), "a=1 b=2");
    EXPECT_EQ(listing(reply), "a=1");
    EXPECT_NE(static_cast<NSObject*>(added), static_cast<NSObject*>(reply));
    EXPECT_EQ(listing(dictionaryByAddingKeyValues(reply, dictionary({{"b"_ns, box(2)}}))), "a=1 b=2");
    EXPECT_EQ(listing(dictionaryByAddingKeyValues(dictionary({}), nullptr)), "");
    EXPECT_EQ(dictionary({})->count(), 0U);
}

TEST(DerivedDictionaries, aMutableReceiverIsChangedAndComesBack) {
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::fromEntries({{"a"_ns, box(1)}});
    EXPECT_EQ(dictionaryByAddingObject_forKey(entries, box(2), "b"_ns).get(), entries.get());
    EXPECT_EQ(listing(entries), "a=1 b=2");
    EXPECT_EQ(dictionaryByAddingKeyValues(entries, dictionary({{"c"_ns, box(3)}})).get(), entries.get());
    EXPECT_EQ(dictionaryByAddingKeyValues(entries, nullptr).get(), entries.get());
    EXPECT_EQ(listing(entries), "a=1 b=2 c=3");
    EXPECT_EQ(send<id>(entries, "dictionaryByAddingObject:forKey:"_sel, box(4), "d"_ns).get(), entries.get());
    EXPECT_EQ(entries->count(), 4U);
}

TEST(DerivedDictionaries, oneObjectIsStoredOnlyIfStorableButKeyValuesAlways) {
    const Ref<NSDictionary> reply = holding(box(1));
    EXPECT_EQ(listing(dictionaryByAddingObject_forKey(reply, NSNull::null(), "a"_ns)), "a=1");
    EXPECT_EQ(listing(dictionaryByAddingObject_forKey(reply, nullptr, "a"_ns)), "a=1");
    EXPECT_EQ(listing(dictionaryByAddingObject_forKey(reply, box(2), nullptr)), "a=1");
    EXPECT_EQ(listing(dictionaryByAddingKeyValues(reply, holding(NSNull::null()))), "a=<null>");
}

} // namespace

} // namespace zr
