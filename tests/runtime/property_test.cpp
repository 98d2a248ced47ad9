#include "sample_model.h"

#include <gtest/gtest.h>

namespace zr {
namespace {

using test::PlainSample;
using test::Sample;
using test::SettableSample;

std::string attributesOf(const char* name) {
    return property_getAttributes(class_getProperty(Sample::classObject(), name));
}

TEST(Property, aFreshObjectIsAllZeroAndNull) {
    const auto object = make<Sample>();
    EXPECT_EQ(object->symbol(), nullptr);
    EXPECT_EQ(object->owner(), nullptr);
    EXPECT_EQ(object->change(), 0.0);
    EXPECT_EQ(object->largeUnsigned(), 0U);
    EXPECT_FALSE(object->isHidden());
}

TEST(Property, everyNumberKindKeepsItsLimits) {
    const auto object = make<Sample>();
    object->setTiny(-128);
    object->setTinyUnsigned(255);
    object->setSmall(-32768);
    object->setSmallUnsigned(65535);
    object->setMiddle(std::numeric_limits<std::int32_t>::min());
    object->setMiddleUnsigned(std::numeric_limits<std::uint32_t>::max());
    object->setLarge(std::numeric_limits<std::int64_t>::min());
    object->setLargeUnsigned(std::numeric_limits<std::uint64_t>::max());
    object->setRatio(0.1F);
    EXPECT_EQ(object->tiny(), -128);
    EXPECT_EQ(object->tinyUnsigned(), 255);
    EXPECT_EQ(object->small(), -32768);
    EXPECT_EQ(object->smallUnsigned(), 65535);
    EXPECT_EQ(object->middle(), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(object->middleUnsigned(), std::numeric_limits<std::uint32_t>::max());
    EXPECT_EQ(object->large(), std::numeric_limits<std::int64_t>::min());
    EXPECT_EQ(object->largeUnsigned(), std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(object->ratio(), 0.1F);
}

class Copying : public NSObject {
    ZR_OBJECT(Copying, NSObject)

  public:
    id copy() const override { return make<Copying>(); }
};

class Holder : public NSObject {
    ZR_OBJECT(Holder, NSObject)

  public:
    ZR_PROPERTY(Copied<Copying>, copied, setCopied)
    ZR_PROPERTY(Ref<Copying>, kept, setKept)
};

TEST(Property, aCopiedOneStoresTheCopy) {
    const auto holder = make<Holder>();
    const auto value = make<Copying>();
    holder->setCopied(value);
    holder->setKept(value);
    EXPECT_NE(holder->copied(), nullptr);
    EXPECT_NE(holder->copied(), value);
    EXPECT_EQ(holder->kept(), value);
    holder->setCopied(nullptr);
    EXPECT_EQ(holder->copied(), nullptr);
}

TEST(Property, aWeakOneDoesNotKeepItsObject) {
    const auto object = make<Sample>();
    std::string log;
    auto owner = test::witness(log, 'o');
    object->setOwner(owner);
    EXPECT_EQ(object->owner(), owner);
    owner = nullptr;
    EXPECT_EQ(log, "o");
    EXPECT_EQ(object->owner(), nullptr);
}

TEST(Property, anObjectOfAnotherKindIsStoredButReadsNullByType) {
    const auto object = make<Sample>();
    const id stranger = make<NSObject>();
    send(object, "setTitle:"_sel, stranger);
    EXPECT_EQ(object->title(), nullptr);
    EXPECT_EQ(send<id>(object, "title"_sel), stranger);
}

TEST(Property, attributesHaveThePlatformsFormAndOrder) {
    EXPECT_EQ(attributesOf("symbol"), "T@\"NSString\",C,N,V_symbol");
    EXPECT_EQ(attributesOf("title"), "T@\"NSString\",&,N,V_title");
    EXPECT_EQ(attributesOf("anything"), "T@,&,N,V_anything");
    EXPECT_EQ(attributesOf("owner"), "T@,W,N,V_owner");
    EXPECT_EQ(attributesOf("next"), "T@\"Sample\",&,N,V_next");
    EXPECT_EQ(attributesOf("hidden"), "TB,N,GisHidden,V_hidden");
    EXPECT_EQ(attributesOf("code"), "T@\"NSString\",R,N,V_code");
    EXPECT_EQ(attributesOf("revision"), "Ti,R,N,V_revision");
    EXPECT_EQ(attributesOf("URL"), "Ti,N,V_URL");
    EXPECT_EQ(attributesOf("level"), "Ti,N,SputLevel:,V_level");
}

TEST(Property, everyNumberKindHasItsTypeLetter) {
    EXPECT_EQ(attributesOf("tiny"), "Tc,N,V_tiny");
    EXPECT_EQ(attributesOf("tinyUnsigned"), "TC,N,V_tinyUnsigned");
    EXPECT_EQ(attributesOf("small"), "Ts,N,V_small");
    EXPECT_EQ(attributesOf("smallUnsigned"), "TS,N,V_smallUnsigned");
    EXPECT_EQ(attributesOf("middle"), "Ti,N,V_middle");
    EXPECT_EQ(attributesOf("middleUnsigned"), "TI,N,V_middleUnsigned");
    EXPECT_EQ(attributesOf("large"), "Tq,N,V_large");
    EXPECT_EQ(attributesOf("largeUnsigned"), "TQ,N,V_largeUnsigned");
    EXPECT_EQ(attributesOf("ratio"), "Tf,N,V_ratio");
    EXPECT_EQ(attributesOf("change"), "Td,N,V_change");
}

TEST(Property, listsHoldTheClassesOwnInDeclarationOrder) {
    std::string names;
    for (const Property property : class_copyPropertyList(Sample::classObject())) {
        names += std::string(property_getName(property)) + ' ';
    }
    EXPECT_EQ(names,
              "symbol title anything owner next hidden tiny tinyUnsigned small smallUnsigned middle middleUnsigned "
              "large largeUnsigned ratio change code revision URL level ");
    EXPECT_TRUE(class_copyPropertyList(PlainSample::classObject()).empty());
    EXPECT_EQ(class_copyPropertyList(SettableSample::classObject()).size(), 1U);
    EXPECT_TRUE(class_copyPropertyList(NSObject::classObject()).empty());
    EXPECT_TRUE(class_copyPropertyList(nullptr).empty());
}

TEST(Property, lookUpClimbsToTheNearestDeclaration) {
    const Property own = class_getProperty(SettableSample::classObject(), "code");
    EXPECT_EQ(property_getAttributes(own), "T@\"NSString\",&,N,V_code");
    EXPECT_NE(own, class_getProperty(Sample::classObject(), "code"));
    EXPECT_EQ(class_getProperty(SettableSample::classObject(), "symbol"),
              class_getProperty(Sample::classObject(), "symbol"));
    EXPECT_EQ(class_getProperty(Sample::classObject(), "nope"), nullptr);
    EXPECT_EQ(class_getProperty(nullptr, "symbol"), nullptr);
    EXPECT_STREQ(property_getName(nullptr), "");
    EXPECT_EQ(property_getAttributes(nullptr), "");
}

TEST(Property, aRedeclaredOneIsReachedThroughTheParentsTypeToo) {
    const auto object = make<SettableSample>();
    object->setCode("new"_ns);
    const Sample* const asParent = object;
    EXPECT_EQ(asParent->code(), "new"_ns);
    EXPECT_EQ(send<id>(object, "code"_sel), "new"_ns);
    // The parent's accessors stay direct for everybody else.
    EXPECT_TRUE(Sample::classObject()->isDirect());
    EXPECT_FALSE(SettableSample::classObject()->isDirect());
}

TEST(Property, oneAddedAtRunTimeIsListedLast) {
    Class* const pair = objc_allocateClassPair(Sample::classObject(), "PropertyPair");
    EXPECT_TRUE(class_addProperty(pair, "bare", {{"T", "i"}}));
    EXPECT_FALSE(class_addProperty(pair, "bare", {{"T", "q"}}));
    EXPECT_FALSE(class_addProperty(nullptr, "bare", {}));
    EXPECT_FALSE(class_addProperty(pair, "", {}));
    const std::vector<Property> properties = class_copyPropertyList(pair);
    ASSERT_EQ(properties.size(), 1U);
    EXPECT_EQ(property_getAttributes(properties[0]), "Ti");
    const std::vector<PropertyAttribute> expected{{"T", "i"}};
    EXPECT_EQ(property_copyAttributeList(properties[0]), expected);
}

TEST(Property, aReadOnlyOneHasNoSetterMessage) {
    const auto object = make<Sample>();
    object->prime("c"_ns);
    EXPECT_EQ(object->code(), "c"_ns);
    EXPECT_EQ(object->revision(), 7);
    EXPECT_FALSE(object->respondsToSelector("setCode:"_sel));
    EXPECT_TRUE(object->respondsToSelector("code"_sel));
}

} // namespace
} // namespace zr
