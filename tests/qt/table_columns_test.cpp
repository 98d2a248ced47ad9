#include "table_on_screen.h"

#include <zrbasic/model/table_column_layout.h>
#include <zrbasic/platform/foundation/notification_center.h>

#include <tests/model/table_layout_testing.h>

#include <rapidcheck.h>

namespace zr {
namespace {

using test::expectedLayout;
using test::layout;
using test::shownLayout;
using test::TableColumnLayout;

using TableColumnsOnScreen = test::TableOnScreen;

TEST_F(TableColumnsOnScreen, standWhereTheTableHasThem) {
    EXPECT_EQ(shownLayout(*shown), "bid 100, ask 100, last 100");
    table->moveColumn_toColumn(2, 0);
    EXPECT_EQ(shownLayout(*shown), "last 100, bid 100, ask 100");
    column("bid"_ns)->setHidden(true);
    column("ask"_ns)->setWidth(55.5);
    EXPECT_EQ(shownLayout(*shown), "last 100, bid hidden, ask 56");
    table->moveColumn_toColumn(1, 2);
    EXPECT_EQ(shownLayout(*shown), "last 100, ask 56, bid hidden");
    column("bid"_ns)->setHidden(false);
    EXPECT_EQ(shownLayout(*shown), "last 100, ask 56, bid 100");
}

TEST_F(TableColumnsOnScreen, rememberAWidthSetWhileHidden) {
    column("ask"_ns)->setHidden(true);
    column("ask"_ns)->setWidth(42);
    EXPECT_EQ(shownLayout(*shown), "bid 100, ask hidden, last 100");
    column("ask"_ns)->setHidden(false);
    EXPECT_EQ(shownLayout(*shown), "bid 100, ask 42, last 100");
    EXPECT_EQ(column("ask"_ns)->width(), 42.0);
}

TEST_F(TableColumnsOnScreen, comeAndGo) {
    table->moveColumn_toColumn(0, 2);
    const Ref<NSTableColumn> ask = column("ask"_ns);
    table->removeTableColumn(ask);
    EXPECT_EQ(shownLayout(*shown), "last 100, bid 100");
    ask->setWidth(33);
    table->addTableColumn(ask);
    EXPECT_EQ(shownLayout(*shown), "last 100, bid 100, ask 33");
    const Ref<NSTableView> other = make<NSTableView>();
    other->addTableColumn(ask);
    EXPECT_EQ(shownLayout(*shown), "last 100, bid 100");
}

TEST_F(TableColumnsOnScreen, mayBeAsNarrowAsAPixelAndWiderThanAnyScreen) {
    column("bid"_ns)->setMinWidth(0);
    column("bid"_ns)->setWidth(1);
    column("ask"_ns)->setMaxWidth(1e12);
    column("ask"_ns)->setWidth(1e12);
    EXPECT_EQ(header().sectionSize(header().logicalIndex(0)), 1);
    EXPECT_EQ(header().sectionSize(header().logicalIndex(1)), (1 << 20) - 1);
    EXPECT_EQ(column("ask"_ns)->width(), 1e12);
}

TEST_F(TableColumnsOnScreen, moveWhereTheUserDragsThem) {
    dragHeader(middleOf(0), middleOf(1) + QPoint(20, 0));
    EXPECT_EQ(layout(table), "ask 100, bid 100, last 100");
    EXPECT_EQ(shownLayout(*shown), expectedLayout(*table));
    dragHeader(middleOf(2), middleOf(0) - QPoint(20, 0));
    EXPECT_EQ(layout(table), "last 100, ask 100, bid 100");
    EXPECT_EQ(shownLayout(*shown), expectedLayout(*table));
}

TEST_F(TableColumnsOnScreen, moveOverHiddenOnesThatKeepTheirPlace) {
    column("ask"_ns)->setHidden(true);
    dragHeader(middleOf(0), middleOf(2) + QPoint(20, 0));
    EXPECT_EQ(layout(table), "ask 100 hidden, last 100, bid 100");
    EXPECT_EQ(shownLayout(*shown), expectedLayout(*table));
    column("ask"_ns)->setHidden(false);
    EXPECT_EQ(shownLayout(*shown), "ask 100, last 100, bid 100");
}

TEST_F(TableColumnsOnScreen, tellOfADragLikeOfAnyMove) {
    std::string heard;
    const id listening = NSNotificationCenter::defaultCenter()->addObserverForName_object_usingBlock(
        nullptr, table, [&heard](NSNotification* notification) { heard += notification->name()->utf8() + '|'; });
    dragHeader(middleOf(0), middleOf(1) + QPoint(20, 0));
    EXPECT_EQ(heard, "NSTableViewColumnDidMoveNotification|");
    heard.clear();
    dragHeader(edgeOf(0), edgeOf(0) + QPoint(24, 0));
    EXPECT_NE(heard.find("NSTableViewColumnDidResizeNotification|"), std::string::npos);
    EXPECT_EQ(heard.find("Move"), std::string::npos);
    NSNotificationCenter::defaultCenter()->removeObserver(listening);
}

TEST_F(TableColumnsOnScreen, becomeAsWideAsTheUserDragsThemAndLeaveTheOthersAsTheyWere) {
    column("bid"_ns)->setWidth(100.4);
    column("ask"_ns)->setWidth(80.25);
    dragHeader(edgeOf(0), edgeOf(0) + QPoint(24, 0));
    EXPECT_EQ(column("bid"_ns)->width(), 124.0);
    EXPECT_EQ(column("ask"_ns)->width(), 80.25);
    EXPECT_EQ(shownLayout(*shown), "bid 124, ask 80, last 100");
}

TEST_F(TableColumnsOnScreen, stayWithinTheirLimitsWhileTheyAreDragged) {
    column("bid"_ns)->setMinWidth(70);
    column("bid"_ns)->setMaxWidth(130);
    dragHeader(edgeOf(0), edgeOf(0) - QPoint(60, 0));
    EXPECT_EQ(column("bid"_ns)->width(), 70.0);
    EXPECT_EQ(shownLayout(*shown), "bid 70, ask 100, last 100");
    dragHeader(edgeOf(0), edgeOf(0) + QPoint(150, 0));
    EXPECT_EQ(column("bid"_ns)->width(), 130.0);
    EXPECT_EQ(shownLayout(*shown), "bid 130, ask 100, last 100");
}

TEST_F(TableColumnsOnScreen, cannotBeDraggedWhereThatIsNotAllowed) {
    table->setAllowsColumnReordering(false);
    dragHeader(middleOf(0), middleOf(1) + QPoint(20, 0));
    EXPECT_EQ(layout(table), "bid 100, ask 100, last 100");
    table->setAllowsColumnReordering(true);
    table->setAllowsColumnResizing(false);
    dragHeader(edgeOf(2), edgeOf(2) + QPoint(24, 0));
    EXPECT_EQ(layout(table), "bid 100, ask 100, last 100");
    EXPECT_EQ(shownLayout(*shown), "bid 100, ask 100, last 100");
}

TEST_F(TableColumnsOnScreen, comeBackAsTheUserLeftThem) {
    dragHeader(middleOf(0), middleOf(1) + QPoint(20, 0));
    dragHeader(edgeOf(0), edgeOf(0) + QPoint(24, 0));
    column("last"_ns)->setHidden(true);
    const Ref<NSArray> saved = arrangedColumnInfos(table);
    const std::string left = shownLayout(*shown);
    table = make<NSTableView>();
    SetUp();
    EXPECT_EQ(shownLayout(*shown), "bid 100, ask 100, last 100");
    rearrangedWithColumnKeyValues(table, saved);
    EXPECT_EQ(shownLayout(*shown), left);
    EXPECT_EQ(left, "ask 124, bid 100, last hidden");
}

TEST_F(TableColumnsOnScreen, areTheSameInAWidgetMadeAnew) {
    table->moveColumn_toColumn(2, 0);
    column("bid"_ns)->setHidden(true);
    column("bid"_ns)->setWidth(60);
    delete qt::widget(table);
    column("ask"_ns)->setWidth(70);
    show();
    EXPECT_EQ(shownLayout(*shown), "last 100, bid hidden, ask 70");
    column("bid"_ns)->setHidden(false);
    EXPECT_EQ(shownLayout(*shown), "last 100, bid 60, ask 70");
    dragHeader(middleOf(0), middleOf(1) + QPoint(20, 0));
    EXPECT_EQ(layout(table), "bid 60, last 100, ask 70");
}

TEST_F(TableColumnsOnScreen, haveTheTitlesOfTheTable) {
    const auto title = [this](int position) {
        return shown->model()->headerData(header().logicalIndex(position), Qt::Horizontal).toString().toStdString();
    };
    EXPECT_EQ(title(0), "bid");
    const QImage before = header().grab().toImage();
    column("bid"_ns)->setTitle("Best bid"_ns);
    settle();
    EXPECT_EQ(title(0), "Best bid");
    EXPECT_NE(header().grab().toImage(), before);
    table->moveColumn_toColumn(0, 1);
    EXPECT_EQ(title(1), "Best bid");
}

/// One thing that a program does to columns.
void changeColumns(NSTableView& table) {
    const NSInteger count = table.numberOfColumns();
    const auto column = count > 0 ? Ref<NSTableColumn>(cast<NSTableColumn>(
                                        table.tableColumns()->objectAtIndex(*rc::gen::inRange<NSUInteger>(0, count))))
                                  : nullptr;
    switch (column ? *rc::gen::inRange(0, 6) : 0) {
        case 0:
            table.addTableColumn(make<NSTableColumn>(&NSTableColumn::initWithIdentifier, "new"_ns));
            break;
        case 1:
            table.removeTableColumn(column);
            break;
        case 2:
            column->setHidden(!column->isHidden());
            break;
        case 3:
            column->setWidth(*rc::gen::inRange(0, 400) / 3.0);
            break;
        default:
            table.moveColumn_toColumn(*rc::gen::inRange<NSInteger>(0, count), *rc::gen::inRange<NSInteger>(0, count));
            break;
    }
}

TEST_F(TableColumnsOnScreen, agreeWithTheTableWhateverIsDoneToThem) {
    EXPECT_TRUE(rc::check("the header shows the table's columns", [this] {
        const int changes = *rc::gen::inRange(1, 12);
        for (int i = 0; i < changes; ++i) {
            changeColumns(*table);
            RC_ASSERT(shownLayout(*shown) == expectedLayout(*table));
        }
    }));
}

Ref<NSTableView> shownTable() {
    Ref<NSTableView> table = make<NSTableView>();
    qt::widget(table)->show();
    return table;
}

INSTANTIATE_TEST_SUITE_P(OnScreen, TableColumnLayout, testing::Values(test::TableSource{"onScreen", &shownTable}),
                         testing::PrintToStringParamName());

} // namespace
} // namespace zr
