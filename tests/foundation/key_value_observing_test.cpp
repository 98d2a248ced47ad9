#include <zrbasic/platform/foundation/key_value_observing.h>

#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/key_value_coding.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>

#include <gtest/gtest.h>

namespace {

using namespace zr;

class Watched : public NSObject {
    ZR_OBJECT(Watched, NSObject)

  public:
    ZR_PROPERTY(Ref<NSNumber>, price, setPrice)
    ZR_PROPERTY(double, change, setChange)
    ZR_PROPERTY(bool, isHidden, setHidden)
    ZR_PROPERTY(unsigned short, tiny, setTiny)
    ZR_PROPERTY(Copied<NSString>, URL, setURL)
    ZR_READONLY(Ref<NSString>, code)
    static bool isAutomatic(NSString* key) { return !key->isEqualToString("tiny"_ns); }
    ZR_CLASS_METHOD(isAutomatic, "automaticallyNotifiesObserversForKey:")
};

class Parting : public NSObject {
    ZR_OBJECT(Parting, NSObject)

  public:
    ~Parting() override { setName("end"_ns); }
    ZR_PROPERTY(Ref<NSString>, name, setName)
};

namespace one {
class Twin : public NSObject {
    ZR_OBJECT(Twin, NSObject)

  public:
    ZR_PROPERTY(Ref<NSNumber>, price, setPrice)
};
} // namespace one

namespace two {
class Twin : public NSObject {
    ZR_OBJECT(Twin, NSObject)

  public:
    ZR_PROPERTY(double, unrelated, setUnrelated)
    ZR_PROPERTY(Ref<NSNumber>, price, setPrice)
};
} // namespace two

std::string text(NSObject* object) {
    return object ? object->description()->utf8() : "-";
}

/// Writes down every announcement: key, prior mark, old and new value.
class Recorder : public NSObject {
    ZR_OBJECT(Recorder, NSObject)

  public:
    std::string log;
    std::function<void()> action;

    void observe(NSString* keyPath, NSObject* object, NSDictionary* change, void* context) {
        log += label;
        log += keyPath->utf8();
        log += change->objectForKey(NSKeyValueChangeNotificationIsPriorKey()) ? "?" : "";
        log += ':' + text(change->objectForKey(NSKeyValueChangeOldKey())) + '>' +
               text(change->objectForKey(NSKeyValueChangeNewKey())) + ' ';
        lastObject = object;
        lastContext = context;
        lastKind = change->objectForKey(NSKeyValueChangeKindKey());
        // A copy: the action may put another one in its place.
        if (const auto running = action) {
            running();
        }
    }
    ZR_METHOD(observe, "observeValueForKeyPath:ofObject:change:context:")

