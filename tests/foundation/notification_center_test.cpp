#include <zrbasic/platform/foundation/notification_center.h>

#include "checks.h"
#include "notification_listening.h"

#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace zr;
using test::NotificationListener;
using test::raised;
using test::raisedName;

/// Leaves the centre at its very end, as observers do that were written for centres that hold them unsafely.
class PoliteListener : public NSObject {
    ZR_OBJECT(PoliteListener, NSObject)

  public:
    ~PoliteListener() override {
        center->removeObserver(this);
        center->postNotificationName_object("left"_ns, nullptr);
    }
    void hear(NSNotification*) { ++*calls; }
    ZR_METHOD(hear, "hear:")

    NSNotificationCenter* center = nullptr;
    int* calls = nullptr;
};

class NotificationCenter : public test::NotificationTest {};

TEST_F(NotificationCenter, tellsInOrderOfRegistrationBeforeThePostReturns) {
    const auto a = listening("a", "quote"_ns);
    const auto b = listening("b", nullptr);
    const auto c = listening("c", "quote"_ns);
    const auto d = listening("d", nullptr);
    const auto e = listening("e", "quote"_ns);
    post("quote"_ns);
    EXPECT_EQ(heard(), "abcde") << "for one name and for every name, in one order";
    post("other"_ns);
    EXPECT_EQ(heard(), "bd");
}

TEST_F(NotificationCenter, handsOverOneNotification) {
    const auto a = listening("a", "quote"_ns);
    const auto b = listening("b", nullptr);
    const Ref<NSDictionary> info = dictionary({{"price"_ns, box(7)}});
    center->postNotificationName_object_userInfo("quote"_ns, info, info);
    ASSERT_TRUE(a->last);
    EXPECT_EQ(a->last, b->last);
    EXPECT_TRUE(a->last->name()->isEqualToString("quote"_ns));
    EXPECT_EQ(a->last->object(), info);
    EXPECT_EQ(a->last->userInfo(), info);
    const auto own = NSNotification::notificationWithName_object("quote"_ns, box(1));
    center->postNotification(own);
    EXPECT_EQ(a->last, own);
    EXPECT_EQ(heard(), "abab");
}

TEST_F(NotificationCenter, comparesNamesByTextAndObjectsByIdentity) {
    const Ref<NSMutableString> name = cast<NSMutableString>("quote"_ns->mutableCopy());
    const Ref<NSString> object = NSString::fromUtf8("object");
    const auto a = listening("a", name, object);
    name->appendString("s"_ns);
    post(NSString::fromUtf8("quote"), object);
    EXPECT_EQ(heard(), "a") << "the name was copied";
    post("quotes"_ns, object);
    post("Quote"_ns, object);
    post("quote"_ns, NSString::fromUtf8("object"));
    post("quote"_ns, nullptr);
    EXPECT_EQ(heard(), "") << "an equal object is another object";
}

TEST_F(NotificationCenter, takesNullForAnyNameAndAnyObject) {
    const Ref<NSObject> object = make<NSObject>();
    const auto a = listening("a", nullptr, nullptr);
    const auto b = listening("b", nullptr, object);
    const auto c = listening("c", "quote"_ns, nullptr);
    const auto d = listening("d", "quote"_ns, NSNull::null());
    post("quote"_ns, object);
    EXPECT_EQ(heard(), "abc");
    post("quote"_ns, nullptr);
    EXPECT_EQ(heard(), "ac");
    post("quote"_ns, NSNull::null());
    EXPECT_EQ(heard(), "acd") << "the null object is an object";
    post(nullptr, object);
    EXPECT_EQ(heard(), "ab") << "without a name only those for every name";
    post(""_ns, object);
    EXPECT_EQ(heard(), "ab");
}

