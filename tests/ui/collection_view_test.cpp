#include <zrbasic/ui/collection_view.h>

#include "../appkit/scroller_testing.h"

#include <zrbasic/platform/appkit/scroll_view.h>

namespace zr {
namespace {

using namespace test;

Ref<ZRXCollectionView> plainCollection() {
    return make<ZRXCollectionView>(&ZRXCollectionView::initWithFrame, NSMakeRect(0, 0, 220, 300));
}

TEST(PlainCollection, hasAClearBackgroundAndOneSelectedItem) {
    const Ref<ZRXCollectionView> collection = plainCollection();
    ASSERT_EQ(collection->backgroundColors()->count(), 1u);
    EXPECT_TRUE(collection->backgroundColors()->objectAtIndex(0)->isEqual(NSColor::clearColor()));
    EXPECT_TRUE(collection->isSelectable());
    EXPECT_FALSE(collection->allowsMultipleSelection());
    EXPECT_FALSE(collection->allowsEmptySelection());
    EXPECT_EQ(collection->focusRingType(), 1u);
    EXPECT_TRUE(collection->acceptsFirstMouse(nullptr));
}

TEST(PlainCollection, aClickOnEmptySpaceCannotClearTheSelection) {
    const Ref<ZRXCollectionView> collection = plainCollection();
    collection->setContent(array({"a"_ns, "b"_ns}));
    const auto click = [&](double x, double fromTop) {
        collection->mouseDown(mouseEvent(NSEventTypeLeftMouseDown, x, 300 - fromTop));
    };
    click(150, 50);
    ASSERT_TRUE(collection->selectionIndexes()->containsIndex(1));
    click(150, 250);
    EXPECT_TRUE(collection->selectionIndexes()->containsIndex(1));
    click(50, 50);
    EXPECT_EQ(collection->selectionIndexes()->count(), 1u);
    EXPECT_TRUE(collection->selectionIndexes()->containsIndex(0));
}

TEST(PlainCollection, noClickAndNoKeyTakesBackTheLastSelection) {
    const Ref<ZRXCollectionView> collection = plainCollection();
    collection->setContent(array({"a"_ns, "b"_ns}));
    const auto click = [&](double x, double fromTop, NSUInteger keys) {
        collection->mouseDown(mouseEvent(NSEventTypeLeftMouseDown, x, 300 - fromTop, keys));
    };
    click(150, 50, 0);
    ASSERT_TRUE(collection->selectionIndexes()->containsIndex(1));
    for (const NSUInteger keys : {NSUInteger{NSEventModifierFlagCommand}, NSUInteger{NSEventModifierFlagShift},
                                  NSUInteger{NSEventModifierFlagCommand | NSEventModifierFlagShift}}) {
        SCOPED_TRACE(keys);
        click(150, 50, keys);
        EXPECT_EQ(collection->selectionIndexes()->count(), 1u);
        click(150, 290, keys);
        EXPECT_EQ(collection->selectionIndexes()->count(), 1u);
        click(-5, std::numeric_limits<double>::quiet_NaN(), keys);
        EXPECT_EQ(collection->selectionIndexes()->count(), 1u);
    }
    EXPECT_TRUE(collection->selectionIndexes()->containsIndex(1));
    click(50, 50, NSEventModifierFlagCommand);
    EXPECT_TRUE(collection->selectionIndexes()->isEqual(NSIndexSet::indexSetWithIndex(0)));
}

TEST(PlainCollection, makesTheScrollersFloatWhereItLiesWhenItIsSetUpAndNotLater) {
    const Ref<NSScrollView> scrolling = make<NSScrollView>(&NSScrollView::initWithFrame, NSMakeRect(0, 0, 150, 100));
    scrolling->setDocumentView(plainCollection());
    EXPECT_EQ(scrolling->scrollerStyle(), NSScrollerStyleLegacy);
    const Ref<ZRXCollectionView> fresh = alloc<ZRXCollectionView>();
    scrolling->setDocumentView(fresh);
    fresh->initWithFrame({{0, 0}, {100, 100}});
    EXPECT_EQ(scrolling->scrollerStyle(), NSScrollerStyleOverlay);
}

} // namespace
} // namespace zr
