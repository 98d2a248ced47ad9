#include <zrbasic/model/table_column_layout.h>

#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/key_value_coding.h>
#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>

#include "table_layout_testing.h"

#include <tests/vectors/vectors.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <algorithm>
#include <limits>
#include <sstream>

namespace zr {
namespace {

using test::layout;
using test::order;
using test::TableColumnLayout;

Ref<ZRTableColumnData> record(NSString* identifier, double width = 100, bool hidden = false) {
    Ref<ZRTableColumnData> made = make<ZRTableColumnData>();
    made->setIdentifier(identifier);
    made->setWidth(width);
    made->setHidden(hidden);
    return made;
}

Ref<NSDictionary> form(NSObject* identifier, NSObject* width, NSObject* hidden) {
    return dictionary({{"identifier"_ns, id(identifier)}, {"width"_ns, id(width)}, {"hidden"_ns, id(hidden)}});
}

std::string text(ZRTableColumnData* data) {
    if (!data) {
        return "null";
    }
    const Ref<NSString> identifier = data->identifier();
    std::ostringstream out;
    out << (identifier ? identifier->utf8() : "-") << ' ' << data->width() << (data->isHidden() ? " hidden" : "");
    return out.str();
}

std::string made(NSObject* identifier, NSObject* width, NSObject* hidden) {
    return text(ZRTableColumnData::instanceWithKeyValues(form(identifier, width, hidden)));
}

TEST(TableColumnData, startsEmpty) {
    const Ref<ZRTableColumnData> data = make<ZRTableColumnData>();
    EXPECT_FALSE(data->identifier());
    EXPECT_EQ(data->width(), 0.0);
    EXPECT_FALSE(data->isHidden());
    const Ref<NSMutableString> name = NSMutableString::stringWithString("Bid"_ns);
    data->setIdentifier(name);
    name->appendString("der"_ns);
    EXPECT_EQ(text(data), "Bid 0");
}

TEST(TableColumnData, isMadeOfItsDictionaryForm) {
    EXPECT_EQ(made("Bid"_ns, box(120.5), box(true)), "Bid 120.5 hidden");
    EXPECT_EQ(made(" Bid "_ns, box(7), box(0)), " Bid  7");
    EXPECT_EQ(made("Bid"_ns, box(true), box(2.5)), "Bid 1 hidden");
    EXPECT_EQ(made("Bid"_ns, box(-1e300), box(false)), "Bid -1e+300");
    EXPECT_EQ(made("\n"_ns, box(1), box(false)), "\n 1");
}

TEST(TableColumnData, isNotMadeOfAnythingElse) {
    EXPECT_EQ(text(ZRTableColumnData::instanceWithKeyValues(nullptr)), "null");
    EXPECT_EQ(text(ZRTableColumnData::instanceWithKeyValues(NSDictionary::dictionary())), "null");
    EXPECT_EQ(made(""_ns, box(1), box(true)), "null");
    EXPECT_EQ(made(" \t"_ns, box(1), box(true)), "null");
    EXPECT_EQ(made(NSNull::null(), box(1), box(true)), "null");
    EXPECT_EQ(made(box(5), box(1), box(true)), "null");
    EXPECT_EQ(made("Bid"_ns, "120"_ns, box(true)), "null");
    EXPECT_EQ(made("Bid"_ns, box(1), "true"_ns), "null");
    EXPECT_EQ(made("Bid"_ns, NSNull::null(), box(true)), "null");
    EXPECT_EQ(made("Bid"_ns, box(1), NSNull::null()), "null");
    EXPECT_EQ(text(ZRTableColumnData::instanceWithKeyValues(dictionary({{"identifier"_ns, "Bid"_ns}, //
                                                                        {"width"_ns, box(1)}}))),
              "null");
    EXPECT_EQ(text(ZRTableColumnData::instanceWithKeyValues(
                  dictionary({{"Identifier"_ns, "Bid"_ns}, {"width"_ns, box(1)}, {"hidden"_ns, box(true)}}))),
              "null");
}

TEST(TableColumnData, hasADictionaryForm) {
    const Ref<ZRTableColumnData> data = record("Bid"_ns, 120.5, true);
    const Ref<NSDictionary> keyValues = data->cachedKeyValues();
    EXPECT_TRUE(keyValues->isEqual(form("Bid"_ns, box(120.5), box(true))));
    EXPECT_NE(data->cachedKeyValues(), keyValues);
    EXPECT_TRUE(make<ZRTableColumnData>()->cachedKeyValues()->isEqual(
        dictionary({{"width"_ns, box(0.0)}, {"hidden"_ns, box(false)}})));
    setValue_forKey(data, NSNull::null(), "identifier"_ns);
    EXPECT_EQ(data->cachedKeyValues()->count(), 2U);
    EXPECT_EQ(text(ZRTableColumnData::instanceWithKeyValues(keyValues)), "Bid 120.5 hidden");
}

TEST(TableColumnData, answersMessages) {
    NSObject* const records = ZRTableColumnData::classObject();
    const Ref<NSDictionary> keyValues = form("Bid"_ns, box(120.5), box(true));
    const auto data = send<Ref<ZRTableColumnData>>(records, "instanceWithKeyValues:"_sel, keyValues);
    EXPECT_EQ(text(data), "Bid 120.5 hidden");
    EXPECT_TRUE(send<Ref<NSDictionary>>(data, "cachedKeyValues"_sel)->isEqual(keyValues));
    EXPECT_FALSE(send<id>(records, "instanceWithKeyValues:"_sel, NSNull::null()));
    setValue_forKey(data, box(false), "hidden"_ns);
    EXPECT_FALSE(send<bool>(data, "isHidden"_sel));
}

TEST_P(TableColumnLayout, isReadFromTheTableInItsOrder) {
    const Ref<NSTableView> view = table({"Bid", "-", "Ask"});
    columnAt(view, 0)->setWidth(50);
    columnAt(view, 2)->setHidden(true);
    view->moveColumn_toColumn(2, 0);
    const Ref<NSArray> datas = arrangedColumnDatas(view);
    ASSERT_EQ(datas->count(), 3U);
    EXPECT_EQ(text(cast<ZRTableColumnData>(datas->objectAtIndex(0))), "Ask 100 hidden");
    EXPECT_EQ(text(cast<ZRTableColumnData>(datas->objectAtIndex(1))), "Bid 50");
    EXPECT_EQ(text(cast<ZRTableColumnData>(datas->objectAtIndex(2))), "- 100");
    EXPECT_EQ(arrangedColumnDatas(table({}))->count(), 0U);
}

TEST_P(TableColumnLayout, isReadAsDictionaries) {
    const Ref<NSTableView> view = table({"-", "Bid"});
    const Ref<NSArray> infos = arrangedColumnInfos(view);
    EXPECT_TRUE(infos->isEqual(array(
        {dictionary({{"width"_ns, box(100.0)}, {"hidden"_ns, box(false)}}), form("Bid"_ns, box(100.0), box(false))})));
    EXPECT_EQ(arrangedColumnInfos(table({}))->count(), 0U);
}

TEST_P(TableColumnLayout, comesBackAsItWas) {
    const Ref<NSTableView> before = prices();
    before->moveColumn_toColumn(2, 0);
    columnAt(before, 1)->setWidth(55);
    columnAt(before, 2)->setHidden(true);
    const Ref<NSTableView> after = prices();
    rearrangedWithColumnKeyValues(after, arrangedColumnInfos(before));
    EXPECT_EQ(layout(after), "Last 100, Bid 55, Ask 100 hidden");
    const Ref<NSTableView> again = prices();
    rearrangedWithColumnDatas(again, arrangedColumnDatas(before));
    EXPECT_EQ(layout(again), layout(before));
}

TEST_P(TableColumnLayout, putsEachColumnInItsRecordsPlace) {
    const Ref<NSTableView> view = prices();
    rearrangedWithColumnDatas(view, array({record("Last"_ns, 30), record("Bid"_ns, 40, true), record("Ask"_ns, 50)}));
    EXPECT_EQ(layout(view), "Last 30, Bid 40 hidden, Ask 50");
    rearrangedWithColumnDatas(view, array({record("Last"_ns, 31), record("Bid"_ns, 41), record("Ask"_ns, 51, true)}));
    EXPECT_EQ(layout(view), "Last 31, Bid 41, Ask 51 hidden");
}

TEST_P(TableColumnLayout, leavesThePlaceOfARecordWhoseColumnIsGone) {
    const Ref<NSTableView> view = prices();
    rearrangedWithColumnDatas(view, array({record("Volume"_ns, 5), record("Last"_ns, 30)}));
    EXPECT_EQ(layout(view), "Bid 100, Last 30, Ask 100");
    const Ref<NSTableView> other = prices();
    rearrangedWithColumnDatas(other, array({record(nullptr, 5), id(NSNull::null()), "Ask"_ns, record("Bid"_ns, 30)}));
    EXPECT_EQ(layout(other), "Bid 100, Ask 100, Last 100");
}

TEST_P(TableColumnLayout, doesNotLookBeforeTheRecordsPlace) {
    const Ref<NSTableView> view = prices();
    rearrangedWithColumnDatas(view, array({record("Volume"_ns), record("Bid"_ns, 30), record("Ask"_ns, 40)}));
    // Bid keeps its place and its width, as it stands before its record's place.
    EXPECT_EQ(layout(view), "Bid 100, Ask 100, Last 100");
    rearrangedWithColumnDatas(view, array({record("Last"_ns, 30), record("Last"_ns, 40)}));
    EXPECT_EQ(layout(view), "Last 30, Bid 100, Ask 100");
}

TEST_P(TableColumnLayout, leavesColumnsWithoutARecordAtTheEnd) {
    const Ref<NSTableView> view = prices();
    columnAt(view, 2)->setWidth(77);
    columnAt(view, 2)->setHidden(true);
    rearrangedWithColumnDatas(view, array({record("Bid"_ns, 30), record("Ask"_ns, 40)}));
    EXPECT_EQ(layout(view), "Bid 30, Ask 40, Last 77 hidden");
    const Ref<NSTableView> wide = table({"a", "b", "-", "c", "d"});
    rearrangedWithColumnDatas(wide, array({record("d"_ns), record("b"_ns)}));
    EXPECT_EQ(order(wide), "d,b,a,-,c");
}

TEST_P(TableColumnLayout, takesTheFirstOfColumnsThatShareAnIdentifier) {
    const Ref<NSTableView> view = table({"a", "b", "b", "b"});
    rearrangedWithColumnDatas(view, array({record("b"_ns, 20), record("b"_ns, 30)}));
    EXPECT_EQ(layout(view), "b 20, b 30, a 100, b 100");
}

TEST_P(TableColumnLayout, ignoresRecordsBeyondTheColumns) {
    const Ref<NSTableView> view = prices();
    const Ref<NSMutableArray> records = NSMutableArray::array();
    for (int i = 0; i < 2000; ++i) {
        records->addObject(record("Volume"_ns));
    }
    records->addObject(record("Last"_ns, 30));
    rearrangedWithColumnDatas(view, records);
    EXPECT_EQ(layout(view), "Bid 100, Ask 100, Last 100");
}

TEST_P(TableColumnLayout, keepsWidthsWithinTheColumnsLimits) {
    const Ref<NSTableView> view = prices();
    const double notANumber = std::numeric_limits<double>::quiet_NaN();
    rearrangedWithColumnDatas(view,
                              array({record("Bid"_ns, -5), record("Ask"_ns, 1e300), record("Last"_ns, notANumber)}));
    EXPECT_EQ(layout(view), "Bid 10, Ask 10000, Last 10");
}

TEST_P(TableColumnLayout, dropsDictionariesThatAreNoProperForms) {
    const Ref<NSTableView> view = prices();
    rearrangedWithColumnKeyValues(view, array({
                                            form(" "_ns, box(30), box(false)),
                                            form("Bid"_ns, "120"_ns, box(false)),
                                            id(NSNull::null()),
                                            "Ask"_ns,
                                            form("Last"_ns, box(30), box(true)),
                                            form("Volume"_ns, box(30), box(true)),
                                            form("Bid"_ns, box(40), box(0)),
                                        }));
    // The dropped ones take no place; Volume, which is proper but gone, takes the second one.
    EXPECT_EQ(layout(view), "Last 30 hidden, Bid 100, Ask 100");
}

TEST_P(TableColumnLayout, doesNothingWithoutRecordsOrColumns) {
    const Ref<NSTableView> view = prices();
    rearrangedWithColumnDatas(view, nullptr);
    rearrangedWithColumnDatas(view, NSArray::array());
    rearrangedWithColumnKeyValues(view, nullptr);
    rearrangedWithColumnKeyValues(view, NSArray::array());
    rearrangedWithColumnIdentifiers(view, nullptr);
    rearrangedWithColumnIdentifiers(view, NSArray::array());
    EXPECT_EQ(layout(view), "Bid 100, Ask 100, Last 100");
    const Ref<NSTableView> empty = table({});
    rearrangedWithColumnDatas(empty, array({record("Bid"_ns)}));
    rearrangedWithColumnIdentifiers(empty, array({"Bid"_ns}));
    EXPECT_EQ(empty->numberOfColumns(), 0);
}

TEST_P(TableColumnLayout, comparesARecordWithAColumn) {
    const Ref<NSTableView> view = table({"Bid", "-"});
    const Ref<ZRTableColumnData> bid = record("Bid"_ns, 42, true);
    EXPECT_TRUE(comparedColumnData_andIndex(view, bid, 0));
    EXPECT_EQ(layout(view), "Bid 42 hidden, - 100");
    EXPECT_FALSE(comparedColumnData_andIndex(view, bid, 1));
    EXPECT_FALSE(comparedColumnData_andIndex(view, record("bid"_ns), 0));
    EXPECT_FALSE(comparedColumnData_andIndex(view, record(nullptr), 0));
    EXPECT_FALSE(comparedColumnData_andIndex(view, record(nullptr), 1));
    EXPECT_FALSE(comparedColumnData_andIndex(view, nullptr, 0));
    for (const NSInteger nowhere :
         {NSInteger{-1}, NSInteger{2}, std::numeric_limits<NSInteger>::max(), std::numeric_limits<NSInteger>::min()}) {
        SCOPED_TRACE(nowhere);
        EXPECT_FALSE(comparedColumnData_andIndex(view, bid, nowhere));
    }
    EXPECT_EQ(layout(view), "Bid 42 hidden, - 100");
}

TEST_P(TableColumnLayout, movesTheFirstColumnWhereAnIdentifierDiffers) {
    const Ref<NSTableView> view = prices();
    rearrangedWithColumnIdentifiers(view, array({"Last"_ns, "Bid"_ns, "Ask"_ns}));
    EXPECT_EQ(layout(view), "Bid 100, Last 100, Ask 100");
    const Ref<NSTableView> alike = prices();
    rearrangedWithColumnIdentifiers(alike, array({"Bid"_ns, "Ask"_ns, "Last"_ns, "Volume"_ns}));
    EXPECT_EQ(order(alike), "Bid,Ask,Last");
    const Ref<NSTableView> last = prices();
    rearrangedWithColumnIdentifiers(last, array({"Bid"_ns, "Ask"_ns, "Volume"_ns}));
    EXPECT_EQ(order(last), "Ask,Last,Bid");
    columnAt(last, 0)->setHidden(true);
    rearrangedWithColumnIdentifiers(last, array({"Last"_ns, "Last"_ns}));
    EXPECT_EQ(layout(last), "Ask 100 hidden, Last 100, Bid 100");
}

TEST_P(TableColumnLayout, takesAnythingButTextForADifferentIdentifier) {
    const Ref<NSTableView> view = table({"-", "1", "b"});
    rearrangedWithColumnIdentifiers(view, array({id(NSNull::null()), box(1), record("b"_ns)}));
    // Nothing at the first place, the first column to the second, then to the third.
    EXPECT_EQ(order(view), "-,b,1");
}

TEST_P(TableColumnLayout, hidesTheColumnsListed) {
    const Ref<NSTableView> view = table({"Bid", "Ask", "-", "Last"});
    hideColumnsWithIdentifiers(view, array({"Ask"_ns, "Volume"_ns}));
    EXPECT_EQ(layout(view), "Bid 100, Ask 100 hidden, - 100, Last 100");
    hideColumnsWithIdentifiers(view, array({"Last"_ns, id(NSNull::null()), box(1)}));
    EXPECT_EQ(layout(view), "Bid 100, Ask 100 hidden, - 100, Last 100 hidden");
    hideColumnsWithIdentifiers(view, nullptr);
    hideColumnsWithIdentifiers(view, NSArray::array());
    EXPECT_EQ(layout(view), "Bid 100, Ask 100 hidden, - 100, Last 100 hidden");
}

TEST_P(TableColumnLayout, hidesTheColumnsListedOnly) {
    const Ref<NSTableView> view = table({"Bid", "Ask", "-", "Last"});
    columnAt(view, 0)->setHidden(true);
    columnAt(view, 2)->setHidden(true);
    onlyHideColumnsWithIdentifiers(view, array({"Ask"_ns, id(NSNull::null()), box(1)}));
    EXPECT_EQ(layout(view), "Bid 100, Ask 100 hidden, - 100, Last 100");
    onlyHideColumnsWithIdentifiers(view, NSArray::array());
    EXPECT_EQ(layout(view), "Bid 100, Ask 100, - 100, Last 100");
    hideColumnsWithIdentifiers(view, array({"Bid"_ns, "Last"_ns}));
    onlyHideColumnsWithIdentifiers(view, nullptr);
    EXPECT_EQ(layout(view), "Bid 100, Ask 100, - 100, Last 100");
}

TEST_P(TableColumnLayout, needsATable) {
    EXPECT_FALSE(arrangedColumnDatas(nullptr));
    EXPECT_FALSE(arrangedColumnInfos(nullptr));
    EXPECT_FALSE(comparedColumnData_andIndex(nullptr, record("Bid"_ns), 0));
    rearrangedWithColumnDatas(nullptr, array({record("Bid"_ns)}));
    rearrangedWithColumnKeyValues(nullptr, array({form("Bid"_ns, box(1), box(true))}));
    rearrangedWithColumnIdentifiers(nullptr, array({"Bid"_ns}));
    hideColumnsWithIdentifiers(nullptr, array({"Bid"_ns}));
    onlyHideColumnsWithIdentifiers(nullptr, array({"Bid"_ns}));
}

TEST_P(TableColumnLayout, isAppliedByMessages) {
    const Ref<NSTableView> view = prices();
    EXPECT_EQ(send<Ref<NSArray>>(view, "arrangedColumnDatas"_sel)->count(), 3U);
    const auto infos = send<Ref<NSArray>>(view, "arrangedColumnInfos"_sel);
    EXPECT_TRUE(send<bool>(view, "comparedColumnData:andIndex:"_sel, record("Bid"_ns, 42), 0));
    send(view, "rearrangedWithColumnDatas:"_sel, array({record("Last"_ns, 50)}));
    EXPECT_EQ(layout(view), "Last 50, Bid 42, Ask 100");
    send(view, "rearrangedWithColumnKeyValues:"_sel, infos);
    EXPECT_EQ(layout(view), "Bid 100, Ask 100, Last 100");
    send(view, "rearrangedWithColumnIdentifiers:"_sel, array({"Bid"_ns, "Last"_ns}));
    EXPECT_EQ(order(view), "Ask,Bid,Last");
    send(view, "hideColumnsWithIdentifiers:"_sel, array({"Bid"_ns}));
    send(view, "onlyHideColumnsWithIdentifiers:"_sel, NSNull::null());
    send(view, "rearrangedWithColumnDatas:"_sel, NSNull::null());
    EXPECT_EQ(layout(view), "Ask 100, Bid 100, Last 100");
}

std::vector<std::string> names(const std::string& list) {
    std::vector<std::string> result;
    std::istringstream cells(list);
    for (std::string name; std::getline(cells, name, ',');) {
        result.push_back(name);
    }
    return result;
}

TEST_P(TableColumnLayout, agreesWithAnIndependentTable) {
    const auto rows = test::vectorRows("table_layout");
    for (const auto& [line, field] : rows) {
        SCOPED_TRACE(line);
        ASSERT_EQ(field.size(), 4U);
        const Ref<NSMutableArray> records = NSMutableArray::array();
        const Ref<NSMutableArray> identifiers = NSMutableArray::array();
        for (const std::string& name : names(field[1])) {
            records->addObject(record(NSString::fromUtf8(name)));
            identifiers->addObject(NSString::fromUtf8(name));
        }
        const Ref<NSTableView> byRecords = table(names(field[0]));
        rearrangedWithColumnDatas(byRecords, records);
        EXPECT_EQ(order(byRecords), field[2]);
        const Ref<NSTableView> byIdentifiers = table(names(field[0]));
        rearrangedWithColumnIdentifiers(byIdentifiers, identifiers);
        EXPECT_EQ(order(byIdentifiers), field[3]);
    }
    EXPECT_GE(rows.size(), 300U);
}

std::vector<const NSObject*> sorted(NSTableView* view) {
    std::vector<const NSObject*> columns;
    const Ref<NSArray> list = view->tableColumns();
    for (const id& column : list->elements()) {
        columns.push_back(column.get());
    }
    std::sort(columns.begin(), columns.end());
    return columns;
}

TEST_P(TableColumnLayout, isAPermutationOfTheColumns) {
    EXPECT_TRUE(rc::check("both ways to reorder keep every column", [] {
        const auto name = rc::gen::element<std::string>("a", "b", "c", "d", "-");
        const Ref<NSTableView> view = table(*rc::gen::container<std::vector<std::string>>(name));
        const std::vector<const NSObject*> before = sorted(view);
        const Ref<NSMutableArray> records = NSMutableArray::array();
        const Ref<NSMutableArray> identifiers = NSMutableArray::array();
        for (const std::string& wanted : *rc::gen::container<std::vector<std::string>>(name)) {
            records->addObject(record(NSString::fromUtf8(wanted)));
            identifiers->addObject(NSString::fromUtf8(wanted));
        }
        rearrangedWithColumnDatas(view, records);
        RC_ASSERT(sorted(view) == before);
        rearrangedWithColumnIdentifiers(view, identifiers);
        RC_ASSERT(sorted(view) == before);
    }));
}

TEST_P(TableColumnLayout, isReachedFromAnyOrder) {
    EXPECT_TRUE(rc::check("records of all columns put all of them in place", [] {
        std::vector<std::string> columns{"a", "b", "c", "d", "e", "f"};
        const auto shuffled = [&columns] {
            std::vector<std::string> result = columns;
            for (std::size_t i = result.size() - 1; i > 0; --i) {
                std::swap(result[i], result[*rc::gen::inRange<std::size_t>(0, i + 1)]);
            }
            return result;
        };
        const Ref<NSTableView> view = table(shuffled());
        const Ref<NSTableView> wanted = table(shuffled());
        rearrangedWithColumnDatas(view, arrangedColumnDatas(wanted));
        RC_ASSERT(order(view) == order(wanted));
    }));
}

INSTANTIATE_TEST_SUITE_P(Plain, TableColumnLayout,
                         testing::Values(test::TableSource{"plain", [] { return make<NSTableView>(); }}),
                         testing::PrintToStringParamName());

} // namespace
} // namespace zr
