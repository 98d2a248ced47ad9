#include <zrbasic/platform/appkit/collection_view.h>

#include "scroller_testing.h"

#include <zrbasic/platform/appkit/scroll_view.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>

namespace zr {
namespace {

using namespace test;

/// Gives so many items, and writes down what it is told as the collection's delegate.
class CollectionSource : public NSObject {
    ZR_OBJECT(CollectionSource, NSObject)
  public:
    NSInteger numberOfItems(NSObject*, NSInteger section) { return section == 0 ? count : 1000; }
    ZR_METHOD(numberOfItems, "collectionView:numberOfItemsInSection:")
    id itemAt(NSObject*, NSUInteger index) {
        if (index == oddIndex) {
            return odd;
        }
        const Ref<NSCollectionViewItem> item = make<NSCollectionViewItem>();
        item->setRepresentedObject(box(static_cast<int>(index)));
        return item;
    }
    ZR_METHOD(itemAt, "collectionView:itemForRepresentedObjectAtIndex:")
    void selected(NSObject*, NSObject* indexes) { note('+', indexes); }
    ZR_METHOD(selected, "collectionView:didSelectItemsAtIndexes:")
    void deselected(NSObject*, NSObject* indexes) { note('-', indexes); }
    ZR_METHOD(deselected, "collectionView:didDeselectItemsAtIndexes:")

    void note(char sign, NSObject* indexes) {
        cast<NSIndexSet>(indexes)->enumerateIndexesUsingBlock(
            [&](NSUInteger index, bool&) { log += sign + std::to_string(index) + ' '; });
    }
    std::string take() { return std::exchange(log, {}); }

    NSInteger count = 0;
    NSUInteger oddIndex = NSNotFound;
    id odd;
    std::string log;
};

class Collections : public testing::Test {
  protected:
    /// Three columns of 60 by 40, 10 apart, in 220 by 300.
    Collections()
        : source(make<CollectionSource>()),
          collection(make<NSCollectionView>(&NSCollectionView::initWithFrame, NSMakeRect(0, 0, 220, 300))) {
        collection->setItemSize({60, 40});
        collection->setSelectable(true);
        collection->setDelegate(source);
        source->count = 8;
        collection->setDataSource(source);
    }

    void click(NSUInteger index, NSUInteger keys = 0) {
        const NSRect frame = collection->frameForItemAtIndex(index);
        clickAt({frame.origin.x + 5, frame.origin.y + 5}, keys);
    }
    void clickAt(NSPoint point, NSUInteger keys = 0) {
        const NSPoint inWindow = collection->convertPoint_toView(point, nullptr);
        collection->mouseDown(mouseEvent(NSEventTypeLeftMouseDown, inWindow.x, inWindow.y, keys));
    }
    void type(char16_t character, NSUInteger keys = 0) {
        EventFields fields;
        fields.type = NSEventTypeKeyDown;
        fields.modifierFlags = keys;
        const char16_t text[] = {character, 0};
        fields.characters = NSString::fromUtf16(text);
        collection->keyDown(NSEvent::eventWithFields(std::move(fields)));
    }
    [[nodiscard]] std::string selection() const {
        std::string text;
        collection->selectionIndexes()->enumerateIndexesUsingBlock(
            [&](NSUInteger index, bool&) { text += std::to_string(index) + ' '; });
        return text;
    }

