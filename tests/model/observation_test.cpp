#include <zrbasic/model/observation.h>

#include <zrbasic/model/assignment.h>
#include <zrbasic/model/incision.h>
#include <zrbasic/platform/foundation/key_value_coding.h>
#include <zrbasic/platform/foundation/key_value_observing.h>
#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/runtime/association.h>

#include <gtest/gtest.h>

namespace {

using namespace zr;

class Observed : public NSObject {
    ZR_OBJECT(Observed, NSObject)

  public:
    ZR_PROPERTY(Ref<NSNumber>, price, setPrice)
    ZR_PROPERTY(Copied<NSString>, name, setName)
    ZR_PROPERTY(Weak<NSObject>, owner, setOwner)
    ZR_PROPERTY(double, change, setChange)
    ZR_PROPERTY(Copied<NSString>, URL, setURL)
    ZR_READONLY(Ref<NSString>, code)

    int customSets = 0;
    void setSpecial(NSObject* value) {
        ++customSets;
        setPrice(cast<NSNumber>(value));
    }
    ZR_METHOD(setSpecial, "setSpecial:")
    id special() { return price(); }
    ZR_METHOD(special, "special")
};

class PlatformListener : public NSObject {
    ZR_OBJECT(PlatformListener, NSObject)

  public:
    std::string* log = nullptr;
    int told = 0;
    void observe(NSString* key, NSObject*, NSDictionary*, void*) {
        ++told;
        if (log) {
            *log += "platform:" + key->utf8() + ' ';
        }
    }
    ZR_METHOD(observe, "observeValueForKeyPath:ofObject:change:context:")
};

std::string text(NSObject* object) {
    return object ? object->description()->utf8() : "-";
}

Ref<NSMutableArray> registrationsOf(NSObject* object, NSString* key) {
    const id registry = objc_getAssociatedObject(object, detail::observerRegistryKey());
    const auto* const arrays = cast<NSMutableDictionary>(registry);
    return Ref<NSMutableArray>(arrays ? cast<NSMutableArray>(arrays->objectForKey(key)) : nullptr);
}

/// Writes "label:old>new " down for every call.
ObserverBlock logTo(std::string& log, std::string label) {
    return [&log, label = std::move(label)](NSObject*, NSString*, NSObject* oldValue, NSObject* newValue) {
        log += label + ':' + text(oldValue) + '>' + text(newValue) + ' ';
    };
}

TEST(BlockObservation, callsWithTheObjectTheKeyAndBothValues) {
    const auto observed = make<Observed>();
    const auto observer = make<NSObject>();
    const auto one = box(1);
    const auto two = box(2);
    observed->setPrice(one);
    int calls = 0;
    addObserver_forKeyPath_withBlock(observed, observer, "price"_ns,
                                     [&](const id& object, NSString* key, id oldValue, id newValue) {
                                         ++calls;
                                         EXPECT_EQ(object, observed);
                                         EXPECT_EQ(key->utf8(), "price");
                                         EXPECT_EQ(oldValue, one);
                                         EXPECT_EQ(newValue, two);
                                         EXPECT_EQ(observed->price(), two) << "the new value is in place";
                                     });
    observed->setPrice(two);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(observed->class_(), Observed::classObject());
    EXPECT_STREQ(object_getClassName(observed), "__ZRXIncised_Observed");
}

TEST(BlockObservation, followsEveryWayOfSetting) {
    const auto observed = make<Observed>();
    const auto observer = make<NSObject>();
    std::string log;
    addObserver_forKeyPath_withBlock(observed, observer, "price"_ns, logTo(log, "p"));
    observed->setPrice(box(1));
    setValue_forKey(observed, box(2), "price"_ns);
    send<void>(observed, "setPrice:"_sel, box(2));
    setValue_forKey(observed, "x"_ns, "price"_ns);
    setValue_forKey(observed, NSNull::null(), "price"_ns);
    observed->setPrice(nullptr);
    observed->setName("n"_ns);
    EXPECT_EQ(log, "p:->1 p:1>2 p:2>2 p:2>x p:x><null> p:<null>>- ");
    setValue_forKey(observed, box(9), "_price"_ns);
    EXPECT_EQ(text(observed->price()), "9");
    EXPECT_EQ(log, "p:->1 p:1>2 p:2>2 p:2>x p:x><null> p:<null>>- ") << "past the setter, past the observers";
}

TEST(BlockObservation, sharesOneClassAndLeavesOthersAlone) {
    const auto first = make<Observed>();
    const auto second = make<Observed>();
    const auto third = make<Observed>();
    const auto observer = make<NSObject>();
    std::string log;
    addObserver_forKeyPath_withBlock(first, observer, "price"_ns, logTo(log, "first"));
    addObserver_forKeyPath_withBlock(second, observer, "name"_ns, logTo(log, "second"));
    EXPECT_EQ(object_getClass(first), object_getClass(second));
    EXPECT_EQ(object_getClass(third), Observed::classObject());
    second->setPrice(box(1));
    third->setPrice(box(1));
    EXPECT_EQ(log, "");
    EXPECT_EQ(text(second->price()), "1");
    second->setName("n"_ns);
    EXPECT_EQ(log, "second:->n ");
}

TEST(BlockObservation, neverSwitchesAnObjectBack) {
    const auto observed = make<Observed>();
    auto observer = make<NSObject>();
    std::string log;
    addObserver_forKeyPath_withBlock(observed, observer, "price"_ns, logTo(log, "p"));
    observer = nullptr;
    observed->setPrice(box(1));
    EXPECT_EQ(log, "");
    ASSERT_EQ(registrationsOf(observed, "price"_ns)->count(), 0U) << "nobody is left";
    EXPECT_STREQ(object_getClassName(observed), "__ZRXIncised_Observed");
    observed->setPrice(box(2));
    EXPECT_EQ(text(observed->price()), "2");
}

TEST(BlockObservation, callsTheNewestRegistrationFirst) {
    const auto observed = make<Observed>();
    const auto observer = make<NSObject>();
    std::string log;
    for (const char* const label : {"first", "second", "third"}) {
        addObserver_forKeyPath_withBlock(observed, observer, "price"_ns, logTo(log, label));
    }
    observed->setPrice(box(1));
    EXPECT_EQ(log, "third:->1 second:->1 first:->1 ");
}

TEST(BlockObservation, theSameRegistrationTwiceIsCalledTwice) {
    const auto observed = make<Observed>();
    const auto observer = make<NSObject>();
    std::string log;
    const ObserverBlock block = logTo(log, "x");
    addObserver_forKeyPath_withBlock(observed, observer, "price"_ns, block);
    addObserver_forKeyPath_withBlock(observed, observer, "price"_ns, block);
    addObserver_forKeyPath_withBlock(observed, observed, "price"_ns, block);
    observed->setPrice(box(1));
    EXPECT_EQ(log, "x:->1 x:->1 x:->1 ");
}

TEST(BlockObservation, nothingIsDoneForMissingArguments) {
    const auto observed = make<Observed>();
    const auto observer = make<NSObject>();
    std::string log;
    addObserver_forKeyPath_withBlock(nullptr, observer, "price"_ns, logTo(log, "x"));
    addObserver_forKeyPath_withBlock(observed, nullptr, "price"_ns, logTo(log, "x"));
    addObserver_forKeyPath_withBlock(observed, observer, nullptr, logTo(log, "x"));
    addObserver_forKeyPath_withBlock(observed, observer, ""_ns, logTo(log, "x"));
    addObserver_forKeyPath_withBlock(observed, observer, "price"_ns, nullptr);
    send<void>(observed, "addObserver:forKeyPath:withBlock:"_sel, observer, box(1), logTo(log, "x"));
    EXPECT_EQ(object_getClass(observed), Observed::classObject());
    EXPECT_EQ(objc_getAssociatedObject(observed, detail::observerRegistryKey()), nullptr);
    send<void>(observed, "addObserver:forKeyPath:withBlock:"_sel, observer, "price"_ns, logTo(log, "sent"));
    observed->setPrice(box(1));
    EXPECT_EQ(log, "sent:->1 ");
}

TEST(BlockObservationRegistry, isADictionaryOfArraysInOrder) {
    const auto observed = make<Observed>();
    const auto observer = make<NSObject>();
    std::string log;
    addObserver_forKeyPath_withBlock(observed, observer, "price"_ns, logTo(log, "1"));
    addObserver_forKeyPath_withBlock(observed, observer, "price"_ns, logTo(log, "2"));
    addObserver_forKeyPath_withBlock(observed, observer, "name"_ns, logTo(log, "3"));
    const auto registrations = registrationsOf(observed, "price"_ns);
    ASSERT_NE(registrations, nullptr);
    ASSERT_EQ(registrations->count(), 2U);
    EXPECT_EQ(registrationsOf(observed, "name"_ns)->count(), 1U);
    const auto first = cast<_ZRXKVOObserverCache>(registrations->objectAtIndex(0));
    EXPECT_EQ(first->observerKey()->utf8(), "price");
    EXPECT_EQ(first->observerObject(), observer);
    first->observerBlock()(observed, "price"_ns, nullptr, nullptr);
    EXPECT_EQ(log, "1:->- ");
    first->setObserverKey("other"_ns);
    observed->setPrice(box(1));
    EXPECT_EQ(log, "1:->- 2:->1 ") << "a registration for another key is left out";
}

TEST(BlockObservation, propertiesWithoutASetterAreNeverCalled) {
    const auto observed = make<Observed>();
    const auto observer = make<NSObject>();
    std::string log;
    for (const auto& key : {"code"_ns, "neverNamed"_ns, "owner.name"_ns, u"\xD800"_ns}) {
        addObserver_forKeyPath_withBlock(observed, observer, key, logTo(log, "x"));
        ASSERT_NE(registrationsOf(observed, key), nullptr);
        EXPECT_EQ(registrationsOf(observed, key)->count(), 1U) << "kept, although it is never called";
    }
    EXPECT_EQ(object_getClass(observed), Observed::classObject());
    setValue_forKey(observed, "x"_ns, "code"_ns);
    EXPECT_EQ(log, "");
    EXPECT_FALSE(inciseSelector_implementation(observed, "setCode:"_sel, imp(&detail::__ZRXObserverSetter)));
    EXPECT_FALSE(sel_findName("setNeverNamed:"));
}

TEST(BlockObservation, scalarPropertiesAreLeftAlone) {
    const auto observed = make<Observed>();
    const auto observer = make<NSObject>();
    std::string log;
    addObserver_forKeyPath_withBlock(observed, observer, "change"_ns, logTo(log, "x"));
    addObserver_forKeyPath_withBlock(observed, observer, "price"_ns, logTo(log, "p"));
    observed->setChange(1.5);
    setValue_forKey(observed, box(2.5), "change"_ns);
    EXPECT_EQ(observed->change(), 2.5);
    EXPECT_EQ(log, "");
    EXPECT_EQ(registrationsOf(observed, "change"_ns)->count(), 1U);
}

TEST(BlockObservation, aCapitalisedKeyPathIsRegisteredButNeverCalled) {
    const auto observed = make<Observed>();
    const auto observer = make<NSObject>();
    const auto listener = make<PlatformListener>();
    std::string log;
    addObserver_forKeyPath_options_context(observed, listener, "uRL"_ns,
                                           NSKeyValueObservingOptionOld | NSKeyValueObservingOptionNew, nullptr);
    addObserver_forKeyPath_withBlock(observed, observer, "URL"_ns, logTo(log, "x"));
    EXPECT_EQ(registrationsOf(observed, "URL"_ns)->count(), 1U);
    EXPECT_NO_THROW(observed->setURL("a"_ns));
    EXPECT_EQ(text(observed->URL()), "a");
    EXPECT_EQ(log, "");
    EXPECT_GE(listener->told, 1) << "the change is announced under the derived key";
    addObserver_forKeyPath_withBlock(observed, observer, "uRL"_ns, logTo(log, "derived"));
    observed->setURL("b"_ns);
    EXPECT_EQ(log, "derived:->b ") << "the old value reads as null";
}

TEST(BlockObservation, runsACustomSetterExactlyOnce) {
    const auto observed = make<Observed>();
    const auto observer = make<NSObject>();
    std::string log;
    addObserver_forKeyPath_withBlock(observed, observer, "special"_ns, logTo(log, "s"));
    send<void>(observed, "setSpecial:"_sel, box(1));
    setValue_forKey(observed, box(2), "special"_ns);
    EXPECT_EQ(observed->customSets, 2);
    EXPECT_EQ(log, "s:->1 s:1>2 ");
}

TEST(BlockObservation, noticesASetterThatIsReplacedLater) {
    const auto observed = make<Observed>();
    const auto observer = make<NSObject>();
    std::string log;
    addObserver_forKeyPath_withBlock(observed, observer, "name"_ns, logTo(log, "n"));
    observed->setName("a"_ns);
    const IMP original = class_getMethodImplementation(Observed::classObject(), "setName:"_sel);
    class_replaceMethod(Observed::classObject(), "setName:"_sel,
                        imp(+[](NSObject* self, SEL, NSObject*) { setValue_forKey(self, "replaced"_ns, "_name"_ns); }));
    observed->setName("b"_ns);
    EXPECT_EQ(text(observed->name()), "replaced");
    class_replaceMethod(Observed::classObject(), "setName:"_sel, original);
    observed->setName("c"_ns);
    EXPECT_EQ(text(observed->name()), "c");
    EXPECT_EQ(log, "n:->a n:a>b n:replaced>c ");
}

TEST(BlockObservation, aSetterNamedLikeNoneDoesNothing) {
    const auto observed = make<Observed>();
    observed->setPrice(box(1));
    detail::__ZRXObserverSetter(observed, "put:"_sel, box(2));
    detail::__ZRXObserverSetter(observed, "set"_sel, box(2));
    detail::__ZRXObserverSetter(observed, "price"_sel, box(2));
    EXPECT_EQ(text(observed->price()), "1");
}

TEST(BothObservers, platformObserversAreToldBeforeTheBlocks) {
    const auto observed = make<Observed>();
    const auto listener = make<PlatformListener>();
    std::string log;
    listener->log = &log;
    addObserver_forKeyPath_withBlock(observed, listener, "price"_ns, logTo(log, "block"));
    addObserver_forKeyPath_options_context(observed, listener, "price"_ns, 0, nullptr);
    observed->setPrice(box(1));
    EXPECT_EQ(log, "platform:price platform:price block:->1 ");
}

TEST(BothObservers, comeToTheSameWhicheverWasFirst) {
    for (const bool isPlatformFirst : {true, false}) {
        SCOPED_TRACE(isPlatformFirst ? "platform first" : "block first");
        const auto observed = make<Observed>();
        const auto observer = make<NSObject>();
        const auto listener = make<PlatformListener>();
        std::string log;
        if (isPlatformFirst) {
            addObserver_forKeyPath_options_context(observed, listener, "price"_ns, 0, nullptr);
        }
        addObserver_forKeyPath_withBlock(observed, observer, "price"_ns, logTo(log, "b"));
        if (!isPlatformFirst) {
            addObserver_forKeyPath_options_context(observed, listener, "price"_ns, 0, nullptr);
        }
        EXPECT_STREQ(object_getClassName(observed), "__ZRXIncised_NSKVONotifying_Observed");
        EXPECT_EQ(observed->class_(), Observed::classObject());
        observed->setPrice(box(1));
        EXPECT_EQ(listener->told, 2) << "the incised setter's pair, and the announcing setter's";
        EXPECT_EQ(log, "b:->1 ");
        setValue_forKey(observed, box(2), "price"_ns);
        EXPECT_EQ(listener->told, 4);
        assignPropertiesFromDictionary(observed, dictionary({{"price"_ns, box(3)}}));
        EXPECT_EQ(listener->told, 7) << "and the assignment's own";
        EXPECT_EQ(log, "b:->1 b:1>2 b:2>3 ");
    }
}

TEST(BothObservers, platformObserversOfAnIncisedObjectKeepOtherIncisionsAlive) {
    const auto observed = make<Observed>();
    const auto observer = make<NSObject>();
    const auto listener = make<PlatformListener>();
    std::string log;
    addObserver_forKeyPath_withBlock(observed, observer, "price"_ns, logTo(log, "price"));
    addObserver_forKeyPath_withBlock(observed, observer, "name"_ns, logTo(log, "name"));
    addObserver_forKeyPath_options_context(observed, listener, "change"_ns, 0, nullptr);
    addObserver_forKeyPath_withBlock(observed, observer, "owner"_ns, logTo(log, "owner"));
    observed->setPrice(box(1));
    observed->setName("n"_ns);
    observed->setChange(2);
    observed->setOwner(nullptr);
    EXPECT_EQ(log, "price:->1 name:->n owner:->- ");
    EXPECT_EQ(listener->told, 1);
}

TEST(BothObservers, assignmentCallsTheBlocksOnce) {
    const auto observed = make<Observed>();
    const auto observer = make<NSObject>();
    const auto source = make<Observed>();
    source->setPrice(box(1));
    source->setName("n"_ns);
    std::string log;
    addObserver_forKeyPath_withBlock(observed, observer, "price"_ns, logTo(log, "p"));
    assignPropertiesFrom(observed, source);
    EXPECT_EQ(log, "p:->1 ");
    assignPropertiesFromDictionary(observed, dictionary({{"price"_ns, NSNull::null()}}));
    EXPECT_EQ(log, "p:->1 p:1><null> ");
}

} // namespace