TEST_F(NotificationCenter, doesNothingForNull) {
    const auto a = listener("a");
    center->addObserver_selector_name_object(nullptr, "hear:"_sel, nullptr, nullptr);
    center->addObserver_selector_name_object(a, SEL(), nullptr, nullptr);
    EXPECT_FALSE(center->addObserverForName_object_usingBlock("a"_ns, nullptr, nullptr));
    center->removeObserver(nullptr);
    center->removeObserver(a);
    center->removeObserver_name_object(nullptr, nullptr, nullptr);
    center->removeObserver_name_object(a, "a"_ns, a);
    center->postNotification(nullptr);
    post("a"_ns);
    EXPECT_EQ(heard(), "");
}

TEST_F(NotificationCenter, tellsTwiceWhoRegisteredTwice) {
    const auto a = listening("a", "quote"_ns);
    center->addObserver_selector_name_object(a, "hear:"_sel, "quote"_ns, nullptr);
    center->addObserver_selector_name_object(a, "wake"_sel, "quote"_ns, nullptr);
    post("quote"_ns);
    EXPECT_EQ(heard(), "aaa!");
    center->removeObserver(a);
    post("quote"_ns);
    EXPECT_EQ(heard(), "");
}

TEST_F(NotificationCenter, sendsWhateverMessageTheSelectorNames) {
    const auto a = listener("a");
    center->addObserver_selector_name_object(a, "wake"_sel, "quote"_ns, nullptr);
    center->addObserver_selector_name_object(a, "count:"_sel, "quote"_ns, nullptr);
    post("quote"_ns);
    EXPECT_EQ(heard(), "a!") << "a message without an argument gets none";
    EXPECT_EQ(a->calls, 1) << "a result is dropped";
    center->removeObserver(a);
    center->addObserver_selector_name_object(a, "noSuchOperation:"_sel, "quote"_ns, nullptr);
    EXPECT_EQ(raisedName([&] { post("quote"_ns); }), NSInvalidArgumentException);
    center->removeObserver(a);
    center->addObserver_selector_name_object(a, "pair:with:"_sel, "quote"_ns, nullptr);
    EXPECT_EQ(raisedName([&] { post("quote"_ns); }), NSInvalidArgumentException);
    EXPECT_EQ(heard(), "");
}

TEST_F(NotificationCenter, tellsClassesAndTheNullObjectToo) {
    const auto a = listening("a", "quote"_ns);
    center->addObserver_selector_name_object(NotificationListener::classObject(), "hear:"_sel, "quote"_ns, nullptr);
    EXPECT_EQ(raised([&] { post("quote"_ns); }).rfind("NSInvalidArgumentException: +[NotificationListener hear:]", 0),
              0U)
        << "the class has no such operation, only its instances";
    center->removeObserver(NotificationListener::classObject());
    center->addObserver_selector_name_object(NSNull::null(), "isEqual:"_sel, "quote"_ns, nullptr);
    EXPECT_EQ(raised([&] { post("quote"_ns); }), "");
    center->removeObserver(NSNull::null());
    EXPECT_EQ(heard(), "aa");
}

TEST_F(NotificationCenter, holdsNoObserverAlive) {
    Ref<NotificationListener> a = listening("a", "quote"_ns);
    const auto b = listening("b", "quote"_ns);
    const Weak<NotificationListener> watched(a);
    a = nullptr;
    EXPECT_TRUE(watched.expired());
    post("quote"_ns);
    post("quote"_ns);
    EXPECT_EQ(heard(), "bb");
}

TEST_F(NotificationCenter, holdsNoObservedObjectAlive) {
    Ref<NSObject> object = make<NSObject>();
    const Weak<NSObject> watched(object);
    const auto a = listening("a", "quote"_ns, object);
    post("quote"_ns, object);
    a->last = nullptr;
    object = nullptr;
    EXPECT_TRUE(watched.expired());
    // None of these may be taken for the one that is gone.
    for (int i = 0; i < 1000; ++i) {
        post("quote"_ns, make<NSObject>());
    }
    EXPECT_EQ(heard(), "a");
    center->removeObserver(a);
}

