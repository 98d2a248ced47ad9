#include <zrbasic/platform/appkit/control.h>

#include <zrbasic/platform/appkit/text_field.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include "canvas_testing.h"

#include <gtest/gtest.h>
#include <string>

namespace zr {
namespace {

/// Draws a word of its own.
class WordCell : public NSActionCell {
    ZR_OBJECT(WordCell, NSActionCell)
  public:
    void drawInteriorWithFrame_inView(NSRect frame, NSView* view) override {
        log += test::written(frame) + (view ? " in a view\n" : "\n");
    }

    std::string log;
};

class WordControl : public NSControl {
    ZR_OBJECT(WordControl, NSControl)
  public:
    [[nodiscard]] static Class* cellClass() { return WordCell::classObject(); }
    ZR_CLASS_METHOD(cellClass, "cellClass")
};

/// Says that its cells are something else altogether.
class LostControl : public NSControl {
    ZR_OBJECT(LostControl, NSControl)
  public:
    [[nodiscard]] static Class* cellClass() { return NSNumber::classObject(); }
    ZR_CLASS_METHOD(cellClass, "cellClass")
};

class ActingView : public NSView {
    ZR_OBJECT(ActingView, NSView)
  public:
    [[nodiscard]] bool acceptsFirstResponder() const override { return true; }
    void act(NSObject* sender) { senders.push_back(id(sender)); }
    ZR_METHOD(act, "act:")

    std::vector<id> senders;
};

constexpr NSRect frame{{10, 20}, {100, 24}};

TEST(Control, makesACellOfTheClassThatItsOwnClassNames) {
    const auto control = make<WordControl>(&NSControl::initWithFrame, frame);
    EXPECT_NE(cast<WordCell>(control->cell().get()), nullptr);
    EXPECT_EQ(control->cell()->controlView(), control);
    EXPECT_EQ(control->frame(), frame);
    EXPECT_EQ(make<NSControl>()->cell(), nullptr);
    EXPECT_EQ(make<LostControl>()->cell(), nullptr) << "what is no cell is not taken for one";
    // A class made while the program runs inherits the operation.
    static int round = 0;
    Class* const made = objc_allocateClassPair(WordControl::classObject(), "MadeWordControl" + std::to_string(++round));
    ASSERT_NE(made, nullptr);
    objc_registerClassPair(made);
    const auto instance = cast<NSControl>(class_createInstance(made));
    instance->initWithFrame(frame);
    EXPECT_NE(cast<WordCell>(instance->cell().get()), nullptr);
}

TEST(Control, hasItsCellDrawInItsBounds) {
    const auto control = make<WordControl>(&NSControl::initWithFrame, frame);
    auto* const cell = cast<WordCell>(control->cell().get());
    control->cell()->setBordered(true);
    EXPECT_EQ(test::drawn(control).log, "line 1 round 0 0,0 100x24 light\n");
    EXPECT_EQ(cell->log, "0,0 100x24 in a view\n");
    EXPECT_EQ(test::drawn(make<NSControl>(&NSControl::initWithFrame, frame)).log, "") << "nothing without a cell";
}

TEST(Control, isDrawnAnewWhenItsCellChanges) {
    const auto control = make<WordControl>(&NSControl::initWithFrame, frame);
    const auto isDrawnAnew = [&control](const auto& change) {
        control->setNeedsDisplay(false);
        change();
        return control->needsDisplay();
    };
    EXPECT_TRUE(isDrawnAnew([&] { control->setStringValue("a"_ns); }));
    EXPECT_TRUE(isDrawnAnew([&] { control->cell()->setStringValue("b"_ns); }));
    EXPECT_TRUE(isDrawnAnew([&] { control->setFont(NSFont::systemFontOfSize(9)); }));
    EXPECT_TRUE(isDrawnAnew([&] { control->setEnabled(false); }));
    EXPECT_TRUE(isDrawnAnew([&] { control->cell()->setState(1); }));
    EXPECT_FALSE(isDrawnAnew([&] { control->setTag(3); }));
    const auto before = control->cell();
    control->setCell(make<WordCell>());
    EXPECT_FALSE(isDrawnAnew([&] { before->setStringValue("c"_ns); }));
    EXPECT_EQ(before->controlView(), nullptr);
}

TEST(Control, handsWhatItIsToldToItsCell) {
    const auto control = make<WordControl>(&NSControl::initWithFrame, frame);
    const auto cell = control->cell();
    control->setDoubleValue(2.5);
    EXPECT_EQ(cell->doubleValue(), 2.5);
    control->setIntegerValue(-3);
    EXPECT_TRUE(control->objectValue()->isEqual(box(-3)));
    control->setObjectValue(NSNull::null());
    EXPECT_EQ(control->objectValue(), NSNull::null());
    control->setAttributedStringValue(make<NSAttributedString>(&NSAttributedString::initWithString, "abc"_ns));
    EXPECT_EQ(control->attributedStringValue()->string()->utf8(), "abc");
    control->setAlignment(NSTextAlignmentCenter);
    control->setLineBreakMode(NSLineBreakByClipping);
    control->setUsesSingleLineMode(true);
    control->setTag(7);
    EXPECT_EQ(cell->alignment(), NSTextAlignmentCenter);
    EXPECT_EQ(cell->lineBreakMode(), NSLineBreakByClipping);
    EXPECT_TRUE(cell->usesSingleLineMode());
    EXPECT_EQ(control->viewWithTag(7), control);
}

TEST(Control, withoutACellDropsEverythingButIsEnabled) {
    const auto control = make<NSControl>(&NSControl::initWithFrame, frame);
    control->setStringValue("a"_ns);
    control->setObjectValue(box(1));
    control->setAction("act:"_sel);
    control->setTarget(control);
    control->setEnabled(false);
    control->setFont(nullptr);
    EXPECT_EQ(control->stringValue()->utf8(), "");
    EXPECT_EQ(control->objectValue(), nullptr);
    EXPECT_EQ(control->attributedStringValue()->length(), 0U);
    EXPECT_FALSE(control->action());
    EXPECT_TRUE(control->isEnabled());
    EXPECT_FALSE(control->acceptsFirstResponder());
    EXPECT_EQ(control->intrinsicContentSize(), (NSSize{NSViewNoIntrinsicMetric, NSViewNoIntrinsicMetric}));
}

/// A control in a view in a window.
class ControlAction : public testing::Test {
  protected:
    ControlAction() {
        window->contentView()->addSubview(outer);
        outer->addSubview(control);
        window->contentView()->addSubview(beside);
    }

