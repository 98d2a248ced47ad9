#include <zrbasic/platform/appkit/beep.h>
#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/responder.h>
#include <zrbasic/platform/appkit/tracking_area.h>
#include <zrbasic/platform/runtime/message.h>

#include <gtest/gtest.h>
#include <string>

namespace zr {
namespace {

/// Writes down what it is sent.
class Listener : public NSResponder {
    ZR_OBJECT(Listener, NSResponder)
  public:
    void mouseDown(NSEvent* event) override {
        heard += "down ";
        last = Ref<NSEvent>(event);
    }
    void copyOrder(NSObject* sender) {
        heard += "copy ";
        lastSender = id(sender);
    }
    ZR_METHOD(copyOrder, "copyOrder:")

    std::string heard;
    Ref<NSEvent> last;
    id lastSender;
};

Ref<NSEvent> event(NSEventType type) {
    EventFields fields;
    fields.type = type;
    return NSEvent::eventWithFields(fields);
}

TEST(Responder, handsEventsOnToTheNextOne) {
    const auto first = make<NSResponder>();
    const auto second = make<NSResponder>();
    const auto third = make<Listener>();
    first->setNextResponder(second);
    second->setNextResponder(third);
    const auto press = event(NSEventTypeLeftMouseDown);
    send<void>(first, "mouseDown:"_sel, press);
    EXPECT_EQ(third->heard, "down ");
    EXPECT_EQ(third->last, press);
    first->mouseDown(nullptr);
    EXPECT_EQ(third->heard, "down down ");
}

TEST(Responder, beepsForAKeyPressThatNobodyWants) {
    const auto first = make<NSResponder>();
    const auto last = make<NSResponder>();
    first->setNextResponder(last);
    const std::uint64_t before = beepCount();
    send<void>(first, "keyDown:"_sel, event(NSEventTypeKeyDown));
    EXPECT_EQ(beepCount(), before + 1);
    for (const char* operation :
         {"mouseDown:", "mouseUp:", "mouseMoved:", "mouseDragged:", "mouseEntered:", "mouseExited:", "rightMouseDown:",
          "rightMouseUp:", "rightMouseDragged:", "otherMouseDown:", "otherMouseUp:", "otherMouseDragged:",
          "scrollWheel:", "cursorUpdate:", "keyUp:", "flagsChanged:"}) {
        send<void>(first, sel_registerName(operation), nullptr);
        EXPECT_EQ(beepCount(), before + 1) << operation;
    }
}

TEST(Responder, doesNotKeepTheNextOne) {
    const auto first = make<NSResponder>();
    auto second = make<NSResponder>();
    first->setNextResponder(second);
    EXPECT_EQ(first->nextResponder(), second);
    second = nullptr;
    EXPECT_EQ(first->nextResponder(), nullptr);
    first->mouseDown(nullptr);
}

TEST(Responder, takesNoKeyPressesUnlessItSaysSo) {
    const auto responder = make<NSResponder>();
    EXPECT_FALSE(responder->acceptsFirstResponder());
    EXPECT_TRUE(responder->becomeFirstResponder());
    EXPECT_TRUE(responder->resignFirstResponder());
    EXPECT_FALSE(responder->performKeyEquivalent(nullptr));
}

TEST(Responder, findsWhoCanCarryOutACommand) {
    const auto first = make<NSResponder>();
    const auto second = make<Listener>();
    first->setNextResponder(second);
    EXPECT_TRUE(first->tryToPerform_with("copyOrder:"_sel, first));
    EXPECT_EQ(second->heard, "copy ");
    EXPECT_EQ(second->lastSender, first);
    EXPECT_FALSE(first->tryToPerform_with("neverHeardOf:"_sel, first));
    EXPECT_FALSE(first->tryToPerform_with(SEL(), nullptr));
}

TEST(Event, saysWhatItWasMadeOf) {
    EventFields fields;
    fields.type = NSEventTypeKeyDown;
    fields.location = {3.5, -2};
    fields.modifierFlags = NSEventModifierFlagShift | NSEventModifierFlagCommand;
    fields.timestamp = 12.5;
    fields.clickCount = 2;
    fields.buttonNumber = 3;
    fields.characters = "q"_ns;
    fields.isRepeat = true;
    fields.deltaX = -1;
    fields.deltaY = 4;
    fields.trackingArea = make<NSTrackingArea>();
    const auto made = NSEvent::eventWithFields(fields);
    EXPECT_EQ(made->type(), NSEventTypeKeyDown);
    EXPECT_EQ(made->locationInWindow(), (NSPoint{3.5, -2}));
    EXPECT_EQ(made->modifierFlags(), 0x120000U);
    EXPECT_EQ(made->timestamp(), 12.5);
    EXPECT_EQ(made->clickCount(), 2);
    EXPECT_EQ(made->buttonNumber(), 3);
    EXPECT_EQ(made->characters(), "q"_ns);
    EXPECT_TRUE(made->isARepeat());
    EXPECT_EQ(made->deltaX(), -1);
    EXPECT_EQ(made->deltaY(), 4);
    EXPECT_EQ(made->trackingArea(), fields.trackingArea);
    EXPECT_EQ(made->copy(), made);
}

} // namespace
} // namespace zr