TEST_F(NotificationCenter, doesNotTellWhatIsAddedMeanwhile) {
    const auto a = listening("a", "quote"_ns);
    Ref<NotificationListener> b;
    a->action = [&] {
        if (!b) {
            b = listening("b", "quote"_ns);
        }
    };
    const auto c = listening("c", "quote"_ns);
    post("quote"_ns);
    EXPECT_EQ(heard(), "ac");
    post("quote"_ns);
    EXPECT_EQ(heard(), "acb");
}

TEST_F(NotificationCenter, doesNotTellWhatWasRemovedBeforeItsTurn) {
    const auto a = listening("a", "quote"_ns);
    Ref<NotificationListener> b = listening("b", "quote"_ns);
    const auto c = listening("c", "quote"_ns);
    const auto d = listening("d", "quote"_ns);
    a->action = [&] {
        center->removeObserver(c);
        b = nullptr;
    };
    d->action = [&] { center->removeObserver(d); };
    post("quote"_ns);
    EXPECT_EQ(heard(), "ad") << "one was removed, one died";
    post("quote"_ns);
    EXPECT_EQ(heard(), "a");
}

TEST_F(NotificationCenter, tellsOnceMoreWhoWasRemovedAndAddedAgain) {
    const auto a = listening("a", "quote"_ns);
    const auto b = listening("b", "quote"_ns);
    a->action = [&] {
        center->removeObserver(b);
        center->addObserver_selector_name_object(b, "hear:"_sel, "quote"_ns, nullptr);
    };
    post("quote"_ns);
    EXPECT_EQ(heard(), "a") << "that is a new registration";
    a->action = nullptr;
    post("quote"_ns);
    EXPECT_EQ(heard(), "ab");
}

TEST_F(NotificationCenter, mayPostWhileItTells) {
    const auto a = listening("a", "quote"_ns);
    const auto b = listening("b", nullptr);
    a->action = [&] {
        a->action = nullptr;
        log += '(';
        post("quote"_ns);
        log += ')';
    };
    post("quote"_ns);
    EXPECT_EQ(heard(), "a(ab)b");
}

TEST_F(NotificationCenter, keepsAnObserverAliveWhileItIsTold) {
    Ref<NotificationListener> a = listening("a", "quote"_ns);
    const Weak<NotificationListener> watched(a);
    bool wasAlive = false;
    a->action = [&] {
        a = nullptr;
        wasAlive = !watched.expired();
    };
    post("quote"_ns);
    EXPECT_TRUE(wasAlive);
    EXPECT_TRUE(watched.expired());
}

TEST_F(NotificationCenter, mayBeLetGoWhileItTells) {
    const auto a = listening("a", "quote"_ns);
    const auto b = listening("b", "quote"_ns);
    const Weak<NSNotificationCenter> watched(center);
    a->action = [&] { center = nullptr; };
    post("quote"_ns);
    EXPECT_EQ(heard(), "ab") << "the post is finished all the same";
    EXPECT_TRUE(watched.expired());
}

TEST_F(NotificationCenter, givesAnObserversExceptionToThePoster) {
    const auto a = listening("a", "quote"_ns);
    const auto b = listening("b", "quote"_ns);
    const auto c = listening("c", "quote"_ns);
    b->action = [] { NSException::raise(NSGenericException, "on purpose"); };
    EXPECT_EQ(raised([&] { post("quote"_ns); }), "NSGenericException: on purpose");
    EXPECT_EQ(heard(), "ab") << "the rest is not told";
    b->action = nullptr;
    post("quote"_ns);
    EXPECT_EQ(heard(), "abc");
}

TEST_F(NotificationCenter, isLeftByAnObserverAtItsEnd) {
    int calls = 0;
    Ref<PoliteListener> polite = make<PoliteListener>();
    polite->center = center;
    polite->calls = &calls;
    center->addObserver_selector_name_object(polite, "hear:"_sel, nullptr, nullptr);
    const auto b = listening("b", "left"_ns);
    post("quote"_ns);
    EXPECT_EQ(calls, 1);
    polite = nullptr;
    EXPECT_EQ(calls, 1) << "not told of its own end";
    EXPECT_EQ(heard(), "b");
}

