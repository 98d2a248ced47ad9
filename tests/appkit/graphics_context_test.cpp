#include <zrbasic/platform/appkit/graphics_context.h>

#include "canvas_testing.h"

#include <gtest/gtest.h>

#include <optional>

namespace zr {
namespace {

using test::DrawingRecord;
using test::DrawingRecorder;

/// With a context that is not current yet.
class GraphicsContext : public testing::Test {
  protected:
    DrawingRecord record;
    DrawingRecorder canvas{record};
    const Ref<NSGraphicsContext> context = NSGraphicsContext::contextWithCanvas(canvas, true);
    const Ref<NSColor> red = NSColor::redColor();
    const Ref<NSColor> green = NSColor::greenColor();
    const Ref<NSColor> black = NSColor::blackColor();
};

TEST_F(GraphicsContext, isOfItsCanvasAndDirection) {
    EXPECT_EQ(&context->canvas(), &canvas);
    EXPECT_TRUE(context->isFlipped());
    EXPECT_TRUE(send<bool>(context, "isFlipped"_sel));
    EXPECT_FALSE(NSGraphicsContext::contextWithCanvas(canvas, false)->isFlipped());
    EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr) << "made is not current";
    EXPECT_EQ(record.log, "");
}

TEST_F(GraphicsContext, isThereOnlyWhileSomethingIsDrawn) {
    EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr);
    EXPECT_EQ(send<id>(NSGraphicsContext::classObject(), "currentContext"_sel), nullptr);
    {
        const CurrentContext current(context);
        EXPECT_EQ(NSGraphicsContext::currentContext(), context);
        EXPECT_EQ(send<id>(NSGraphicsContext::classObject(), "currentContext"_sel), context);
    }
    EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr);
}

TEST_F(GraphicsContext, nestsAndGivesWayToTheOneBefore) {
    const Ref<NSGraphicsContext> inner = NSGraphicsContext::contextWithCanvas(canvas, false);
    const CurrentContext current(context);
    {
        const CurrentContext nested(inner);
        EXPECT_EQ(NSGraphicsContext::currentContext(), inner);
        set(red);
        {
            const CurrentContext none(nullptr);
            EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr) << "nothing is drawn in there";
        }
        EXPECT_EQ(NSGraphicsContext::currentContext(), inner);
    }
    EXPECT_EQ(NSGraphicsContext::currentContext(), context);
    EXPECT_TRUE(context->fillColor()->isEqual(black)) << "each has colours of its own";
    EXPECT_TRUE(inner->fillColor()->isEqual(red));
}

TEST_F(GraphicsContext, isKeptWhileItIsCurrent) {
    Ref<NSGraphicsContext> brief = NSGraphicsContext::contextWithCanvas(canvas, false);
    const Weak<NSGraphicsContext> watched(brief);
    std::optional<CurrentContext> current(std::in_place, brief);
    brief = nullptr;
    EXPECT_FALSE(watched.expired());
    NSRectFill({{1, 2}, {3, 4}});
    EXPECT_EQ(record.log, "fill 1,2 3x4 black in place\n");
    current.reset();
    EXPECT_TRUE(watched.expired());
}

TEST_F(GraphicsContext, keepsColorsAndBringsThemBack) {
    const CurrentContext current(context);
    setFill(red);
    setStroke(green);
    NSGraphicsContext::saveGraphicsState();
    EXPECT_TRUE(context->fillColor()->isEqual(red)) << "keeping changes nothing";
    EXPECT_TRUE(context->strokeColor()->isEqual(green));
    setFill(green);
    send<void>(NSGraphicsContext::classObject(), "saveGraphicsState"_sel);
    set(black);
    NSGraphicsContext::restoreGraphicsState();
    EXPECT_TRUE(context->fillColor()->isEqual(green));
    EXPECT_TRUE(context->strokeColor()->isEqual(green));
    send<void>(NSGraphicsContext::classObject(), "restoreGraphicsState"_sel);
    EXPECT_TRUE(context->fillColor()->isEqual(red));
    EXPECT_TRUE(context->strokeColor()->isEqual(green));
    EXPECT_EQ(record.log, "save\nsave\nrestore\nrestore\n");
}