    Ref<CollectionSource> source;
    Ref<NSCollectionView> collection;
};

TEST_F(Collections, itemsLieInRowsFromTheTopDown) {
    ASSERT_EQ(collection->numberOfItems(), 8u);
    EXPECT_EQ(collection->subviews()->count(), 8u);
    EXPECT_EQ(collection->itemAtIndex(0)->view()->frame(), NSMakeRect(0, 0, 60, 40));
    EXPECT_EQ(collection->itemAtIndex(2)->view()->frame(), NSMakeRect(140, 0, 60, 40));
    EXPECT_EQ(collection->itemAtIndex(3)->view()->frame(), NSMakeRect(0, 50, 60, 40));
    EXPECT_EQ(collection->itemAtIndex(3)->collectionView(), collection);
    collection->setFrameSize({129, 300});
    EXPECT_EQ(collection->itemAtIndex(1)->view()->frame(), NSMakeRect(0, 50, 60, 40));
    collection->setFrameSize({0, 0});
    EXPECT_EQ(collection->itemAtIndex(1)->view()->frame(), NSMakeRect(0, 50, 60, 40));
}

TEST_F(Collections, withOneColumnTheItemsAreAListAsWideAsTheCollection) {
    collection->setMaxNumberOfColumns(1);
    EXPECT_EQ(collection->itemAtIndex(2)->view()->frame(), NSMakeRect(0, 100, 220, 40));
    EXPECT_EQ(collection->indexOfItemAtPoint({215, 105}), 2u);
    collection->setMaxNumberOfColumns(2);
    EXPECT_EQ(collection->itemAtIndex(2)->view()->frame(), NSMakeRect(0, 50, 60, 40));
    collection->setMaxNumberOfColumns(0);
    EXPECT_EQ(collection->itemAtIndex(2)->view()->frame(), NSMakeRect(140, 0, 60, 40));
}

TEST_F(Collections, findsTheItemUnderAPointAndNoneBetweenThem) {
    EXPECT_EQ(collection->indexOfItemAtPoint({0, 0}), 0u);
    EXPECT_EQ(collection->indexOfItemAtPoint({75, 55}), 4u);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const NSPoint point : {NSPoint{65, 5}, NSPoint{5, 45}, NSPoint{145, 105}, NSPoint{-1, 5}, NSPoint{215, 5},
                                NSPoint{nan, 5}, NSPoint{5, 1e300}}) {
        SCOPED_TRACE(point.x);
        EXPECT_EQ(collection->indexOfItemAtPoint(point), static_cast<NSUInteger>(NSNotFound));
    }
    EXPECT_EQ(collection->frameForItemAtIndex(8), NSZeroRect);
    EXPECT_FALSE(collection->itemAtIndex(8));
}

TEST_F(Collections, aClickSelectsOneItemAndTellsTheDelegate) {
    click(4);
    EXPECT_EQ(selection(), "4 ");
    EXPECT_EQ(source->take(), "+4 ");
    EXPECT_TRUE(collection->itemAtIndex(4)->isSelected());
    click(1, NSEventModifierFlagShift);
    EXPECT_EQ(source->take(), "-4 +1 ");
    click(1);
    EXPECT_EQ(source->take(), "");
    EXPECT_FALSE(collection->itemAtIndex(4)->isSelected());
    collection->setSelectable(false);
    click(2);
    EXPECT_EQ(selection(), "1 ");
}

TEST_F(Collections, aClickBesideTheItemsSelectsNoneUnlessOneMustBe) {
    click(4);
    clickAt({65, 5});
    EXPECT_EQ(selection(), "");
    EXPECT_EQ(source->take(), "+4 -4 ");
    collection->setAllowsEmptySelection(false);
    EXPECT_EQ(selection(), "");
    click(4);
    clickAt({65, 5});
    click(4, NSEventModifierFlagCommand);
    EXPECT_EQ(selection(), "4 ");
    EXPECT_EQ(source->take(), "+4 ");
    collection->setSelectionIndexes(nullptr);
    EXPECT_EQ(selection(), "");
}

TEST_F(Collections, shiftAndCommandSelectSeveralWhereThatIsAllowed) {
    collection->setAllowsMultipleSelection(true);
    click(2);
    click(5, NSEventModifierFlagShift);
    EXPECT_EQ(selection(), "2 3 4 5 ");
    click(3, NSEventModifierFlagCommand);
    EXPECT_EQ(selection(), "2 4 5 ");
    click(7, NSEventModifierFlagCommand);
    EXPECT_EQ(selection(), "2 4 5 7 ");
    EXPECT_EQ(source->take(), "+2 +3 +4 +5 -3 +7 ");
    collection->setAllowsMultipleSelection(false);
    EXPECT_EQ(selection(), "2 ");
    EXPECT_EQ(source->take(), "");
}

TEST_F(Collections, theArrowKeysGoFromItemToItem) {
    const struct {
        char16_t key;
        const char* selected;
    } rows[] = {{0xF703, "0 "}, {0xF703, "1 "}, {0xF701, "4 "}, {0xF701, "7 "}, {0xF701, "7 "}, {0xF703, "7 "},
                {0xF702, "6 "}, {0xF700, "3 "}, {0xF729, "0 "}, {0xF702, "0 "}, {0xF72B, "7 "}, {'x', "7 "}};
    for (const auto& row : rows) {
        SCOPED_TRACE(static_cast<int>(row.key));
        type(row.key);
        EXPECT_EQ(selection(), row.selected);
    }
    collection->setAllowsMultipleSelection(true);
    type(0xF702, NSEventModifierFlagShift);
    type(0xF702, NSEventModifierFlagShift);
    EXPECT_EQ(selection(), "5 6 7 ");
    type(0xF703, NSEventModifierFlagShift);
    EXPECT_EQ(selection(), "6 7 ");
    collection->keyDown(nullptr);
    EXPECT_EQ(selection(), "6 7 ");
}

TEST_F(Collections, aSelectionThatIsSetTellsNobodyAndPassesOverWhatIsNotThere) {
    collection->setSelectionIndexes(NSIndexSet::indexSetWithIndexesInRange({6, 100}));
    EXPECT_EQ(selection(), "6 ");
    collection->setAllowsMultipleSelection(true);
    collection->setSelectionIndexes(NSIndexSet::indexSetWithIndexesInRange({6, 100}));
    EXPECT_EQ(selection(), "6 7 ");
    EXPECT_TRUE(collection->itemAtIndex(7)->isSelected());
    EXPECT_EQ(source->take(), "");
}

TEST_F(Collections, readingAnewKeepsTheSelectionOfWhatIsStillThere) {
    collection->setAllowsMultipleSelection(true);
    collection->setSelectionIndexes(NSIndexSet::indexSetWithIndexesInRange({4, 4}));
    const Ref<NSCollectionViewItem> before = collection->itemAtIndex(4);
    source->count = 6;
    collection->reloadData();
    EXPECT_EQ(selection(), "4 5 ");
    EXPECT_TRUE(collection->itemAtIndex(5)->isSelected());
    EXPECT_EQ(collection->subviews()->count(), 6u);
    EXPECT_FALSE(before->collectionView());
    EXPECT_FALSE(before->view()->superview());
}

TEST_F(Collections, whatIsNoItemLeavesAGap) {
    source->oddIndex = 1;
    for (const id& odd : {id(), id(NSNull::null()), id("text"_ns)}) {
        source->odd = odd;
        collection->reloadData();
        EXPECT_EQ(collection->numberOfItems(), 8u);
        EXPECT_FALSE(collection->itemAtIndex(1));
        EXPECT_EQ(collection->itemAtIndex(2)->view()->frame(), NSMakeRect(140, 0, 60, 40));
        click(1);
        EXPECT_EQ(selection(), "1 ");
    }
}

TEST_F(Collections, countsBeyondReasonAreCutAndBelowNoneAreNone) {
    source->count = -5;
    collection->reloadData();
    EXPECT_EQ(collection->numberOfItems(), 0u);
    type(0xF703);
    EXPECT_EQ(selection(), "");
    source->count = std::numeric_limits<NSInteger>::max();
    collection->reloadData();
    EXPECT_EQ(collection->numberOfItems(), 10'000u);
    collection->setDataSource(make<NSObject>());
    EXPECT_EQ(collection->numberOfItems(), 0u);
}

TEST_F(Collections, withoutADataSourceTheItemsStandForTheContent) {
    collection->setDataSource(nullptr);
    EXPECT_EQ(collection->numberOfItems(), 0u);
    collection->setContent(array({"a"_ns, "b"_ns}));
    ASSERT_EQ(collection->numberOfItems(), 2u);
    EXPECT_TRUE(collection->itemAtIndex(1)->representedObject()->isEqual("b"_ns));
    collection->setContent(nullptr);
    EXPECT_EQ(collection->numberOfItems(), 0u);
    EXPECT_EQ(collection->content()->count(), 0u);
}

TEST_F(Collections, inAScrollViewItIsAsWideAsIsSeenAndAsHighAsItsItemsNeed) {
    const Ref<NSScrollView> scrolling = make<NSScrollView>(&NSScrollView::initWithFrame, NSMakeRect(0, 0, 150, 100));
    scrolling->setHasVerticalScroller(true);
    scrolling->setDocumentView(collection);
    EXPECT_EQ(collection->frame(), NSMakeRect(0, 0, 135, 190));
    scrolling->setFrameSize({500, 100});
    EXPECT_EQ(collection->frame().size, (NSSize{485, 100}));
    scrolling->setFrameSize({150, 100});
    collection->setSelectionIndexes(NSIndexSet::indexSetWithIndex(5));
    type(0xF701);
    EXPECT_EQ(selection(), "7 ");
    EXPECT_EQ(scrolling->documentVisibleRect(), NSMakeRect(0, 90, 135, 100));
    type(0xF729);
    EXPECT_EQ(scrolling->documentVisibleRect().origin.y, 0);
}

TEST_F(Collections, rowsTakeTurnsInTheBackgroundColours) {
    EXPECT_EQ(drawn(collection).log, "fill 0,0 220x300 white\n");
    collection->setFrameSize({220, 100});
    collection->setBackgroundColors(array({NSColor::redColor(), NSColor::greenColor()}));
    EXPECT_EQ(drawn(collection).log, "fill 0,0 220x50 red\nfill 0,50 220x50 green\n");
    collection->setBackgroundColors(array({"red"_ns}));
    EXPECT_EQ(drawn(collection).log, "");
    collection->setBackgroundColors(nullptr);
    EXPECT_EQ(drawn(collection).log, "");
    EXPECT_EQ(collection->backgroundColors()->count(), 0u);
}

TEST_F(Collections, lieSafelyInAnyExtent) {
    constexpr double huge = std::numeric_limits<double>::max();
    for (const double extent : {-5.0, 1e300, huge, double(INFINITY), double(NAN)}) {
        SCOPED_TRACE(extent);
        collection->setFrameSize({extent, 300});
        collection->setItemSpacing({extent, 10});
        click(7);
        clickAt({extent, extent});
        collection->setItemSize({extent, 40});
        type(0xF701);
        EXPECT_LE(collection->selectionIndexes()->count(), 1u);
        collection->setItemSpacing({10, 10});
        collection->setItemSize({60, 40});
        collection->setFrameSize({220, 300});
        EXPECT_EQ(collection->frameForItemAtIndex(7), NSMakeRect(70, 100, 60, 40));
    }
}

TEST_F(Collections, coloursAsManyRowsAsAnyScreenHas) {
    collection->setBackgroundColors(array({NSColor::redColor(), NSColor::greenColor()}));
    for (const double height : {1e300, double(INFINITY), double(NAN), -5.0}) {
        SCOPED_TRACE(height);
        collection->setFrameSize({220, height});
        EXPECT_LT(drawn(collection).log.size(), 10'000'000u);
    }
    collection->setItemSize({10, INFINITY});
    EXPECT_LT(drawn(collection).log.size(), 10'000'000u);
}

TEST(Collection, startsWithNothingThatUsersCouldSelect) {
    const Ref<NSCollectionView> collection = make<NSCollectionView>();
    EXPECT_FALSE(collection->isSelectable());
    EXPECT_FALSE(collection->acceptsFirstResponder());
    EXPECT_FALSE(collection->allowsMultipleSelection());
    EXPECT_TRUE(collection->allowsEmptySelection());
    EXPECT_EQ(collection->selectionIndexes()->count(), 0u);
    EXPECT_TRUE(collection->isFlipped());
}

} // namespace
} // namespace zr