TEST_F(NotificationCenter, removesByNameAndObject) {
    const Ref<NSObject> object = make<NSObject>();
    const auto a = listener("a");
    const auto addAll = [&] {
        center->removeObserver(a);
        center->addObserver_selector_name_object(a, "hear:"_sel, nullptr, nullptr);
        center->addObserver_selector_name_object(a, "hear:"_sel, nullptr, object);
        center->addObserver_selector_name_object(a, "hear:"_sel, "quote"_ns, nullptr);
        center->addObserver_selector_name_object(a, "hear:"_sel, "quote"_ns, object);
    };
    const struct {
        const char* label;
        Ref<NSString> name;
        Ref<NSObject> object;
        std::size_t left;
    } rows[] = {
        {"all", nullptr, nullptr, 0},
        {"by name", "quote"_ns, nullptr, 2},
        {"by object", nullptr, object, 2},
        {"by both", NSString::fromUtf8("quote"), object, 3},
        {"another name", "Quote"_ns, object, 4},
        {"another object", "quote"_ns, make<NSObject>(), 4},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.label);
        addAll();
        post("quote"_ns, object);
        EXPECT_EQ(heard(), "aaaa");
        center->removeObserver_name_object(a, row.name, row.object);
        post("quote"_ns, object);
        EXPECT_EQ(heard(), std::string(row.left, 'a'));
    }
}

TEST_F(NotificationCenter, removesOnlyWhoIsNamed) {
    const auto a = listening("a", "quote"_ns);
    const auto b = listening("b", "quote"_ns);
    center->removeObserver(listener("c"));
    center->removeObserver(b);
    center->removeObserver(b);
    post("quote"_ns);
    EXPECT_EQ(heard(), "a");
}

TEST_F(NotificationCenter, takesManyObserversOfOneName) {
    constexpr std::size_t count = 10'000;
    std::vector<Ref<NotificationListener>> listeners;
    for (std::size_t i = 0; i < count; ++i) {
        listeners.push_back(listening("x", "quote"_ns));
    }
    post("quote"_ns);
    EXPECT_EQ(heard().size(), count);
    for (std::size_t i = 0; i < count; i += 2) {
        center->removeObserver(listeners[i]);
    }
    listeners.resize(count / 2);
    post("quote"_ns);
    EXPECT_EQ(heard().size(), count / 4);
}

TEST_F(NotificationCenter, answersMessages) {
    const auto a = listener("a");
    send<>(center, "addObserver:selector:name:object:"_sel, a, "hear:"_sel, "quote"_ns, nullptr);
    send<>(center, "postNotificationName:object:"_sel, "quote"_ns, nullptr);
    send<>(center, "postNotificationName:object:userInfo:"_sel, "quote"_ns, box(1), box(2));
    EXPECT_FALSE(a->last->userInfo()) << "a number is no dictionary";
    send<>(center, "postNotification:"_sel, NSNotification::notificationWithName_object("quote"_ns, nullptr));
    send<>(center, "postNotification:"_sel, "no notification"_ns);
    EXPECT_EQ(heard(), "aaa");
    send<>(center, "removeObserver:name:object:"_sel, a, "other"_ns, nullptr);
    send<>(center, "postNotificationName:object:"_sel, "quote"_ns, nullptr);
    EXPECT_EQ(heard(), "a");
    send<>(center, "removeObserver:"_sel, a);
    int calls = 0;
    const id token = send<id>(center, "addObserverForName:object:usingBlock:"_sel, "quote"_ns, nullptr,
                              NSNotificationBlock([&](NSNotification*) { ++calls; }));
    send<>(center, "postNotificationName:object:"_sel, "quote"_ns, nullptr);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(heard(), "");
    center->removeObserver(token);
}

} // namespace