    const Ref<NSWindow> window = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{{0, 0}, {400, 200}},
                                                NSUInteger{NSWindowStyleMaskTitled});
    const Ref<ActingView> outer = make<ActingView>(&NSView::initWithFrame, frame);
    const Ref<ActingView> beside = make<ActingView>(&NSView::initWithFrame, frame);
    const Ref<WordControl> control = make<WordControl>(&NSControl::initWithFrame, frame);
};

TEST_F(ControlAction, goesToTheTarget) {
    control->setTarget(beside);
    control->setAction("act:"_sel);
    EXPECT_TRUE(control->sendAction_to(control->action(), control->target()));
    ASSERT_EQ(beside->senders.size(), 1U);
    EXPECT_EQ(beside->senders[0], control);
    EXPECT_FALSE(control->sendAction_to("nobodyKnows:"_sel, beside));
    EXPECT_FALSE(control->sendAction_to(SEL(), beside));
    EXPECT_FALSE(control->sendAction_to("act:"_sel, NSNull::null())) << "a target without it is not passed over";
    EXPECT_TRUE(outer->senders.empty());
}

TEST_F(ControlAction, withoutATargetGoesAlongTheResponders) {
    EXPECT_TRUE(control->sendAction_to("act:"_sel, nullptr));
    EXPECT_EQ(outer->senders.size(), 1U) << "from the control on, when nobody has the keyboard";
    window->makeFirstResponder(beside);
    EXPECT_TRUE(control->sendAction_to("act:"_sel, nullptr));
    EXPECT_EQ(beside->senders.size(), 1U) << "from the first responder on";
    EXPECT_EQ(outer->senders.size(), 1U);
    EXPECT_FALSE(control->sendAction_to("nobodyKnows:"_sel, nullptr));
    control->removeFromSuperview();
    EXPECT_FALSE(control->sendAction_to("act:"_sel, nullptr)) << "nor outside of a window";
}

TEST_F(ControlAction, doesNotKeepItsTarget) {
    {
        const auto passing = make<ActingView>();
        control->setTarget(passing);
    }
    EXPECT_EQ(control->target(), nullptr);
}

TEST_F(ControlAction, letsItsCellGoOn) {
    const Ref<NSCell> cell = control->cell();
    {
        const auto passing = make<WordControl>();
        passing->setCell(cell);
        EXPECT_EQ(cell->controlView(), passing);
    }
    EXPECT_EQ(cell->controlView(), nullptr);
    cell->setStringValue("a"_ns);
    EXPECT_EQ(cell->stringValue()->utf8(), "a");
}

} // namespace
} // namespace zr
