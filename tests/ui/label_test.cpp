#include <zrbasic/ui/label.h>

#include "../appkit/text_toolkit.h"

#include <zrbasic/platform/appkit/cursor.h>
#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/coder.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/key_value_coding.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/runtime/message.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

namespace zr {
namespace {

/// Hears of the label's action.
class LabelTarget : public NSObject {
    ZR_OBJECT(LabelTarget, NSObject)
  public:
    void pressed(NSObject* sender) {
        ++presses;
        last = id(sender);
        if (const auto running = action) {
            running();
        }
    }
    ZR_METHOD(pressed, "pressed:")

    int presses = 0;
    id last;
    std::function<void()> action;
};

/// Writes down which of its operations are run.
class LoggingLabel : public ZRXLabel {
    ZR_OBJECT(LoggingLabel, ZRXLabel)
  public:
    void setupInitialize() override {
        log += "setup ";
        ZRXLabel::setupInitialize();
    }
    ZR_METHOD(setupInitialize, "setupInitialize")
    void resetCursorRects() override {
        log += "cursors" + std::to_string(style()) + ' ';
        ZRXLabel::resetCursorRects();
    }
    ZR_METHOD(resetCursorRects, "resetCursorRects")
    void updateTrackingAreas() override {
        log += "areas ";
        ZRXLabel::updateTrackingAreas();
    }
    ZR_METHOD(updateTrackingAreas, "updateTrackingAreas")
    void addStringValueWithUnderline(bool underlined) override {
        log += underlined ? "underline " : "plain ";
        ZRXLabel::addStringValueWithUnderline(underlined);
    }
    ZR_METHOD(addStringValueWithUnderline, "addStringValueWithUnderline:")

    std::string heard() { return std::exchange(log, ""); }

    std::string log;
};

/// An archive with a frame.
class FrameCoder : public NSCoder {
    ZR_OBJECT(FrameCoder, NSCoder)
  public:
    NSRect decodeRectForKey(NSString* key) const override {
        return key->isEqual("NSFrame"_ns) ? NSMakeRect(1, 2, 30, 40) : NSZeroRect;
    }
};

Ref<NSEvent> event(NSEventType type) {
    EventFields fields;
    fields.type = type;
    return NSEvent::eventWithFields(fields);
}

class Label : public testing::Test {
  protected:
    Label() {
        label->setFrame(NSMakeRect(0, 0, 80, 20));
        label->setStringValue("Terms"_ns);
    }

    void enter() { send<void>(label, "mouseEntered:"_sel, event(NSEventTypeMouseEntered)); }
    void leave() { send<void>(label, "mouseExited:"_sel, event(NSEventTypeMouseExited)); }
    void press() { send<void>(label, "mouseDown:"_sel, event(NSEventTypeLeftMouseDown)); }
    /// The underline attribute of the first character, -1 for none.
    NSInteger underline() {
        const auto text = label->attributedStringValue();
        const auto value = text->attribute_atIndex_effectiveRange(NSUnderlineStyleAttributeName(), 0, nullptr);
        const auto* const number = cast<NSNumber>(value);
        return number ? number->integerValue() : -1;
    }
    bool hasHand() {
        return label->cursorRects().size() == 1 && label->cursorRects()[0].rect == label->bounds() &&
               label->cursorRects()[0].cursor == NSCursor::pointingHandCursor();
    }

