#include "shades.h"
#include "specimen.h"

#include <zrbasic/platform/appkit/table_view.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/number.h>

#include <array>

namespace controls {
namespace {

using namespace zr;

struct Row {
    const char* symbol;
    const char* last;
    double change;
};

constexpr std::array<Row, 5> rows{{
    {"BTCUSDT", "43250.10", 1.25},
    {"ETHUSDT", "2241.78", -0.48},
    {"SOLUSDT", "98.35", 3.02},
    {"XRPUSDT", "0.6187", -0.10},
    {"ADAUSDT", "0.5921", 0.00},
}};

/// What the table asks.
class QuoteRows : public NSObject {
    ZR_OBJECT(QuoteRows, NSObject)
  public:
    NSInteger numberOfRows(NSTableView*) { return static_cast<NSInteger>(rows.size()); }
    ZR_METHOD(numberOfRows, "numberOfRowsInTableView:")

    Ref<NSString> value(NSTableView*, NSTableColumn* column, NSInteger index) {
        const Row& row = rows.at(static_cast<std::size_t>(index));
        if (column->identifier()->isEqual("symbol"_ns)) {
            return NSString::fromUtf8(row.symbol);
        }
        if (column->identifier()->isEqual("last"_ns)) {
            return NSString::fromUtf8(row.last);
        }
        return NSString::stringWithFormat("%+.2f %%"_ns, row.change);
    }
    ZR_METHOD(value, "tableView:objectValueForTableColumn:row:")

    /// Rises green, falls red.
    Ref<NSAttributedString> styledValue(NSTableView* table, NSTableColumn* column, NSInteger index) {
        const double change = rows.at(static_cast<std::size_t>(index)).change;
        if (!column->identifier()->isEqual("change"_ns) || change == 0) {
            return nullptr;
        }
        const Ref<NSColor> color = change > 0 ? rise() : alarm();
        return make<NSAttributedString>(&NSAttributedString::initWithString_attributes,
                                        value(table, column, index).get(),
                                        dictionary({{NSForegroundColorAttributeName(), color}}).get());
    }
    ZR_METHOD(styledValue, "tableView:attributedValueForTableColumn:row:")
};

Ref<NSTableColumn> column(NSString* identifier, NSString* title, double width, NSTextAlignment alignment) {
    const Ref<NSTableColumn> made = make<NSTableColumn>(&NSTableColumn::initWithIdentifier, identifier);
    made->setTitle(title);
    made->setWidth(width);
    made->setAlignment(alignment);
    return made;
}

} // namespace

Section tables() {
    const Ref<NSTableView> table = make<NSTableView>(&NSTableView::initWithFrame, NSMakeRect(0, 0, 320, 124));
    table->addTableColumn(column("symbol"_ns, "Symbol"_ns, 120, NSTextAlignmentLeft));
    table->addTableColumn(column("last"_ns, "Last"_ns, 110, NSTextAlignmentRight));
    table->addTableColumn(column("change"_ns, "Change"_ns, 90, NSTextAlignmentRight));
    table->setRowHeight(20);
    const Ref<QuoteRows> source = make<QuoteRows>();
    table->setDataSource(source);
    table->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(1), false);
    // The pose keeps the source, which the table does not.
    return {"Table", {{"table/quotes", "one row selected", table, [table, source] { table->reloadData(); }}}};
}

} // namespace controls
