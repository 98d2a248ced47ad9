#include <zrbasic/model/method_exchange.h>

#include <zrbasic/platform/runtime/declare.h>

#include <gtest/gtest.h>

namespace {

using namespace zr;

class ExchangeBase : public NSObject {
    ZR_OBJECT(ExchangeBase, NSObject)

  public:
    int one() { return 1; }
    ZR_METHOD(one, "one")
    int two() { return 2; }
    ZR_METHOD(two, "two")
};

class ExchangeChild : public ExchangeBase {
    ZR_OBJECT(ExchangeChild, ExchangeBase)

  public:
    int three() { return 3; }
    ZR_METHOD(three, "three")
};

TEST(MethodExchange, swapsTwiceAndRestores) {
    const auto object = make<ExchangeBase>();
    methodExchangeImplementations(ExchangeBase::classObject(), "one"_sel, "two"_sel);
    EXPECT_EQ(send<int>(object, "one"_sel), 2);
    EXPECT_EQ(send<int>(object, "two"_sel), 1);
    methodExchangeImplementationsWithOriginSelector_swizedSelector<ExchangeBase>("one"_sel, "two"_sel);
    EXPECT_EQ(send<int>(object, "one"_sel), 1);
    EXPECT_EQ(send<int>(object, "two"_sel), 2);
}

TEST(MethodExchange, anInheritedOperationChangesWhereItIsDefined) {
    const auto child = make<ExchangeChild>();
    const auto base = make<ExchangeBase>();
    send<void>(ExchangeChild::classObject(), "methodExchangeImplementationsWithOriginSelector:swizedSelector:"_sel,
               "one"_sel, "two"_sel);
    EXPECT_EQ(send<int>(child, "one"_sel), 2);
    EXPECT_EQ(send<int>(base, "one"_sel), 2);
    methodExchangeImplementations(ExchangeChild::classObject(), "one"_sel, "two"_sel);
    EXPECT_EQ(send<int>(base, "one"_sel), 1);
}

TEST(MethodExchange, aMissingOperationChangesNothing) {
    const auto child = make<ExchangeChild>();
    methodExchangeImplementations(ExchangeChild::classObject(), "three"_sel, "missing"_sel);
    methodExchangeImplementations(ExchangeBase::classObject(), "one"_sel, "three"_sel);
    methodExchangeImplementations(nullptr, "one"_sel, "two"_sel);
    methodExchangeImplementations(ExchangeBase::classObject(), SEL(), "two"_sel);
    EXPECT_EQ(send<int>(child, "one"_sel), 1);
    EXPECT_EQ(send<int>(child, "three"_sel), 3);
}

} // namespace
