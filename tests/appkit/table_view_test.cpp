#include <zrbasic/platform/appkit/table_view.h>

#include <zrbasic/platform/foundation/key_value_coding.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <limits>

namespace zr {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr NSInteger most = std::numeric_limits<NSInteger>::max();
constexpr NSInteger least = std::numeric_limits<NSInteger>::min();

Ref<NSTableColumn> column(NSString* identifier) {
    return make<NSTableColumn>(&NSTableColumn::initWithIdentifier, identifier);
}

Ref<NSTableView> table(std::initializer_list<Ref<NSString>> identifiers) {
    const Ref<NSTableView> made = make<NSTableView>();
    for (const Ref<NSString>& identifier : identifiers) {
        made->addTableColumn(column(identifier));
    }
    return made;
}

std::string order(NSTableView* view) {
    std::string text;
    const Ref<NSArray> columns = view->tableColumns();
    for (const id& element : columns->elements()) {
        const Ref<NSString> identifier = cast<NSTableColumn>(element)->identifier();
        text += (text.empty() ? "" : " ") + (identifier ? identifier->utf8() : "-");
    }
    return text;
}

TEST(TableColumn, startsVisibleAndAHundredPointsWide) {
    const Ref<NSTableColumn> fresh = make<NSTableColumn>();
    EXPECT_FALSE(fresh->identifier());
    EXPECT_EQ(fresh->title()->utf8(), "");
    EXPECT_EQ(fresh->width(), 100.0);
    EXPECT_EQ(fresh->minWidth(), 10.0);
    EXPECT_EQ(fresh->maxWidth(), 10000.0);
    EXPECT_FALSE(fresh->isHidden());
    EXPECT_FALSE(fresh->tableView());
}

TEST(TableColumn, copiesItsTexts) {
    const Ref<NSMutableString> name = NSMutableString::stringWithString("bid"_ns);
    const Ref<NSTableColumn> one = column(name);
    one->setTitle(name);
    name->appendString("der"_ns);
    EXPECT_EQ(one->identifier()->utf8(), "bid");
    EXPECT_EQ(one->title()->utf8(), "bid");
    one->setIdentifier(nullptr);
    one->setTitle(nullptr);
    EXPECT_FALSE(one->identifier());
    EXPECT_EQ(one->title()->utf8(), "");
    EXPECT_FALSE(column(nullptr)->identifier());
}

TEST(TableColumn, staysWithinTheLimitsOfItsWidth) {
    struct Row {
        double set;
        double is;
    };
    const Row rows[] = {{10, 10},         {9.9, 10},      {0, 10},          {-5, 10},          {-infinity, 10},
                        {notANumber, 10}, {10000, 10000}, {10000.5, 10000}, {infinity, 10000}, {55.5, 55.5}};
    const Ref<NSTableColumn> one = column("bid"_ns);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.set);
        one->setWidth(77);
        one->setWidth(row.set);
        EXPECT_EQ(one->width(), row.is);
    }
}

TEST(TableColumn, followsItsLimits) {
    const Ref<NSTableColumn> one = column("bid"_ns);
    one->setMinWidth(150);
    EXPECT_EQ(one->width(), 150.0);
    one->setMinWidth(50);
    one->setMaxWidth(120);
    EXPECT_EQ(one->width(), 120.0);
    one->setMaxWidth(20);
    EXPECT_EQ(one->width(), 50.0);
    EXPECT_EQ(one->maxWidth(), 20.0);
    one->setMaxWidth(infinity);
    one->setWidth(1e9);
    EXPECT_EQ(one->width(), 1e9);
    for (const double bad : {-1.0, -infinity, notANumber}) {
        SCOPED_TRACE(bad);
        one->setMinWidth(bad);
        EXPECT_EQ(one->minWidth(), 0.0);
        one->setMaxWidth(bad);
        EXPECT_EQ(one->maxWidth(), 0.0);
        EXPECT_EQ(one->width(), 0.0);
    }
}

TEST(TableColumn, isReadAndSetByName) {
    const Ref<NSTableColumn> one = column("bid"_ns);
    setValue_forKey(one, box(42.5), "width"_ns);
    setValue_forKey(one, box(true), "hidden"_ns);
    EXPECT_EQ(one->width(), 42.5);
    EXPECT_TRUE(one->isHidden());
    EXPECT_TRUE(valueForKey(one, "hidden"_ns)->isEqual(box(true)));
    setValue_forKey(one, NSNull::null(), "identifier"_ns);
    EXPECT_FALSE(one->identifier());
    send(one, "setWidth:"_sel, 7);
    EXPECT_EQ(one->width(), 10.0);
    EXPECT_EQ(send<double>(one, "maxWidth"_sel), 10000.0);
}

TEST(TableView, keepsColumnsInTheOrderAdded) {
    const Ref<NSTableView> view = table({"bid"_ns, "ask"_ns});
    const Ref<NSArray> before = view->tableColumns();
    view->addTableColumn(column(nullptr));
    EXPECT_EQ(order(view), "bid ask -");
    EXPECT_EQ(view->numberOfColumns(), 3);
    EXPECT_EQ(before->count(), 2U);
    view->addTableColumn(nullptr);
    view->addTableColumn(view->tableColumnWithIdentifier("bid"_ns));
    EXPECT_EQ(order(view), "bid ask -");
    EXPECT_EQ(make<NSTableView>()->numberOfColumns(), 0);
    EXPECT_EQ(make<NSTableView>()->tableColumns()->count(), 0U);
}

