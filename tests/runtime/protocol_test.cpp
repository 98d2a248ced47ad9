#include "sample_model.h"

#include <zrbasic/platform/foundation/runtime_names.h>

#include <gtest/gtest.h>

namespace zr {
namespace {

using test::Listener;
using test::PlainSample;
using test::Sample;

TEST(Protocol, adoptersAndTheirDescendantsConform) {
    EXPECT_TRUE(make<Sample>()->conformsToProtocol(Listener::protocolObject()));
    EXPECT_TRUE(make<PlainSample>()->conformsToProtocol(Listener::protocolObject()));
    EXPECT_FALSE(make<NSObject>()->conformsToProtocol(Listener::protocolObject()));
    EXPECT_FALSE(make<Sample>()->conformsToProtocol(nullptr));
    EXPECT_TRUE(class_conformsToProtocol(Sample::classObject(), Listener::protocolObject()));
    EXPECT_FALSE(class_conformsToProtocol(PlainSample::classObject(), Listener::protocolObject()));
}

TEST(Protocol, isKnownByNameFromItsFirstUseOn) {
    Protocol* const listener = Listener::protocolObject();
    EXPECT_EQ(objc_getProtocol("Listener"), listener);
    EXPECT_EQ(NSProtocolFromString("Listener"_ns), listener);
    EXPECT_EQ(NSStringFromProtocol(Listener::protocolObject())->utf8(), "Listener");
    EXPECT_EQ(objc_getProtocol("NoSuchProtocol"), nullptr);
    EXPECT_EQ(NSProtocolFromString(nullptr), nullptr);
    EXPECT_EQ(Listener::protocolObject()->description()->utf8(), "<Protocol: Listener>");
}

TEST(Protocol, givesTheInterfaceOfAnAdopter) {
    const auto object = make<PlainSample>();
    Listener* const listener = protocolCast<Listener>(object);
    ASSERT_NE(listener, nullptr);
    EXPECT_TRUE(listener->heard("abc"_ns));
    EXPECT_EQ(protocolCast<Listener>(make<NSObject>()), nullptr);
    EXPECT_EQ(protocolCast<Listener>(nullptr), nullptr);
}

TEST(Protocol, itsOperationsAreMessagesOfTheAdopter) {
    const auto object = make<PlainSample>();
    EXPECT_TRUE(object->respondsToSelector("heard:"_sel));
    EXPECT_TRUE(send<bool>(object, "heard:"_sel, "abc"_ns));
    EXPECT_FALSE(send<bool>(object, "heard:"_sel, "ab"_ns));
}

TEST(Protocol, adoptedAtRunTimeConformsButHasNoInterface) {
    Class* const pair = objc_allocateClassPair(NSObject::classObject(), "AdoptingPair");
    EXPECT_TRUE(class_addProtocol(pair, Listener::protocolObject()));
    EXPECT_FALSE(class_addProtocol(pair, Listener::protocolObject()));
    EXPECT_FALSE(class_addProtocol(nullptr, Listener::protocolObject()));
    const id object = class_createInstance(pair);
    EXPECT_TRUE(object->conformsToProtocol(Listener::protocolObject()));
    EXPECT_EQ(protocolCast<Listener>(object), nullptr);
}

} // namespace
} // namespace zr