    std::string label;
    NSObject* lastObject = nullptr;
    void* lastContext = nullptr;
    id lastKind;
};

constexpr NSUInteger oldAndNew = NSKeyValueObservingOptionOld | NSKeyValueObservingOptionNew;

TEST(KeyValueObserving, announcesSetsByNameAndByCall) {
    const auto watched = make<Watched>();
    const auto recorder = make<Recorder>();
    int context = 0;
    addObserver_forKeyPath_options_context(watched, recorder, "price"_ns, oldAndNew, &context);
    watched->setPrice(box(1));
    setValue_forKey(watched, box(2), "price"_ns);
    send<void>(watched, "setPrice:"_sel, box(3));
    watched->setPrice(nullptr);
    EXPECT_EQ(recorder->log, "price:<null>>1 price:1>2 price:2>3 price:3><null> ");
    EXPECT_EQ(recorder->lastObject, watched);
    EXPECT_EQ(recorder->lastContext, &context);
    EXPECT_EQ(text(recorder->lastKind), "1");
    EXPECT_EQ(watched->price(), nullptr);
}

TEST(KeyValueObserving, announcesScalarsOfEveryType) {
    const auto watched = make<Watched>();
    const auto recorder = make<Recorder>();
    addObserver_forKeyPath_options_context(watched, recorder, "change"_ns, oldAndNew, nullptr);
    addObserver_forKeyPath_options_context(watched, recorder, "hidden"_ns, oldAndNew, nullptr);
    watched->setChange(1.5);
    setValue_forKey(watched, "2.5"_ns, "change"_ns);
    watched->setHidden(true);
    EXPECT_EQ(recorder->log, "change:0>1.5 change:1.5>2.5 hidden:0>1 ");
    EXPECT_EQ(watched->change(), 2.5);
    EXPECT_TRUE(watched->isHidden());
}

TEST(KeyValueObserving, announcesEqualValuesToo) {
    const auto watched = make<Watched>();
    const auto recorder = make<Recorder>();
    const auto one = box(1);
    watched->setPrice(one);
    addObserver_forKeyPath_options_context(watched, recorder, "price"_ns, oldAndNew, nullptr);
    watched->setPrice(one);
    EXPECT_EQ(recorder->log, "price:1>1 ");
}

TEST(KeyValueObserving, hidesTheClassThatItSwitchesTo) {
    const auto watched = make<Watched>();
    const auto bystander = make<Watched>();
    const auto recorder = make<Recorder>();
    addObserver_forKeyPath_options_context(watched, recorder, "price"_ns, 0, nullptr);
    addObserver_forKeyPath_options_context(watched, recorder, "change"_ns, 0, nullptr);
    EXPECT_STREQ(object_getClassName(watched), "NSKVONotifying_Watched");
    EXPECT_EQ(watched->class_(), Watched::classObject());
    EXPECT_TRUE(watched->isMemberOfClass(Watched::classObject()));
    EXPECT_EQ(watched->superclass(), NSObject::classObject());
    EXPECT_EQ(object_getClass(bystander), Watched::classObject());
    const auto other = make<Watched>();
    addObserver_forKeyPath_options_context(other, recorder, "price"_ns, 0, nullptr);
    EXPECT_EQ(object_getClass(other), object_getClass(watched));
}

TEST(KeyValueObserving, everyPairAnnouncesForItselfInnerFirst) {
    const auto watched = make<Watched>();
    const auto recorder = make<Recorder>();
    addObserver_forKeyPath_options_context(watched, recorder, "price"_ns, oldAndNew, nullptr);
    willChangeValueForKey(watched, "price"_ns);
    watched->setPrice(box(1));
    recorder->log += "| ";
    didChangeValueForKey(watched, "price"_ns);
    EXPECT_EQ(recorder->log, "price:<null>>1 | price:<null>>1 ");
    recorder->log.clear();
    willChangeValueForKey(watched, "price"_ns);
    willChangeValueForKey(watched, "price"_ns);
    didChangeValueForKey(watched, "price"_ns);
    didChangeValueForKey(watched, "price"_ns);
    didChangeValueForKey(watched, "price"_ns);
    EXPECT_EQ(recorder->log, "price:1>1 price:1>1 ");
}

TEST(KeyValueObserving, aDidWithoutAWillDoesNothing) {
    const auto watched = make<Watched>();
    const auto recorder = make<Recorder>();
    didChangeValueForKey(watched, "price"_ns);
    addObserver_forKeyPath_options_context(watched, recorder, "price"_ns, oldAndNew, nullptr);
    didChangeValueForKey(watched, "price"_ns);
    willChangeValueForKey(watched, "change"_ns);
    didChangeValueForKey(watched, "price"_ns);
    EXPECT_EQ(recorder->log, "");
    willChangeValueForKey(nullptr, "price"_ns);
    didChangeValueForKey(nullptr, "price"_ns);
    willChangeValueForKey(watched, nullptr);
    didChangeValueForKey(watched, nullptr);
    EXPECT_EQ(recorder->log, "");
}

TEST(KeyValueObserving, aChangeThatRaisesIsNeverAnnounced) {
    const auto watched = make<Watched>();
    const auto recorder = make<Recorder>();
    addObserver_forKeyPath_options_context(watched, recorder, "change"_ns, oldAndNew, nullptr);
    { detail::ObservedChange change(watched, "change"_ns); }
    didChangeValueForKey(watched, "change"_ns);
    EXPECT_EQ(recorder->log, "");
    watched->setChange(1);
    EXPECT_EQ(recorder->log, "change:0>1 ");
}

TEST(KeyValueObservingOptions, decideWhatTheChangeHolds) {
    const auto watched = make<Watched>();
    watched->setPrice(box(1));
    const struct {
        const char* label;
        NSUInteger options;
        const char* log;
    } rows[] = {
        {"none", 0, "price:->- "},
        {"new", NSKeyValueObservingOptionNew, "price:->2 "},
        {"old", NSKeyValueObservingOptionOld, "price:1>- "},
        {"prior", NSKeyValueObservingOptionPrior | oldAndNew, "price?:1>- price:1>2 "},
        {"initial", NSKeyValueObservingOptionInitial | oldAndNew, "price:->1 price:1>2 "},
        {"initial without new", NSKeyValueObservingOptionInitial, "price:->- price:->- "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.label);
        const auto recorder = make<Recorder>();
        watched->setPrice(box(1));
        addObserver_forKeyPath_options_context(watched, recorder, "price"_ns, row.options, nullptr);
        watched->setPrice(box(2));
        EXPECT_EQ(recorder->log, row.log);
    }
}

TEST(KeyValueObserving, tellsTheNewestObserverFirstAndEachRegistrationOnce) {
    const auto watched = make<Watched>();
    std::string order;
    Ref<Recorder> recorders[3];
    for (int i = 0; i < 3; ++i) {
        recorders[i] = make<Recorder>();
        recorders[i]->action = [&order, i] { order += std::to_string(i); };
        addObserver_forKeyPath_options_context(watched, recorders[i], "price"_ns, 0, nullptr);
    }
    addObserver_forKeyPath_options_context(watched, recorders[0], "price"_ns, 0, nullptr);
    watched->setPrice(box(1));
    EXPECT_EQ(order, "0210");
}

TEST(KeyValueObserving, removalEndsTheNewestMatchingRegistration) {
    const auto watched = make<Watched>();
    const auto recorder = make<Recorder>();
    int a = 0;
    int b = 0;
    addObserver_forKeyPath_options_context(watched, recorder, "price"_ns, 0, &a);
    addObserver_forKeyPath_options_context(watched, recorder, "price"_ns, 0, &b);
    removeObserver_forKeyPath_context(watched, recorder, "price"_ns, &a);
    watched->setPrice(box(1));
    EXPECT_EQ(recorder->lastContext, &b);
    EXPECT_EQ(recorder->log, "price:->- ");
    removeObserver_forKeyPath(watched, recorder, "price"_ns);
    watched->setPrice(box(2));
    EXPECT_EQ(recorder->log, "price:->- ");
    EXPECT_THROW(removeObserver_forKeyPath(watched, recorder, "price"_ns), NSException);
    try {
        removeObserver_forKeyPath(make<Watched>(), recorder, "price"_ns);
        ADD_FAILURE() << "nothing was raised";
    } catch (const NSException& exception) {
        EXPECT_EQ(exception.name(), NSRangeException);
    }
}

TEST(KeyValueObserving, nullArgumentsDoNothing) {
    const auto watched = make<Watched>();
    const auto recorder = make<Recorder>();
    addObserver_forKeyPath_options_context(nullptr, recorder, "price"_ns, 0, nullptr);
    addObserver_forKeyPath_options_context(watched, nullptr, "price"_ns, 0, nullptr);
    addObserver_forKeyPath_options_context(watched, recorder, nullptr, 0, nullptr);
    removeObserver_forKeyPath(nullptr, recorder, "price"_ns);
    removeObserver_forKeyPath(watched, nullptr, "price"_ns);
    removeObserver_forKeyPath(watched, recorder, nullptr);
    EXPECT_EQ(object_getClass(watched), Watched::classObject());
}

TEST(KeyValueObserving, unknownKeysReadAsNullAndRaiseNothing) {
    const auto watched = make<Watched>();
    const auto recorder = make<Recorder>();
    addObserver_forKeyPath_options_context(watched, recorder, "nope"_ns, oldAndNew, nullptr);
    addObserver_forKeyPath_options_context(watched, recorder, "price.x"_ns, oldAndNew, nullptr);
    addObserver_forKeyPath_options_context(watched, recorder, ""_ns, oldAndNew, nullptr);
    willChangeValueForKey(watched, "nope"_ns);
    didChangeValueForKey(watched, "nope"_ns);
    watched->setPrice(box(1));
    EXPECT_EQ(recorder->log, "nope:<null>><null> ");
}

TEST(KeyValueObserving, aCapitalisedKeyIsAnnouncedAsItWasObserved) {
    const auto watched = make<Watched>();
    const auto recorder = make<Recorder>();
    addObserver_forKeyPath_options_context(watched, recorder, "URL"_ns, oldAndNew, nullptr);
    watched->setURL("a"_ns);
    EXPECT_EQ(recorder->log, "URL:<null>>a ");
}

TEST(KeyValueObserving, variablesSetByNameAreAnnounced) {
    const auto watched = make<Watched>();
    const auto recorder = make<Recorder>();
    addObserver_forKeyPath_options_context(watched, recorder, "code"_ns, oldAndNew, nullptr);
    setValue_forKey(watched, "x"_ns, "code"_ns);
    EXPECT_EQ(recorder->log, "code:<null>>x ");
}

TEST(KeyValueObserving, aClassMayAnnounceByHand) {
    const auto watched = make<Watched>();
    const auto recorder = make<Recorder>();
    addObserver_forKeyPath_options_context(watched, recorder, "tiny"_ns, oldAndNew, nullptr);
    EXPECT_EQ(object_getClass(watched), Watched::classObject());
    watched->setTiny(1);
    EXPECT_EQ(recorder->log, "");
    willChangeValueForKey(watched, "tiny"_ns);
    watched->setTiny(2);
    didChangeValueForKey(watched, "tiny"_ns);
    EXPECT_EQ(recorder->log, "tiny:1>2 ");
}

TEST(KeyValueObserving, anObserverThatDoesNotAnswerRaises) {
    const auto watched = make<Watched>();
    const auto silent = make<NSObject>();
    addObserver_forKeyPath_options_context(watched, silent, "price"_ns, 0, nullptr);
    EXPECT_THROW(watched->setPrice(box(1)), NSException);
    EXPECT_EQ(text(watched->price()), "1");
}

TEST(KeyValueObserverLife, deadObserversAreForgotten) {
    const auto watched = make<Watched>();
    auto dying = make<Recorder>();
    const auto staying = make<Recorder>();
    addObserver_forKeyPath_options_context(watched, dying, "price"_ns, oldAndNew, nullptr);
    addObserver_forKeyPath_options_context(watched, staying, "price"_ns, oldAndNew, nullptr);
    Weak<NSObject> watch(dying);
    dying = nullptr;
    EXPECT_TRUE(watch.expired()) << "observing must not keep the observer alive";
    watched->setPrice(box(1));
    EXPECT_EQ(staying->log, "price:<null>>1 ");
}

TEST(KeyValueObserverLife, anObserverMayDieWhileItIsTold) {
    const auto watched = make<Watched>();
    auto dying = make<Recorder>();
    Weak<Recorder> watch(dying);
    dying->action = [&] { dying = nullptr; };
    addObserver_forKeyPath_options_context(watched, dying, "price"_ns, oldAndNew, nullptr);
    watched->setPrice(box(1));
    EXPECT_TRUE(watch.expired());
    watched->setPrice(box(2));
    EXPECT_EQ(text(watched->price()), "2");
}

TEST(KeyValueObserverLife, theObservedObjectMayDieWhileObserversAreTold) {
    auto watched = make<Watched>();
    Weak<NSObject> watch(watched);
    const auto first = make<Recorder>();
    const auto second = make<Recorder>();
    addObserver_forKeyPath_options_context(watched, first, "price"_ns, oldAndNew, nullptr);
    addObserver_forKeyPath_options_context(watched, second, "price"_ns, oldAndNew, nullptr);
    second->action = [&] { watched = nullptr; };
    watched->setPrice(box(1));
    EXPECT_EQ(first->log, "price:<null>>1 ");
    EXPECT_TRUE(watch.expired());
}

TEST(KeyValueObserverLife, anObserverRemovedBeforeItsTurnIsNotTold) {
    const auto watched = make<Watched>();
    const auto older = make<Recorder>();
    const auto newer = make<Recorder>();
    addObserver_forKeyPath_options_context(watched, older, "price"_ns, 0, nullptr);
    addObserver_forKeyPath_options_context(watched, newer, "price"_ns, 0, nullptr);
    newer->action = [&] { removeObserver_forKeyPath(watched, older, "price"_ns); };
    watched->setPrice(box(1));
    EXPECT_EQ(older->log, "");
    EXPECT_EQ(newer->log, "price:->- ");
}

TEST(KeyValueObserverLife, anObserverAddedMeanwhileIsToldOfTheNextChange) {
    const auto watched = make<Watched>();
    const auto first = make<Recorder>();
    const auto added = make<Recorder>();
    first->action = [&] {
        first->action = nullptr;
        addObserver_forKeyPath_options_context(watched, added, "price"_ns, oldAndNew, nullptr);
    };
    addObserver_forKeyPath_options_context(watched, first, "price"_ns, oldAndNew, nullptr);
    watched->setPrice(box(1));
    EXPECT_EQ(added->log, "");
    watched->setPrice(box(2));
    EXPECT_EQ(added->log, "price:1>2 ");
}

TEST(KeyValueObserverLife, anObserverMaySetTheValueAgain) {
    const auto watched = make<Watched>();
    const auto older = make<Recorder>();
    const auto newer = make<Recorder>();
    addObserver_forKeyPath_options_context(watched, older, "price"_ns, oldAndNew, nullptr);
    addObserver_forKeyPath_options_context(watched, newer, "price"_ns, oldAndNew, nullptr);
    newer->action = [&] {
        if (watched->price()->intValue() < 3) {
            watched->setPrice(box(watched->price()->intValue() + 1));
        }
    };
    watched->setPrice(box(1));
    EXPECT_EQ(newer->log, "price:<null>>1 price:1>2 price:2>3 ");
    EXPECT_EQ(older->log, "price:2>3 price:1>2 price:<null>>1 ");
}

TEST(KeyValueObserverLife, changesBegunAndNeverEndedDoNotPileUpOrReachOtherObjects) {
    const auto recorder = make<Recorder>();
    for (int i = 0; i < 500; ++i) {
        const auto watched = make<Watched>();
        addObserver_forKeyPath_options_context(watched, recorder, "price"_ns, oldAndNew, nullptr);
        didChangeValueForKey(watched, "price"_ns);
        willChangeValueForKey(watched, "price"_ns);
    }
    EXPECT_EQ(recorder->log, "");
}

TEST(KeyValueObserverLife, anObjectMaySetItselfWhileItIsDestroyed) {
    const auto recorder = make<Recorder>();
    {
        const auto parting = make<Parting>();
        addObserver_forKeyPath_options_context(parting, recorder, "name"_ns, oldAndNew, nullptr);
        parting->setName("a"_ns);
    }
    EXPECT_EQ(recorder->log, "name:<null>>a ");
}

TEST(HiddenClasses, twoClassesOfOneNameGetTheirOwn) {
    const auto recorder = make<Recorder>();
    const id first = make<one::Twin>();
    const id second = make<two::Twin>();
    addObserver_forKeyPath_options_context(first, recorder, "price"_ns, NSKeyValueObservingOptionNew, nullptr);
    addObserver_forKeyPath_options_context(second, recorder, "price"_ns, NSKeyValueObservingOptionNew, nullptr);
    setValue_forKey(first, box(1), "price"_ns);
    setValue_forKey(second, box(2), "price"_ns);
    EXPECT_EQ(recorder->log, "price:->1 price:->2 ");
    EXPECT_NE(object_getClass(first), object_getClass(second));
}

} // namespace