    Ref<ZRXLabel> label = make<ZRXLabel>();
};

TEST_F(Label, isPlainTextAtFirst) {
    EXPECT_EQ(label->style(), 0u);
    EXPECT_EQ(label->trackingArea(), nullptr);
    EXPECT_FALSE(label->isEditable());
    EXPECT_FALSE(label->isBordered());
    EXPECT_TRUE(label->backgroundColor()->isEqual(NSColor::clearColor()));
    EXPECT_TRUE(label->acceptsFirstMouse(nullptr));
    EXPECT_TRUE(send<bool>(label, "acceptsFirstMouse:"_sel, event(NSEventTypeLeftMouseDown)));
    EXPECT_TRUE(label->cursorRects().empty());
}

TEST_F(Label, isStyledByEveryInitializer) {
    EXPECT_EQ(make<LoggingLabel>()->heard(), "setup ");
    const auto placed = make<LoggingLabel>(&ZRXLabel::initWithFrame, NSMakeRect(1, 2, 3, 4));
    EXPECT_EQ(placed->heard(), "setup ");
    EXPECT_EQ(placed->frame(), NSMakeRect(1, 2, 3, 4));
    const auto decoded = make<LoggingLabel>(&ZRXLabel::initWithCoder, make<FrameCoder>());
    EXPECT_EQ(decoded->heard(), "setup ");
    EXPECT_EQ(decoded->frame(), NSMakeRect(1, 2, 30, 40));
    EXPECT_FALSE(decoded->isEditable());
    EXPECT_EQ(make<ZRXLabel>(&ZRXLabel::initWithCoder, nullptr)->frame(), NSZeroRect);
    const auto styled = make<LoggingLabel>(&ZRXLabel::initWithStyle, 2);
    EXPECT_EQ(styled->heard(), "setup cursors2 areas ");
    EXPECT_EQ(styled->style(), 2u);
    EXPECT_NE(styled->trackingArea(), nullptr);
    EXPECT_EQ(make<LoggingLabel>(&ZRXLabel::initWithStyle, 1)->heard(), "setup cursors1 areas plain ");
}

TEST_F(Label, storesItsStyleBeforeCursorsAreasAndText) {
    const auto logging = make<LoggingLabel>();
    logging->heard();
    logging->setStyle(2);
    EXPECT_EQ(logging->heard(), "cursors2 areas ");
    logging->setStyle(1);
    EXPECT_EQ(logging->heard(), "cursors1 areas plain ");
    logging->setStyle(0);
    EXPECT_EQ(logging->heard(), "cursors0 areas plain ");
    send<void>(logging, "setStyle:"_sel, 2);
    EXPECT_EQ(logging->heard(), "cursors2 areas ");
    setValue_forKey(logging, box(7), "style"_ns);
    EXPECT_EQ(logging->heard(), "cursors7 areas plain ");
    EXPECT_TRUE(box(7)->isEqual(valueForKey(logging, "style"_ns)));
}

TEST_F(Label, showsTheHandInEveryStyleButTheFirst) {
    const struct {
        NSUInteger style;
        bool hasHand;
        bool hasArea;
    } rows[] = {{0, false, false},
                {1, true, false},
                {2, true, true},
                {5, true, false},
                {static_cast<NSUInteger>(-1), true, false},
                {1, true, false},
                {0, false, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.style);
        label->setStyle(row.style);
        EXPECT_EQ(hasHand(), row.hasHand);
        EXPECT_EQ(label->cursorRects().empty(), !row.hasHand);
        EXPECT_EQ(label->trackingArea() != nullptr, row.hasArea);
        EXPECT_EQ(label->trackingAreas()->count(), row.hasArea ? 1u : 0u);
    }
}

TEST_F(Label, followsThePointerInStyle2) {
    label->setStyle(2);
    const auto area = label->trackingArea();
    ASSERT_NE(area, nullptr);
    EXPECT_EQ(area->options(), 129u);
    EXPECT_EQ(area->rect(), label->bounds());
    EXPECT_EQ(area->owner(), label);
    EXPECT_EQ(area->userInfo(), nullptr);
    EXPECT_TRUE(label->trackingAreas()->isEqual(array({area})));
}

TEST_F(Label, makesAreaAndCursorAnewForItsBounds) {
    label->setStyle(2);
    const auto before = label->trackingArea();
    label->setFrameSize({200, 30});
    EXPECT_NE(label->trackingArea(), before);
    EXPECT_EQ(label->trackingArea()->rect(), NSMakeRect(0, 0, 200, 30));
    EXPECT_EQ(label->trackingAreas()->count(), 1u);
    EXPECT_TRUE(hasHand());
    const auto same = label->trackingArea();
    send<void>(label, "updateTrackingAreas"_sel);
    EXPECT_NE(label->trackingArea(), same);
    EXPECT_EQ(label->trackingAreas()->count(), 1u);
}

TEST_F(Label, underlinesItsTextWhileThePointerIsOverIt) {
    label->setStyle(2);
    EXPECT_EQ(underline(), -1);
    enter();
    EXPECT_EQ(underline(), NSUnderlineStyleSingle);
    EXPECT_EQ(label->stringValue()->utf8(), "Terms");
    leave();
    EXPECT_EQ(underline(), NSUnderlineStyleNone);
    enter();
    label->setStyle(0);
    EXPECT_EQ(underline(), NSUnderlineStyleNone);
    EXPECT_TRUE(label->cursorRects().empty());
    EXPECT_EQ(label->trackingArea(), nullptr);
    EXPECT_EQ(label->trackingAreas()->count(), 0u);
}

TEST_F(Label, isNeverUnderlinedInOtherStyles) {
    for (const NSUInteger style : {0u, 1u, 5u}) {
        SCOPED_TRACE(style);
        label->setStyle(style);
        enter();
        EXPECT_EQ(underline(), NSUnderlineStyleNone);
        leave();
        EXPECT_EQ(underline(), NSUnderlineStyleNone);
    }
}

TEST_F(Label, leavesItsValueAloneWhenItBecomesStyle2) {
    const auto colored =
        make<NSAttributedString>(&NSAttributedString::initWithString_attributes, "Terms"_ns,
                                 dictionary({{NSForegroundColorAttributeName(), NSColor::redColor()}}));
    label->setAttributedStringValue(colored);
    label->setStyle(2);
    EXPECT_TRUE(NSColor::redColor()->isEqual(label->attributedStringValue()->attribute_atIndex_effectiveRange(
        NSForegroundColorAttributeName(), 0, nullptr)));
    EXPECT_EQ(underline(), -1);
}

/// Keeps the attributed value as it is handed in.
class ValueLabel : public ZRXLabel {
    ZR_OBJECT(ValueLabel, ZRXLabel)
  public:
    void setAttributedStringValue(NSAttributedString* string) override {
        last = Ref<NSAttributedString>(string);
        ZRXLabel::setAttributedStringValue(string);
    }
    ZR_METHOD(setAttributedStringValue, "setAttributedStringValue:")

