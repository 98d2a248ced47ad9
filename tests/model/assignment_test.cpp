#include <zrbasic/model/assignment.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/key_value_coding.h>
#include <zrbasic/platform/foundation/key_value_observing.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>

#include <gtest/gtest.h>

#include <functional>

namespace {

using namespace zr;

class AssignBase : public NSObject {
    ZR_OBJECT(AssignBase, NSObject)

  public:
    ZR_PROPERTY(Copied<NSString>, symbol, setSymbol)
    ZR_READONLY(Ref<NSString>, code)
    void giveCode(NSString* code) { m_code = code; }
};

class AssignQuote : public AssignBase {
    ZR_OBJECT(AssignQuote, AssignBase)

  public:
    ZR_PROPERTY(Ref<NSNumber>, price, setPrice)
    ZR_PROPERTY(double, change, setChange)
    ZR_PROPERTY(NSInteger, identifier, setIdentifier)
    ZR_READONLY(double, rate)
};

/// Shares some names with the others, in its own order.
class AssignOther : public NSObject {
    ZR_OBJECT(AssignOther, NSObject)

  public:
    ZR_PROPERTY(double, rate, setRate)
    ZR_PROPERTY(Ref<NSNumber>, price, setPrice)
    ZR_PROPERTY(Ref<NSString>, code, setCode)
    ZR_PROPERTY(Ref<NSString>, symbol, setSymbol)
    ZR_PROPERTY(Ref<NSString>, unknown, setUnknown)
};

/// Declares `symbol` once more, so that it stands twice in its table.
class AssignTwice : public AssignBase {
    ZR_OBJECT(AssignTwice, AssignBase)

  public:
    ZR_PROPERTY(Ref<NSString>, symbol, setSymbol)
};

class Choosy : public AssignOther, public ZRPropertyAssignmentProtocol {
    ZR_OBJECT(Choosy, AssignOther, ZRPropertyAssignmentProtocol)

  public:
    std::string asked;
    bool needAssign(NSString* property, NSObject* object) {
        asked += property->utf8() + (object == this ? " " : "! ");
        return !property->isEqualToString("price"_ns);
    }
    ZR_METHOD(needAssign, "needAssignProperty:fromObject:")
};

class OnlyOperation : public AssignOther {
    ZR_OBJECT(OnlyOperation, AssignOther)

  public:
    bool needAssign(NSString*, NSObject*) { return false; }
    ZR_METHOD(needAssign, "needAssignProperty:fromObject:")
};

class OnlyProtocol : public AssignOther, public ZRPropertyAssignmentProtocol {
    ZR_OBJECT(OnlyProtocol, AssignOther, ZRPropertyAssignmentProtocol)
};

class Logging : public AssignBase {
    ZR_OBJECT(Logging, AssignBase)

  public:
    std::string log;
    void will(NSString* key) { log += "will(" + key->utf8() + ") "; }
    ZR_METHOD(will, "willChangeValueForKey:")
    void did(NSString* key) { log += "did(" + key->utf8() + ") "; }
    ZR_METHOD(did, "didChangeValueForKey:")
    void set(NSObject* value, NSString* key) {
        log += "set(" + key->utf8() + '=' + value->description()->utf8() + ") ";
    }
    ZR_METHOD(set, "setValue:forKey:")
};

class Listening : public NSObject {
    ZR_OBJECT(Listening, NSObject)

