#include <zrbasic/platform/appkit/table_view.h>

#include <zrbasic/platform/foundation/attributed_string.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/mutable_index_set.h>
#include <zrbasic/platform/foundation/notification_center.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>

#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <string>

namespace zr {
namespace {

constexpr NSInteger most = std::numeric_limits<NSInteger>::max();
constexpr NSInteger least = std::numeric_limits<NSInteger>::min();

class TableRowsSource : public NSObject {
    ZR_OBJECT(TableRowsSource, NSObject)
  public:
    NSInteger numberOfRowsInTableView(NSTableView*) {
        ++asked;
        return rows;
    }
    ZR_METHOD(numberOfRowsInTableView, "numberOfRowsInTableView:")
    id valueOf(NSTableView*, NSTableColumn* column, NSInteger row) {
        return value ? value : id(NSString::fromUtf8(column->identifier()->utf8() + std::to_string(row)));
    }
    ZR_METHOD(valueOf, "tableView:objectValueForTableColumn:row:")

    NSInteger rows = 0;
    id value;
    int asked = 0;
};

class TableRowsStyledSource : public TableRowsSource {
    ZR_OBJECT(TableRowsStyledSource, TableRowsSource)
  public:
    Ref<NSAttributedString> styledOf(NSTableView*, NSTableColumn*, NSInteger row) {
        return row == 0 ? make<NSAttributedString>(&NSAttributedString::initWithString, "styled"_ns) : nullptr;
    }
    ZR_METHOD(styledOf, "tableView:attributedValueForTableColumn:row:")
    Ref<NSColor> backgroundOf(NSTableView*, NSTableColumn*, NSInteger row) {
        return row == 1 ? NSColor::redColor() : nullptr;
    }
    ZR_METHOD(backgroundOf, "tableView:backgroundColorForTableColumn:row:")
};

class TableRowsDelegate : public NSObject {
    ZR_OBJECT(TableRowsDelegate, NSObject)
  public:
    void selected(NSNotification* notification) { note("selected", notification); }
    ZR_METHOD(selected, "tableViewSelectionDidChange:")
    void moved(NSNotification* notification) { note("moved", notification); }
    ZR_METHOD(moved, "tableViewColumnDidMove:")
    void resized(NSNotification* notification) { note("resized", notification); }
    ZR_METHOD(resized, "tableViewColumnDidResize:")
    void clicked(NSTableView* table) {
        log += "clicked " + std::to_string(table->clickedColumn()) + ',' + std::to_string(table->clickedRow()) + '|';
    }
    ZR_METHOD(clicked, "clicked:")
    void clickedTwice(NSTableView* table) {
        log += "twice " + std::to_string(table->clickedColumn()) + ',' + std::to_string(table->clickedRow()) + '|';
    }
    ZR_METHOD(clickedTwice, "clickedTwice:")

    std::string log;

  private:
    void note(const char* what, NSNotification* notification) {
        log += what;
        log += ' ' + notification->name()->utf8() + '|';
    }
};

class TableRows : public testing::Test {
  protected:
    TableRows() {
        table->addTableColumn(make<NSTableColumn>(&NSTableColumn::initWithIdentifier, "bid"_ns));
        table->addTableColumn(make<NSTableColumn>(&NSTableColumn::initWithIdentifier, "ask"_ns));
        table->setDelegate(delegate);
        source->rows = 5;
        table->setDataSource(source);
    }

    void select(std::initializer_list<NSUInteger> rows, bool extends = false) const {
        const Ref<NSMutableIndexSet> set = NSMutableIndexSet::indexSet();
        for (const NSUInteger row : rows) {
            set->addIndex(row);
        }
        table->selectRowIndexes_byExtendingSelection(set, extends);
    }

    [[nodiscard]] std::string selection() const {
        std::string text;
        table->selectedRowIndexes()->enumerateIndexesUsingBlock(
            [&text](NSUInteger row, bool&) { text += (text.empty() ? "" : ",") + std::to_string(row); });
        return text;
    }

    [[nodiscard]] std::string textAt(NSInteger column, NSInteger row) const {
        return table->contentAtColumn_row(column, row).text->utf8();
    }