    Ref<NSAttributedString> last;
};

TEST_F(Label, givesItsTextExactlyTwoAttributes) {
    const auto watched = make<ValueLabel>();
    watched->setAttributedStringValue(make<NSAttributedString>(
        &NSAttributedString::initWithString_attributes, "Terms"_ns,
        dictionary({{NSForegroundColorAttributeName(), NSColor::redColor()}, {"other"_ns, box(1)}})));
    watched->setAlignment(NSTextAlignmentRight);
    watched->setLineBreakMode(NSLineBreakByTruncatingMiddle);
    for (const bool underlined : {true, false}) {
        SCOPED_TRACE(underlined);
        send<void>(watched, "addStringValueWithUnderline:"_sel, underlined);
        ASSERT_NE(watched->last, nullptr);
        EXPECT_EQ(watched->last->string()->utf8(), "Terms");
        NSRange range{};
        const auto attributes = watched->last->attributesAtIndex_effectiveRange(0, &range);
        EXPECT_EQ(range.length, 5u);
        EXPECT_EQ(attributes->count(), 2u);
        EXPECT_TRUE(box(underlined ? 1 : 0)->isEqual(attributes->objectForKey(NSUnderlineStyleAttributeName())));
        const auto* const style = cast<NSParagraphStyle>(attributes->peek(NSParagraphStyleAttributeName()));
        ASSERT_NE(style, nullptr);
        EXPECT_EQ(style->alignment(), NSTextAlignmentRight);
        EXPECT_EQ(style->lineBreakMode(), NSLineBreakByTruncatingMiddle);
        EXPECT_EQ(style->lineSpacing(), 0);
    }
}

TEST_F(Label, takesAnEmptyOrHugeTextToo) {
    label->setStringValue(nullptr);
    label->setStyle(2);
    enter();
    EXPECT_EQ(label->stringValue()->length(), 0u);
    label->setStringValue(NSString::fromUtf16(std::u16string(1000000, u'x')));
    enter();
    EXPECT_EQ(underline(), 1);
    EXPECT_EQ(label->stringValue()->length(), 1000000u);
    label->setStringValue(NSString::fromUtf16(u"\xD800\n\xDC00"));
    enter();
    EXPECT_EQ(label->stringValue()->view(), u"\xD800\n\xDC00");
}

TEST_F(Label, sendsItsActionWhateverItsStyle) {
    const auto target = make<LabelTarget>();
    label->setTarget(target);
    label->setAction("pressed:"_sel);
    int presses = 0;
    for (const NSUInteger style : {0u, 1u, 2u, 5u}) {
        SCOPED_TRACE(style);
        label->setStyle(style);
        press();
        EXPECT_EQ(target->presses, ++presses);
        EXPECT_EQ(target->last, label);
    }
    label->mouseDown(nullptr);
    EXPECT_EQ(target->presses, ++presses);
}

TEST_F(Label, sendsNothingWithoutAnAction) {
    const auto target = make<LabelTarget>();
    label->setTarget(target);
    press();
    EXPECT_EQ(target->presses, 0);
    label->setAction("missing:"_sel);
    press();
    EXPECT_EQ(target->presses, 0);
    label->setTarget(nullptr);
    label->setAction("pressed:"_sel);
    press();
    EXPECT_EQ(target->presses, 0);
}

TEST_F(Label, mayGoWhenItsActionIsSent) {
    const auto window = make<NSWindow>();
    window->contentView()->addSubview(label);
    const auto target = make<LabelTarget>();
    label->setTarget(target);
    label->setAction("pressed:"_sel);
    const Weak<ZRXLabel> watched(label);
    target->action = [&] {
        label->removeFromSuperview();
        label = nullptr;
        target->last = nullptr;
    };
    press();
    EXPECT_EQ(target->presses, 1);
    EXPECT_TRUE(watched.expired());
}

/// Counts what a label in it hands on.
class LabelSurroundings : public NSView {
    ZR_OBJECT(LabelSurroundings, NSView)
  public:
    void mouseEntered(NSEvent*) override {
        ++entered;
        hear();
    }
    ZR_METHOD(mouseEntered, "mouseEntered:")
    void mouseExited(NSEvent*) override { hear(); }
    ZR_METHOD(mouseExited, "mouseExited:")
    void mouseDown(NSEvent*) override { hear(); }
    ZR_METHOD(mouseDown, "mouseDown:")

    int entered = 0;
    std::function<void()> whenHeard;

  private:
    void hear() const {
        if (whenHeard) {
            whenHeard();
        }
    }
};

TEST_F(Label, handsEventsOnToWhatLiesAroundIt) {
    const auto outer = make<LabelSurroundings>();
    outer->addSubview(label);
    label->setStyle(2);
    enter();
    EXPECT_EQ(outer->entered, 1);
    EXPECT_EQ(underline(), 1);
}

TEST_F(Label, handsEventsOnBeforeItDoesItsOwnPart) {
    const auto outer = make<LabelSurroundings>();
    outer->addSubview(label);
    const auto target = make<LabelTarget>();
    label->setTarget(target);
    label->setAction("pressed:"_sel);
    label->setStyle(2);
    std::string log;
    outer->whenHeard = [&] { log += std::to_string(underline()) + ' ' + std::to_string(target->presses) + '\n'; };
    enter();
    leave();
    press();
    EXPECT_EQ(log, "-1 0\n1 0\n0 0\n");
    EXPECT_EQ(target->presses, 1);
}

} // namespace
} // namespace zr
