#include <zrbasic/model/object_helpers.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/set.h>

#include <gtest/gtest.h>

namespace {

using namespace zr;

class AnswersYes : public NSObject {
    ZR_OBJECT(AnswersYes, NSObject)

  public:
    bool isEqual(NSObject*) const override { return true; }
};

TEST(ObjectIdentifier, staysTheSameForOneObjectAndDiffersBetweenObjects) {
    const auto object = make<NSObject>();
    const auto other = make<NSObject>();
    const auto identifier = objectIdentifier(object);
    EXPECT_EQ(objectIdentifier(object), identifier);
    EXPECT_FALSE(identifier->isEqual(objectIdentifier(other)));
    ASSERT_EQ(identifier->length(), 36U);
    for (NSUInteger i = 0; i < 36; ++i) {
        const char16_t unit = identifier->characterAtIndex(i);
        const bool isHyphen = i == 8 || i == 13 || i == 18 || i == 23;
        EXPECT_TRUE(isHyphen ? unit == u'-' : (unit >= u'0' && unit <= u'9') || (unit >= u'A' && unit <= u'F')) << i;
    }
    EXPECT_EQ(objectIdentifier(nullptr), nullptr);
    EXPECT_EQ(objectIdentifier(NSNull::null()), objectIdentifier(NSNull::null()));
}

TEST(ObjectIdentifier, isStoredAsACopyAndRemovedByNull) {
    const auto object = make<NSObject>();
    const auto text = NSMutableString::fromUtf8("mine");
    setObjectIdentifier(object, cast<NSString>(text->mutableCopy()));
    EXPECT_EQ(objectIdentifier(object)->utf8(), "mine");
    setObjectIdentifier(object, ""_ns);
    EXPECT_EQ(objectIdentifier(object)->length(), 0U) << "an empty identifier is one";
    setObjectIdentifier(object, nullptr);
    const auto made = objectIdentifier(object);
    EXPECT_EQ(made->length(), 36U);
    EXPECT_EQ(send<Ref<NSString>>(object, "objectIdentifier"_sel), made);
    setObjectIdentifier(nullptr, "x"_ns);
}

TEST(ValidObject, isOfTheClassOrADescendant) {
    EXPECT_TRUE(isValidObject<NSNumber>(box(1)));
    EXPECT_TRUE(isValidObject<NSString>(NSMutableString::fromUtf8("x")->mutableCopy()));
    EXPECT_FALSE(isValidObject<NSNumber>("1"_ns));
    EXPECT_FALSE(isValidObject<NSNumber>(NSNull::null()));
    EXPECT_FALSE(isValidObject<NSNumber>(nullptr));
    EXPECT_FALSE(isValidObject_ofType(box(1), nullptr));
    EXPECT_FALSE(isValidObject_ofType(nullptr, nullptr));
    EXPECT_TRUE(send<bool>(NSNumber::classObject(), "isValidObject:"_sel, box(1)));
    EXPECT_FALSE(send<bool>(NSString::classObject(), "isValidObject:"_sel, box(1)));
}

TEST(StructuralEquality, followsTheKindsOfBothObjects) {
    const id nested = array({array({box(1), "a"_ns}), array({})});
    const id same = array({array({box(1.0), "a"_ns}), array({})});
    const id null = NSNull::null();
    const struct {
        const char* label;
        id first;
        id second;
        bool isEqual;
    } rows[] = {
        {"two nulls", nullptr, nullptr, true},
        {"null first", nullptr, box(1), false},
        {"null second", box(1), nullptr, false},
        {"null and the null object", nullptr, null, false},
        {"the null object twice", null, null, true},
        {"numbers across kinds", box(1), box(1.0), true},
        {"a number and a boolean", box(1), box(true), true},
        {"different numbers", box(1), box(2), false},
        {"strings", "a"_ns, NSString::fromUtf8("a"), true},
        {"a number and its digits", box(1), "1"_ns, false},
        {"digits and their number", "1"_ns, box(1), false},
        {"nested arrays", nested, same, true},
        {"a longer array", array({box(1)}), array({box(1), box(2)}), false},
        {"other elements", array({box(1), array({box(2)})}), array({box(1), array({box(3)})}), false},
        {"empty arrays", array({}), array({}), true},
        {"an array and a string", array({}), ""_ns, false},
        {"an array and a set", array({box(1)}), NSSet::setWithObject(box(1)), false},
        {"dictionaries", dictionary({{"a"_ns, box(1)}}), dictionary({{"a"_ns, box(1.0)}}), true},
        {"sets", NSSet::setWithObject(box(1)), NSSet::setWithObject(box(1)), true},
        {"the first object decides", make<AnswersYes>(), box(1), true},
        {"the second object is not asked", box(1), make<AnswersYes>(), false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.label);
        EXPECT_EQ(isObject_equalTo(row.first, row.second), row.isEqual);
    }
}

TEST(StructuralEquality, goesAsDeepAsTheArraysDo) {
    id first = array({});
    id second = array({});
    id other = array({box(1)});
    for (int i = 0; i < 2000; ++i) {
        first = array({first});
        second = array({second});
        other = array({other});
    }
    EXPECT_TRUE(isObject_equalTo(first, second));
    EXPECT_FALSE(isObject_equalTo(first, other));
}

TEST(EqualToAny, asksTheElements) {
    EXPECT_TRUE(isEqualToAny(box(1), array({"1"_ns, box(1.0)})));
    EXPECT_FALSE(isEqualToAny(box(1), array({"1"_ns})));
    EXPECT_TRUE(isEqualToAny("x"_ns, array({box(3), make<AnswersYes>()}))) << "the element is the one asked";
    EXPECT_FALSE(isEqualToAny(make<AnswersYes>(), array({box(3)})));
    EXPECT_TRUE(isEqualToAny("x"_ns, NSSet::setWithObject("x"_ns)));
    EXPECT_TRUE(isEqualToAny("key"_ns, dictionary({{"key"_ns, "value"_ns}})));
    EXPECT_FALSE(isEqualToAny("value"_ns, dictionary({{"key"_ns, "value"_ns}})));
}

TEST(EqualToAny, isFalseForNothingAndForNoCollection) {
    EXPECT_FALSE(isEqualToAny(box(1), nullptr));
    EXPECT_FALSE(isEqualToAny(box(1), array({})));
    EXPECT_FALSE(isEqualToAny(box(1), box(1)));
    EXPECT_FALSE(isEqualToAny(box(1), NSNull::null()));
    EXPECT_FALSE(isEqualToAny(nullptr, array({box(1)})));
}

} // namespace