    Ref<NSTableView> table = make<NSTableView>();
    Ref<TableRowsSource> source = make<TableRowsSource>();
    Ref<TableRowsDelegate> delegate = make<TableRowsDelegate>();
};

TEST_F(TableRows, areCountedByTheDataSource) {
    EXPECT_EQ(table->numberOfRows(), 5);
    source->rows = 7;
    EXPECT_EQ(table->numberOfRows(), 5);
    table->reloadData();
    EXPECT_EQ(table->numberOfRows(), 7);
    table->setDataSource(nullptr);
    EXPECT_EQ(table->numberOfRows(), 0);
    table->setDataSource(delegate);
    EXPECT_EQ(table->numberOfRows(), 0);
}

TEST_F(TableRows, areAtMostTenMillionAndNeverNegative) {
    struct Row {
        NSInteger answered;
        NSInteger is;
    };
    for (const Row row :
         {Row{-1, 0}, Row{least, 0}, Row{10'000'000, 10'000'000}, Row{10'000'001, 10'000'000}, Row{most, 10'000'000}}) {
        SCOPED_TRACE(row.answered);
        source->rows = row.answered;
        table->reloadData();
        EXPECT_EQ(table->numberOfRows(), row.is);
    }
}

TEST_F(TableRows, readTheDataSourceAgainOnlyWhenItIsAnotherOne) {
    const int before = source->asked;
    table->setDataSource(source);
    EXPECT_EQ(source->asked, before);
    const Ref<TableRowsSource> other = make<TableRowsSource>();
    other->rows = 2;
    table->setDataSource(other);
    EXPECT_EQ(table->numberOfRows(), 2);
    table->setDataSource(source);
    EXPECT_EQ(source->asked, before + 1);
}

TEST_F(TableRows, doNotKeepDataSourceOrDelegate) {
    const Weak<NSObject> gone(source.get());
    source = nullptr;
    EXPECT_FALSE(gone.lock());
    EXPECT_FALSE(table->dataSource());
    EXPECT_EQ(textAt(0, 0), "");
    delegate = nullptr;
    EXPECT_FALSE(table->delegate());
    select({1});
    EXPECT_EQ(selection(), "1");
}

TEST_F(TableRows, showWhatTheDataSourceHasForAColumnWhereverThatStands) {
    EXPECT_EQ(textAt(0, 3), "bid3");
    EXPECT_EQ(textAt(1, 0), "ask0");
    table->moveColumn_toColumn(1, 0);
    EXPECT_EQ(textAt(0, 3), "ask3");
    for (const NSInteger nowhere : {NSInteger{-1}, NSInteger{5}, most, least}) {
        SCOPED_TRACE(nowhere);
        EXPECT_EQ(textAt(0, nowhere), "");
        EXPECT_EQ(textAt(nowhere, 0), "");
    }
}

TEST_F(TableRows, showAnyValueAsText) {
    struct Row {
        const char* name;
        id value;
        const char* text;
    };
    const Row rows[] = {
        {"string", "x"_ns, "x"},
        {"number", box(12.5), "12.5"},
        {"null object", NSNull::null(), ""},
        {"styled", make<NSAttributedString>(&NSAttributedString::initWithString, "s"_ns), "s"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        source->value = row.value;
        EXPECT_EQ(textAt(0, 0), row.text);
    }
    EXPECT_TRUE(table->contentAtColumn_row(0, 0).styledText);
    source->value = id(dictionary({}));
    EXPECT_EQ(textAt(0, 0), dictionary({})->description()->utf8());
}

TEST_F(TableRows, preferAStyledTextAndHaveAColourBehindThem) {
    const Ref<TableRowsStyledSource> styled = make<TableRowsStyledSource>();
    styled->rows = 3;
    table->setDataSource(styled);
    EXPECT_EQ(textAt(0, 0), "styled");
    EXPECT_TRUE(table->contentAtColumn_row(0, 0).styledText);
    EXPECT_FALSE(table->contentAtColumn_row(0, 0).backgroundColor);
    EXPECT_EQ(textAt(0, 1), "bid1");
    EXPECT_FALSE(table->contentAtColumn_row(0, 1).styledText);
    EXPECT_TRUE(table->contentAtColumn_row(0, 1).backgroundColor->isEqual(NSColor::redColor()));
}

TEST_F(TableRows, haveNoneSelectedAtFirst) {
    EXPECT_EQ(table->selectedRow(), -1);
    EXPECT_EQ(table->numberOfSelectedRows(), 0);
    EXPECT_FALSE(table->isRowSelected(0));
    EXPECT_TRUE(table->allowsEmptySelection());
    EXPECT_FALSE(table->allowsMultipleSelection());
    EXPECT_EQ(delegate->log, "");
}

TEST_F(TableRows, areSelectedOneAtATime) {
    select({3});
    EXPECT_EQ(selection(), "3");
    EXPECT_EQ(table->selectedRow(), 3);
    select({4, 1, 2});
    EXPECT_EQ(selection(), "1");
    select({2}, true);
    EXPECT_EQ(selection(), "2");
    select({}, true);
    EXPECT_EQ(selection(), "2");
    select({99}, true);
    EXPECT_EQ(selection(), "2");
    select({99});
    EXPECT_EQ(selection(), "");
}

TEST_F(TableRows, areSelectedTogetherWhereThatIsAllowed) {
    table->setAllowsMultipleSelection(true);
    select({1, 3, 99});
    EXPECT_EQ(selection(), "1,3");
    EXPECT_EQ(table->selectedRow(), 3);
    EXPECT_EQ(table->numberOfSelectedRows(), 2);
    select({0, 3}, true);
    EXPECT_EQ(selection(), "0,1,3");
    EXPECT_TRUE(table->isRowSelected(1));
    EXPECT_FALSE(table->isRowSelected(2));
    EXPECT_FALSE(table->isRowSelected(-1));
    table->setAllowsMultipleSelection(false);
    EXPECT_EQ(selection(), "0");
    table->selectRowIndexes_byExtendingSelection(nullptr, false);
    EXPECT_EQ(selection(), "");
}

TEST_F(TableRows, tellOfEachChangeOfTheSelectionOnce) {
    int heard = 0;
    const id listening = NSNotificationCenter::defaultCenter()->addObserverForName_object_usingBlock(
        NSTableViewSelectionDidChangeNotification(), table, [&heard](NSNotification*) { ++heard; });
    select({3});
    select({3});
    select({3}, true);
    table->setAllowsMultipleSelection(true);
    EXPECT_EQ(delegate->log, "selected NSTableViewSelectionDidChangeNotification|");
    EXPECT_EQ(heard, 1);
    table->deselectAll(nullptr);
    table->deselectAll(nullptr);
    EXPECT_EQ(heard, 2);
    NSNotificationCenter::defaultCenter()->removeObserver(listening);
}

TEST_F(TableRows, leaveTheSelectionWhenTheyAreGone) {
    table->setAllowsMultipleSelection(true);
    select({1, 4});
    delegate->log.clear();
    source->rows = 3;
    table->reloadData();
    EXPECT_EQ(selection(), "1");
    EXPECT_EQ(delegate->log, "selected NSTableViewSelectionDidChangeNotification|");
    source->rows = 5;
    table->reloadData();
    EXPECT_EQ(selection(), "1");
    table->setDataSource(nullptr);
    EXPECT_EQ(selection(), "");
}

TEST_F(TableRows, haveOneSelectedWhereThereMustBeOne) {
    table->setAllowsEmptySelection(false);
    EXPECT_EQ(selection(), "0");
    select({3});
    table->deselectAll(nullptr);
    EXPECT_EQ(selection(), "3");
    table->userDidSelectRows(NSIndexSet::indexSet());
    EXPECT_EQ(selection(), "3");
    source->rows = 2;
    table->reloadData();
    EXPECT_EQ(selection(), "0");
    source->rows = 0;
    table->reloadData();
    EXPECT_EQ(selection(), "");
}

TEST_F(TableRows, canHaveNoneSelectedByTheProgramEvenWhereUsersMustSelectOne) {
    table->setAllowsEmptySelection(false);
    select({});
    EXPECT_EQ(selection(), "");
    table->userDidSelectRows(nullptr);
    EXPECT_EQ(selection(), "0");
}

TEST_F(TableRows, sendActionsForClicks) {
    table->setTarget(delegate);
    table->userDidClick(1, 2, false);
    EXPECT_EQ(delegate->log, "");
    table->setAction("clicked:"_sel);
    table->setDoubleAction("clickedTwice:"_sel);
    table->userDidClick(1, 2, false);
    table->userDidClick(0, 3, true);
    EXPECT_EQ(delegate->log, "clicked 1,2|twice 0,3|");
    EXPECT_EQ(table->clickedRow(), -1);
    EXPECT_EQ(table->clickedColumn(), -1);
}

TEST_F(TableRows, areSeventeenPointsHighUnlessSetAndAtLeastOne) {
    EXPECT_EQ(table->rowHeight(), 17.0);
    table->setRowHeight(20.25);
    EXPECT_EQ(table->rowHeight(), 20.25);
    for (const double bad : {0.0, -5.0, std::numeric_limits<double>::quiet_NaN()}) {
        SCOPED_TRACE(bad);
        table->setRowHeight(bad);
        EXPECT_EQ(table->rowHeight(), 1.0);
    }
}

TEST_F(TableRows, takeReloadsAndScrollsThatNobodySees) {
    table->reloadDataForRowIndexes_columnIndexes(nullptr, nullptr);
    table->reloadDataForRowIndexes_columnIndexes(NSIndexSet::indexSetWithIndex(99), NSIndexSet::indexSetWithIndex(99));
    table->scrollRowToVisible(most);
    table->scrollRowToVisible(least);
    EXPECT_EQ(table->numberOfRows(), 5);
    EXPECT_EQ(selection(), "");
}

TEST_F(TableRows, answerMessages) {
    send(table, "setAllowsMultipleSelection:"_sel, true);
    send(table, "selectRowIndexes:byExtendingSelection:"_sel, NSIndexSet::indexSetWithIndex(2), false);
    EXPECT_EQ(send<NSInteger>(table, "selectedRow"_sel), 2);
    EXPECT_TRUE(send<bool>(table, "isRowSelected:"_sel, 2));
    send(table, "deselectAll:"_sel, NSNull::null());
    EXPECT_EQ(send<NSInteger>(table, "numberOfSelectedRows"_sel), 0);
    source->rows = 9;
    send(table, "reloadData"_sel);
    EXPECT_EQ(send<NSInteger>(table, "numberOfRows"_sel), 9);
    send(table, "reloadDataForRowIndexes:columnIndexes:"_sel, NSNull::null(), NSNull::null());
    send(table, "selectRowIndexes:byExtendingSelection:"_sel, NSNull::null(), false);
    EXPECT_EQ(selection(), "");
}

TEST_F(TableRows, tellOfColumnsThatMoveAndResize) {
    std::string heard;
    const auto listen = [&heard](NSNotification* notification) {
        const Ref<NSDictionary> info = notification->userInfo();
        for (const Ref<NSString>& key : {"NSOldColumn"_ns, "NSNewColumn"_ns, "NSOldWidth"_ns}) {
            const id value = info->objectForKey(key);
            heard += value ? key->utf8() + ' ' + value->description()->utf8() + ' ' : "";
        }
        const id column = info->objectForKey("NSTableColumn"_ns);
        heard += column ? cast<NSTableColumn>(column.get())->identifier()->utf8() + '|' : "|";
    };
    const auto center = NSNotificationCenter::defaultCenter();
    const id moves =
        center->addObserverForName_object_usingBlock(NSTableViewColumnDidMoveNotification(), table, listen);
    const id widths =
        center->addObserverForName_object_usingBlock(NSTableViewColumnDidResizeNotification(), table, listen);
    table->moveColumn_toColumn(1, 0);
    table->moveColumn_toColumn(1, 1);
    table->moveColumn_toColumn(0, 7);
    const Ref<NSTableColumn> ask = table->tableColumnWithIdentifier("ask"_ns);
    ask->setWidth(55.5);
    ask->setWidth(55.5);
    ask->setMinWidth(60);
    center->removeObserver(moves);
    center->removeObserver(widths);
    EXPECT_EQ(heard, "NSOldColumn 1 NSNewColumn 0 |NSOldWidth 100 ask|NSOldWidth 55.5 ask|");
    EXPECT_EQ(delegate->log,
              "moved NSTableViewColumnDidMoveNotification|"
              "resized NSTableViewColumnDidResizeNotification|"
              "resized NSTableViewColumnDidResizeNotification|");
}

TEST_F(TableRows, areAlignedByTheirColumn) {
    const Ref<NSTableColumn> bid = table->tableColumnWithIdentifier("bid"_ns);
    EXPECT_EQ(bid->alignment(), NSTextAlignmentNatural);
    send(bid, "setAlignment:"_sel, static_cast<NSInteger>(NSTextAlignmentRight));
    EXPECT_EQ(bid->alignment(), NSTextAlignmentRight);
    EXPECT_EQ(table->tableColumnWithIdentifier("ask"_ns)->alignment(), NSTextAlignmentNatural);
}

} // namespace
} // namespace zr