  public:
    int told = 0;
    std::function<void()> action;
    void observe(NSString*, NSObject*, NSDictionary*, void*) {
        ++told;
        if (action) {
            action();
        }
    }
    ZR_METHOD(observe, "observeValueForKeyPath:ofObject:change:context:")
};

std::string text(NSObject* object) {
    return object ? object->description()->utf8() : "-";
}

TEST(AssignFromObject, copiesEverySharedWritableProperty) {
    const auto source = make<AssignOther>();
    source->setPrice(box(2));
    source->setSymbol("BTC"_ns);
    source->setCode("C1"_ns);
    source->setRate(0.5);
    const auto target = make<AssignQuote>();
    target->setChange(7);
    EXPECT_EQ(assignPropertiesFrom(target, source), target);
    EXPECT_EQ(text(target->price()), "2");
    EXPECT_EQ(text(target->symbol()), "BTC") << "ancestors' properties count";
    EXPECT_EQ(target->code(), nullptr) << "read-only in the target";
    EXPECT_EQ(target->rate(), 0) << "read-only in the target, although its variable could be set";
    EXPECT_EQ(target->change(), 7);
}

TEST(AssignFromObject, readOnlyPropertiesOfTheSourceAreCopied) {
    const auto source = make<AssignBase>();
    source->giveCode("C1"_ns);
    const auto target = make<AssignOther>();
    assignPropertiesFrom(target, source);
    EXPECT_EQ(text(target->code()), "C1");
}

TEST(AssignFromObject, nullSourceChangesNothing) {
    const auto target = make<AssignQuote>();
    target->setPrice(box(1));
    EXPECT_EQ(assignPropertiesFrom(target, nullptr), target);
    EXPECT_EQ(text(target->price()), "1");
    EXPECT_EQ(assignPropertiesFrom(nullptr, target), nullptr);
    const auto fresh = assignPropertiesFrom<AssignQuote>(nullptr);
    ASSERT_NE(fresh, nullptr);
    EXPECT_EQ(fresh->price(), nullptr);
    assignPropertiesFrom(target, NSNull::null());
    EXPECT_EQ(text(target->price()), "1");
}

TEST(AssignFromObject, missingValuesAreNeverAssignedWhateverTheFlagsSay) {
    const auto source = make<AssignOther>();
    source->setSymbol("BTC"_ns);
    for (const bool flag : {true, false}) {
        SCOPED_TRACE(flag);
        const auto target = make<AssignQuote>();
        target->setPrice(box(1));
        assignPropertiesFrom_nilValueEnable(target, source, flag);
        EXPECT_EQ(text(target->price()), "1");
        assignPropertiesFrom_includeFather(target, source, flag);
        EXPECT_EQ(text(target->symbol()), "BTC") << "ancestors are always included";
    }
}

TEST(AssignFromObject, theNullObjectIsAValue) {
    const auto source = make<AssignOther>();
    setValue_forKey(source, NSNull::null(), "price"_ns);
    const auto target = make<AssignQuote>();
    target->setPrice(box(1));
    assignPropertiesFrom(target, source);
    EXPECT_EQ(valueForKey(target, "price"_ns), NSNull::null());
}

TEST(AssignFromObject, theCallbackDecidesByName) {
    const auto source = make<AssignOther>();
    source->setPrice(box(2));
    source->setSymbol("BTC"_ns);
    std::string asked;
    const auto target = make<AssignQuote>();
    assignPropertiesFrom_includeFather_nilValueEnable_propertyEnable(target, source, true, true, [&](NSString* name) {
        asked += name->utf8() + ' ';
        return !name->isEqualToString("price"_ns);
    });
    EXPECT_EQ(asked, "price symbol ") << "only what the target can take, in the source's order";
    EXPECT_EQ(target->price(), nullptr);
    EXPECT_EQ(text(target->symbol()), "BTC");
}

TEST(AssignFromObject, theSourceIsAskedWhenItAdoptsTheProtocolAndHasTheOperation) {
    const auto choosy = make<Choosy>();
    choosy->setPrice(box(2));
    choosy->setSymbol("BTC"_ns);
    const auto target = make<AssignQuote>();
    assignPropertiesFrom(target, choosy);
    EXPECT_EQ(choosy->asked, "price symbol ");
    EXPECT_EQ(target->price(), nullptr);
    EXPECT_EQ(text(target->symbol()), "BTC");
}

TEST(AssignFromObject, theSourceIsNotAskedWithOnlyOneOfTheTwo) {
    const auto onlyOperation = make<OnlyOperation>();
    const auto onlyProtocol = make<OnlyProtocol>();
    EXPECT_TRUE(onlyProtocol->conformsToProtocol(ZRPropertyAssignmentProtocol::protocolObject()));
    for (AssignOther* const source :
         {static_cast<AssignOther*>(onlyOperation), static_cast<AssignOther*>(onlyProtocol)}) {
        source->setPrice(box(2));
        const auto target = make<AssignQuote>();
        assignPropertiesFrom(target, source);
        EXPECT_EQ(text(target->price()), "2");
    }
}

TEST(AssignFromObject, aPropertyDeclaredTwiceIsAssignedTwice) {
    const auto source = make<AssignTwice>();
    source->setSymbol("BTC"_ns);
    const auto target = make<Logging>();
    assignPropertiesFrom(target, source);
    EXPECT_EQ(target->log, "will(symbol) set(symbol=BTC) did(symbol) will(symbol) set(symbol=BTC) did(symbol) ");
}

TEST(AssignFromObject, theClassFormsMakeAndFillANewObject) {
    const auto source = make<AssignOther>();
    source->setPrice(box(2));
    EXPECT_EQ(text(assignPropertiesFrom<AssignQuote>(source)->price()), "2");
    EXPECT_EQ(text(assignPropertiesFrom_includeFather<AssignQuote>(source, false)->price()), "2");
    EXPECT_EQ(text(assignPropertiesFrom_nilValueEnable<AssignQuote>(source, false)->price()), "2");
    const auto byMessage = send<Ref<AssignQuote>>(AssignQuote::classObject(), "assignPropertiesFrom:"_sel, source);
    ASSERT_NE(byMessage, nullptr);
    EXPECT_EQ(text(byMessage->price()), "2");
    EXPECT_EQ(send<id>(byMessage, "assignPropertiesFrom:"_sel, source), byMessage);
}

TEST(AssignFromDictionary, fillsTheNamedPropertiesAndIgnoresTheRest) {
    const auto target = make<AssignQuote>();
    assignPropertiesFromDictionary(target, dictionary({{"price"_ns, box(5)},
                                                       {"change"_ns, box(1.5)},
                                                       {"symbol"_ns, "BTC"_ns},
                                                       {"code"_ns, "C1"_ns},
                                                       {"rate"_ns, box(3)},
                                                       {"nope"_ns, box(1)},
                                                       {box(7), box(1)},
                                                       {NSNull::null(), box(1)}}));
    EXPECT_EQ(text(target->price()), "5");
    EXPECT_EQ(target->change(), 1.5);
    EXPECT_EQ(text(target->symbol()), "BTC");
    EXPECT_EQ(target->code(), nullptr);
    EXPECT_EQ(target->rate(), 0);
}

TEST(AssignFromDictionary, replacedKeysMapDictionaryKeysToPropertyNames) {
    const auto target = make<AssignQuote>();
    assignPropertiesFromDictionary_replacedKeys(
        target, dictionary({{"id"_ns, box(5)}, {"identifier"_ns, box(6)}, {box(1), box(2)}}),
        dictionary({{"id"_ns, "identifier"_ns}, {"identifier"_ns, "nowhere"_ns}, {box(1), "price"_ns}}));
    EXPECT_EQ(target->identifier(), 5);
    EXPECT_EQ(text(target->price()), "2") << "a replaced key need not be a string";
    assignPropertiesFromDictionary_replacedKeys(target, dictionary({{"price"_ns, box(9)}}),
                                                dictionary({{"price"_ns, box(1)}}));
    EXPECT_EQ(text(target->price()), "2") << "a replacement that is no name matches nothing";
    assignPropertiesFromDictionary_replacedKeys(target, dictionary({{"price"_ns, box(9)}}), nullptr);
    EXPECT_EQ(text(target->price()), "9");
    assignPropertiesFromDictionary_replacedKeys(target, dictionary({{"identifier"_ns, box(8)}}),
                                                dictionary({{"id"_ns, "identifier"_ns}}));
    EXPECT_EQ(target->identifier(), 8) << "never the other way round";
}

TEST(AssignFromDictionary, valuesAreHandedOnAsTheyAre) {
    const auto target = make<AssignQuote>();
    target->setChange(3);
    assignPropertiesFromDictionary(target, dictionary({{"price"_ns, "12"_ns}, {"symbol"_ns, box(4)}}));
    EXPECT_TRUE(valueForKey(target, "price"_ns)->isEqual("12"_ns));
    EXPECT_TRUE(valueForKey(target, "symbol"_ns)->isEqual(box(4)));
    EXPECT_EQ(target->price(), nullptr);
    assignPropertiesFromDictionary(target, dictionary({{"price"_ns, NSNull::null()}, {"change"_ns, NSNull::null()}}));
    EXPECT_EQ(valueForKey(target, "price"_ns), NSNull::null());
    EXPECT_EQ(target->change(), 0);
    assignPropertiesFromDictionary(target, dictionary({{"change"_ns, "2.5x"_ns}}));
    EXPECT_EQ(target->change(), 2.5);
    EXPECT_THROW(assignPropertiesFromDictionary(target, dictionary({{"change"_ns, array({})}})), NSException);
    EXPECT_EQ(target->change(), 2.5);
}

TEST(AssignFromDictionary, nullReceiverAndNullDictionaryDoNothing) {
    const auto target = make<Logging>();
    assignPropertiesFromDictionary(target, nullptr);
    assignPropertiesFromDictionary(target, dictionary({}));
    assignPropertiesFromDictionary(nullptr, dictionary({{"symbol"_ns, "x"_ns}}));
    assignPropertiesFromDictionary_replacedKeys(nullptr, nullptr, nullptr);
    EXPECT_EQ(target->log, "");
}

TEST(AssignFromDictionary, everySetIsFramedInTheDictionarysOrder) {
    const auto target = make<Logging>();
    assignPropertiesFromDictionary_replacedKeys(target, dictionary({{"s"_ns, "A"_ns}, {"symbol"_ns, "B"_ns}}),
                                                dictionary({{"s"_ns, "symbol"_ns}}));
    EXPECT_EQ(target->log, "will(symbol) set(symbol=A) did(symbol) will(symbol) set(symbol=B) did(symbol) ");
}

TEST(Assignment, tellsPlatformObserversTwiceForAutomaticSetters) {
    const auto target = make<AssignQuote>();
    const auto listening = make<Listening>();
    addObserver_forKeyPath_options_context(target, listening, "price"_ns, 0, nullptr);
    assignPropertiesFromDictionary(target, dictionary({{"price"_ns, box(1)}}));
    EXPECT_EQ(listening->told, 2) << "the pair around the set, and the setter's own";
    EXPECT_EQ(target->class_(), AssignQuote::classObject());
}

TEST(Assignment, aSetThatRaisesLeavesNoChangePending) {
    const auto target = make<AssignQuote>();
    const auto listening = make<Listening>();
    addObserver_forKeyPath_options_context(target, listening, "change"_ns, 0, nullptr);
    EXPECT_THROW(assignPropertiesFromDictionary(target, dictionary({{"change"_ns, array({})}})), NSException);
    didChangeValueForKey(target, "change"_ns);
    EXPECT_EQ(listening->told, 0);
}

TEST(Assignment, survivesObserversThatLetEverythingGo) {
    auto target = make<AssignQuote>();
    Ref<NSDictionary> source = dictionary({{"price"_ns, box(1)}, {"change"_ns, box(2)}, {"symbol"_ns, "x"_ns}});
    Weak<NSObject> watch(target);
    const auto listening = make<Listening>();
    listening->action = [&] {
        target = nullptr;
        source = nullptr;
    };
    addObserver_forKeyPath_options_context(target, listening, "price"_ns, 0, nullptr);
    assignPropertiesFromDictionary(target, source);
    EXPECT_TRUE(watch.expired());

    auto from = make<AssignOther>();
    from->setPrice(box(3));
    from->setSymbol("x"_ns);
    auto into = make<AssignQuote>();
    listening->action = [&] {
        from = nullptr;
        into = nullptr;
    };
    addObserver_forKeyPath_options_context(into, listening, "price"_ns, 0, nullptr);
    const id filled = assignPropertiesFrom(into, from);
    EXPECT_EQ(text(cast<AssignQuote>(filled)->symbol()), "x");
}

TEST(Assignment, changingTheDictionaryMeanwhileRaises) {
    const auto target = make<AssignQuote>();
    const auto source = NSMutableDictionary::dictionary();
    source->setObject_forKey(box(1), "price"_ns);
    source->setObject_forKey(box(2), "change"_ns);
    const auto listening = make<Listening>();
    listening->action = [&] { source->removeAllObjects(); };
    addObserver_forKeyPath_options_context(target, listening, "price"_ns, 0, nullptr);
    EXPECT_THROW(assignPropertiesFromDictionary(target, source), NSException);
    EXPECT_EQ(target->change(), 0);
    EXPECT_EQ(text(target->price()), "1");
    source->setObject_forKey(box(1), "price"_ns);
    source->setObject_forKey(box(2), "change"_ns);
    listening->action = [&] { source->setObject_forKey(box(3), "more"_ns); };
    EXPECT_THROW(assignPropertiesFromDictionary(target, source), NSException);
}

} // namespace