TEST_F(GraphicsContext, restoresNoMoreThanWasKept) {
    const CurrentContext current(context);
    set(red);
    NSGraphicsContext::restoreGraphicsState();
    EXPECT_EQ(record.log, "") << "the canvas counts on balance";
    EXPECT_TRUE(context->fillColor()->isEqual(red));
    NSGraphicsContext::saveGraphicsState();
    NSGraphicsContext::restoreGraphicsState();
    NSGraphicsContext::restoreGraphicsState();
    EXPECT_EQ(record.log, "save\nrestore\n");
    EXPECT_TRUE(context->strokeColor()->isEqual(red));
}

TEST_F(GraphicsContext, keepsStatesOfItsOwn) {
    const CurrentContext current(context);
    NSGraphicsContext::saveGraphicsState();
    set(red);
    DrawingRecord otherRecord;
    DrawingRecorder otherCanvas(otherRecord);
    {
        const CurrentContext nested(NSGraphicsContext::contextWithCanvas(otherCanvas, false));
        NSGraphicsContext::restoreGraphicsState();
    }
    EXPECT_EQ(otherRecord.log, "") << "nothing was kept there";
    EXPECT_EQ(record.log, "save\n");
    EXPECT_TRUE(context->fillColor()->isEqual(red));
    NSGraphicsContext::restoreGraphicsState();
    EXPECT_EQ(record.log, "save\nrestore\n");
    EXPECT_TRUE(context->fillColor()->isEqual(black));
}

TEST_F(GraphicsContext, drawsNothingWhenThereIsNone) {
    set(red);
    setFill(red);
    setStroke(red);
    NSGraphicsContext::saveGraphicsState();
    NSGraphicsContext::restoreGraphicsState();
    NSRectFill({{0, 0}, {5, 5}});
    NSRectFillUsingOperation({{0, 0}, {5, 5}}, NSCompositingOperationSourceOver);
    EXPECT_EQ(NSGraphicsContext::currentContext(), nullptr);
    const CurrentContext current(context);
    NSGraphicsContext::restoreGraphicsState();
    EXPECT_EQ(record.log, "");
    EXPECT_TRUE(context->fillColor()->isEqual(black)) << "the next one knows nothing of it";
    EXPECT_TRUE(context->strokeColor()->isEqual(black));
}

TEST_F(GraphicsContext, takesNoColorForBlack) {
    EXPECT_TRUE(context->fillColor()->isEqual(black));
    EXPECT_TRUE(context->strokeColor()->isEqual(black));
    context->setFillColor(red);
    context->setStrokeColor(green);
    context->setFillColor(nullptr);
    EXPECT_TRUE(context->fillColor()->isEqual(black));
    EXPECT_TRUE(context->strokeColor()->isEqual(green));
    context->setStrokeColor(nullptr);
    EXPECT_TRUE(context->strokeColor()->isEqual(black));
}

TEST_F(GraphicsContext, isGivenItsColorsByTheColors) {
    const CurrentContext current(context);
    send<void>(red, "setFill"_sel);
    EXPECT_TRUE(context->fillColor()->isEqual(red));
    EXPECT_TRUE(context->strokeColor()->isEqual(black));
    send<void>(green, "setStroke"_sel);
    EXPECT_TRUE(context->fillColor()->isEqual(red));
    EXPECT_TRUE(context->strokeColor()->isEqual(green));
    send<void>(black, "set"_sel);
    EXPECT_TRUE(context->fillColor()->isEqual(black));
    EXPECT_TRUE(context->strokeColor()->isEqual(black));
}

TEST_F(GraphicsContext, keepsItsColorsWhenNoColorIsSet) {
    const CurrentContext current(context);
    setFill(red);
    setStroke(green);
    setFill(nullptr);
    setStroke(nullptr);
    set(nullptr);
    send<void>(nullptr, "set"_sel);
    EXPECT_TRUE(context->fillColor()->isEqual(red));
    EXPECT_TRUE(context->strokeColor()->isEqual(green));
}

TEST_F(GraphicsContext, fillsInPlaceOfWhatIsThereUnlessToldOtherwise) {
    const CurrentContext current(context);
    setFill(red);
    setStroke(green);
    NSRectFill({{1, 2}, {30, 40}});
    NSRectFillUsingOperation({{5, 6}, {7, 8}}, NSCompositingOperationSourceOver);
    NSRectFillUsingOperation(NSZeroRect, NSCompositingOperationMultiply);
    EXPECT_EQ(record.log,
              "fill 1,2 30x40 red in place\n"
              "fill 5,6 7x8 red\n"
              "fill 0,0 0x0 red otherwise\n");
}

} // namespace
} // namespace zr
