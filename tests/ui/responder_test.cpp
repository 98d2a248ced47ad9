#include <zrbasic/ui/responder.h>

#include <zrbasic/platform/appkit/view.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/string.h>

#include <tests/appkit/toolkit_testing.h>
#include <tests/foundation/checks.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zr {
namespace {

using test::KeyboardToolkit;

TEST(PlainKeyboardLayout, isSelectedWhenTheUserHasIt) {
    const auto responder = make<NSResponder>();
    const struct {
        const char* name;
        std::vector<std::string> layouts;
        NSInteger current;
        NSInteger afterwards;
        int selections;
    } rows[] = {
        {"another one", {"de", "us", "ru"}, 0, 1, 1},
        {"already in use", {"de", "us"}, 1, 1, 0},
        {"not there", {"de", "ru"}, 1, 1, 0},
        {"none known to be in use", {"de", "us"}, -1, 1, 1},
        {"no layouts", {}, -1, -1, 0},
        {"no such layout", {"de", "us"}, 7, 1, 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        KeyboardToolkit toolkit;
        toolkit.layouts = row.layouts;
        toolkit.current = row.current;
        changeTextInputSourceToABC(responder);
        EXPECT_EQ(toolkit.current, row.afterwards);
        EXPECT_EQ(toolkit.selections, row.selections);
    }
}

TEST(PlainKeyboardLayout, needsAResponderAndAToolkit) {
    KeyboardToolkit toolkit;
    toolkit.layouts = {"de", "us"};
    toolkit.current = 0;
    changeTextInputSourceToABC(nullptr);
    EXPECT_EQ(toolkit.selections, 0);
    send<void>(make<NSView>(), "changeTextInputSourceToABC"_sel);
    EXPECT_EQ(toolkit.current, 1);
    setCurrentToolkit(nullptr);
    changeTextInputSourceToABC(make<NSResponder>());
    EXPECT_EQ(toolkit.selections, 1);
}

/// Writes down what happens to it.
class ObservedResponder : public NSResponder {
    ZR_OBJECT(ObservedResponder, NSResponder)

  public:
    void mouseDown(NSEvent* event) override { log += event ? "down " : "down with nothing "; }
    void mouseUp(NSEvent*) override { log += "up "; }
    void keyDown(NSEvent*) override { NSException::raise(NSGenericException, "the key is stuck"); }
    bool performKeyEquivalent(NSEvent*) override {
        log += "shortcut ";
        return true;
    }

    std::string log;
};

/// Another class, so that no other test has incised it.
class ShortcutResponder : public ObservedResponder {
    ZR_OBJECT(ShortcutResponder, ObservedResponder)
};

Ref<NSEvent> event(NSEventType type = NSEventTypeLeftMouseDown) {
    EventFields fields;
    fields.type = type;
    return NSEvent::eventWithFields(fields);
}

TEST(ObservedEvents, runTheObserverAfterTheAction) {
    const auto responder = make<ObservedResponder>();
    const auto pressed = event();
    NSEvent* seen = nullptr;
    eventObserver_forEventAction(
        responder,
        [&](NSEvent* given) {
            seen = given;
            responder->log += "observed ";
        },
        "mouseDown:"_sel);
    send<void>(responder, "mouseDown:"_sel, pressed);
    EXPECT_EQ(responder->log, "down observed ");
    EXPECT_EQ(seen, pressed);
    send<void>(responder, "mouseUp:"_sel, pressed);
    EXPECT_EQ(responder->log, "down observed up ") << "of that action alone";
    send<void>(responder, "mouseDown:"_sel, nullptr);
    EXPECT_EQ(responder->log, "down observed up down with nothing observed ");
    EXPECT_EQ(seen, nullptr);
    EXPECT_EQ(responder->class_(), id(ObservedResponder::classObject())) << "it still says what it is";
}

TEST(ObservedEvents, areThoseOfOneObject) {
    const auto observed = make<ObservedResponder>();
    const auto other = make<ObservedResponder>();
    const auto alsoObserved = make<ObservedResponder>();
    std::string log;
    eventObserver_forEventAction(
        observed, [&](NSEvent*) { log += "observed "; }, "mouseDown:"_sel);
    eventObserver_forEventAction(
        alsoObserved, [&](NSEvent*) { log += "also "; }, "mouseUp:"_sel);
    for (const auto& responder : {observed, other, alsoObserved}) {
        send<void>(responder, "mouseDown:"_sel, event());
        send<void>(responder, "mouseUp:"_sel, event());
        EXPECT_EQ(responder->log, "down up ");
    }
    EXPECT_EQ(log, "observed also ") << "although two of them share the class that relays";
}

TEST(ObservedEvents, reachTheNextResponderAsBefore) {
    const auto view = make<NSView>(&NSView::initWithFrame, NSMakeRect(0, 0, 10, 10));
    const auto next = make<ObservedResponder>();
    view->setNextResponder(next);
    std::string log;
    eventObserver_forEventAction(
        view, [&](NSEvent*) { log += next->log + "observed"; }, "mouseDown:"_sel);
    send<void>(view, "mouseDown:"_sel, event());
    EXPECT_EQ(log, "down observed");
}

TEST(ObservedEvents, haveOneObserverAnAction) {
    const auto responder = make<ObservedResponder>();
    std::string log;
    send<void>(responder, "eventObserver:forEventAction:"_sel, EventObserver([&](NSEvent*) { log += "first "; }),
               "mouseDown:"_sel);
    send<void>(responder, "mouseDown:"_sel, event());
    eventObserver_forEventAction(
        responder, [&](NSEvent*) { log += "second "; }, "mouseDown:"_sel);
    send<void>(responder, "mouseDown:"_sel, event());
    eventObserver_forEventAction(responder, nullptr, "mouseDown:"_sel);
    send<void>(responder, "mouseDown:"_sel, event());
    EXPECT_EQ(log, "first second second ") << "an empty observer removes nothing";
}

TEST(ObservedEvents, needAnObserverAndAnActionThatExists) {
    const auto responder = make<ObservedResponder>();
    int calls = 0;
    const auto count = [&](NSEvent*) { ++calls; };
    eventObserver_forEventAction(nullptr, count, "mouseDown:"_sel);
    eventObserver_forEventAction(responder, nullptr, "mouseDown:"_sel);
    eventObserver_forEventAction(responder, count, SEL());
    eventObserver_forEventAction(responder, count, "noSuchEvent:"_sel);
    EXPECT_EQ(object_getClass(responder), ObservedResponder::classObject()) << "nothing was replaced";
    send<void>(responder, "mouseDown:"_sel, event());
    EXPECT_EQ(test::raisedName([&] { send<void>(responder, "noSuchEvent:"_sel, event()); }),
              NSInvalidArgumentException);
    EXPECT_EQ(calls, 0);
}

TEST(ObservedEvents, ofAnotherKindArriveAsNull) {
    const auto responder = make<ObservedResponder>();
    int calls = 0;
    eventObserver_forEventAction(
        responder,
        [&](NSEvent* given) {
            EXPECT_EQ(given, nullptr);
            ++calls;
        },
        "mouseUp:"_sel);
    send<void>(responder, "mouseUp:"_sel, NSNull::null());
    send<void>(responder, "mouseUp:"_sel, "no event"_ns);
    EXPECT_EQ(calls, 2);
}

TEST(ObservedEvents, areNotReportedWhenTheActionRaises) {
    const auto responder = make<ObservedResponder>();
    int calls = 0;
    eventObserver_forEventAction(
        responder, [&](NSEvent*) { ++calls; }, "keyDown:"_sel);
    EXPECT_EQ(test::raisedName([&] { send<void>(responder, "keyDown:"_sel, event(NSEventTypeKeyDown)); }),
              NSGenericException);
    EXPECT_EQ(calls, 0);
}

TEST(ObservedEvents, haveNoResult) {
    const auto responder = make<ShortcutResponder>();
    const auto bystander = make<ShortcutResponder>();
    EXPECT_TRUE(send<bool>(responder, "performKeyEquivalent:"_sel, event()));
    int calls = 0;
    eventObserver_forEventAction(
        responder, [&](NSEvent*) { ++calls; }, "performKeyEquivalent:"_sel);
    EXPECT_FALSE(send<bool>(responder, "performKeyEquivalent:"_sel, event(NSEventTypeKeyDown)));
    EXPECT_EQ(responder->log, "shortcut shortcut ");
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(send<bool>(bystander, "performKeyEquivalent:"_sel, event(NSEventTypeKeyDown)));
}

TEST(ObservedEvents, keepTheirObserverUntilTheResponderEnds) {
    auto responder = make<ObservedResponder>();
    const auto kept = std::make_shared<int>(0);
    eventObserver_forEventAction(
        responder, [kept](NSEvent*) { ++*kept; }, "mouseDown:"_sel);
    send<void>(responder, "mouseDown:"_sel, event());
    EXPECT_EQ(*kept, 1);
    EXPECT_GT(kept.use_count(), 1);
    responder = nullptr;
    EXPECT_EQ(kept.use_count(), 1);
}

} // namespace
} // namespace zr