TEST(TableView, givesUpAColumnToAnotherTable) {
    const Ref<NSTableView> first = table({"bid"_ns, "ask"_ns});
    const Ref<NSTableView> second = table({"last"_ns});
    // Nobody but the table holds the column meanwhile.
    second->addTableColumn(cast<NSTableColumn>(first->tableColumns()->objectAtIndex(0)));
    EXPECT_EQ(order(first), "ask");
    EXPECT_EQ(order(second), "last bid");
    EXPECT_EQ(second->tableColumnWithIdentifier("bid"_ns)->tableView(), second);
}

TEST(TableView, removesColumns) {
    const Ref<NSTableView> view = table({"bid"_ns, "ask"_ns, "last"_ns});
    const Ref<NSTableColumn> ask = view->tableColumnWithIdentifier("ask"_ns);
    view->removeTableColumn(ask);
    EXPECT_EQ(order(view), "bid last");
    EXPECT_FALSE(ask->tableView());
    view->removeTableColumn(ask);
    view->removeTableColumn(nullptr);
    view->removeTableColumn(column("bid"_ns));
    const Ref<NSTableView> other = table({"bid"_ns});
    view->removeTableColumn(other->tableColumnWithIdentifier("bid"_ns));
    EXPECT_EQ(order(view), "bid last");
    EXPECT_EQ(order(other), "bid");
    view->addTableColumn(ask);
    EXPECT_EQ(order(view), "bid last ask");
}

TEST(TableView, isForgottenByItsColumnsWhenItGoes) {
    const Ref<NSTableColumn> one = column("bid"_ns);
    {
        const Ref<NSTableView> view = make<NSTableView>();
        view->addTableColumn(one);
        EXPECT_EQ(one->tableView(), view);
    }
    EXPECT_FALSE(one->tableView());
    const Ref<NSTableView> next = make<NSTableView>();
    next->addTableColumn(one);
    EXPECT_EQ(order(next), "bid");
}

TEST(TableView, movesColumns) {
    struct Row {
        NSInteger from;
        NSInteger to;
        const char* order;
    };
    const Row rows[] = {{0, 0, "a b c d"}, {0, 1, "b a c d"}, {0, 3, "b c d a"},
                        {3, 0, "d a b c"}, {2, 1, "a c b d"}, {1, 2, "a c b d"}};
    for (const Row& row : rows) {
        SCOPED_TRACE(std::to_string(row.from) + " to " + std::to_string(row.to));
        const Ref<NSTableView> view = table({"a"_ns, "b"_ns, "c"_ns, "d"_ns});
        view->moveColumn_toColumn(row.from, row.to);
        EXPECT_EQ(order(view), row.order);
    }
}

TEST(TableView, movesNothingFromOrToNowhere) {
    const Ref<NSTableView> view = table({"a"_ns, "b"_ns});
    for (const NSInteger nowhere : {NSInteger{-1}, NSInteger{2}, most, least}) {
        SCOPED_TRACE(nowhere);
        view->moveColumn_toColumn(nowhere, 0);
        view->moveColumn_toColumn(0, nowhere);
        view->moveColumn_toColumn(nowhere, nowhere);
        EXPECT_EQ(order(view), "a b");
    }
    const Ref<NSTableView> empty = make<NSTableView>();
    empty->moveColumn_toColumn(0, 0);
    EXPECT_EQ(order(empty), "");
}

TEST(TableView, findsTheFirstColumnOfAnIdentifier) {
    const Ref<NSTableView> view = table({nullptr, "a"_ns, "b"_ns, "a"_ns});
    EXPECT_EQ(view->columnWithIdentifier("a"_ns), 1);
    EXPECT_EQ(view->columnWithIdentifier(NSMutableString::stringWithString("b"_ns)), 2);
    EXPECT_EQ(view->columnWithIdentifier("A"_ns), -1);
    EXPECT_EQ(view->columnWithIdentifier(nullptr), -1);
    EXPECT_EQ(view->tableColumnWithIdentifier("a"_ns), view->tableColumns()->objectAtIndex(1));
    EXPECT_FALSE(view->tableColumnWithIdentifier("c"_ns));
    EXPECT_FALSE(view->tableColumnWithIdentifier(nullptr));
}

TEST(TableView, answersMessages) {
    const Ref<NSTableView> view = table({"a"_ns, "b"_ns});
    send(view, "moveColumn:toColumn:"_sel, 1, 0);
    EXPECT_EQ(order(view), "b a");
    EXPECT_EQ(send<NSInteger>(view, "numberOfColumns"_sel), 2);
    EXPECT_EQ(send<NSInteger>(view, "columnWithIdentifier:"_sel, "a"_ns), 1);
    EXPECT_EQ(send<NSInteger>(view, "columnWithIdentifier:"_sel, NSNull::null()), -1);
    send(view, "addTableColumn:"_sel, NSNull::null());
    send(view, "removeTableColumn:"_sel, view->tableColumns()->objectAtIndex(0));
    EXPECT_EQ(order(view), "a");
}

RC_GTEST_PROP(TableView, movesBackWhatItMoved, ()) {
    const Ref<NSTableView> view = table({"a"_ns, "b"_ns, "c"_ns, "d"_ns, "e"_ns});
    const auto from = *rc::gen::inRange<NSInteger>(0, 5);
    const auto to = *rc::gen::inRange<NSInteger>(0, 5);
    const id moved = view->tableColumns()->objectAtIndex(static_cast<NSUInteger>(from));
    view->moveColumn_toColumn(from, to);
    RC_ASSERT(view->tableColumns()->objectAtIndex(static_cast<NSUInteger>(to)) == moved);
    view->moveColumn_toColumn(to, from);
    RC_ASSERT(order(view) == "a b c d e");
}

} // namespace
} // namespace zr
