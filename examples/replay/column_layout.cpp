#include "column_layout.h"

#include <zrbasic/model/table_column_layout.h>
#include <zrbasic/platform/appkit/table_column.h>

#include <utility>

namespace replay {

using namespace zr;

Ref<NSTableView> instrumentTable() {
    auto table = make<NSTableView>();
    for (const auto& [identifier, title] :
         {std::pair("instrument", "INSTRUMENT"), std::pair("tick", "TICK"), std::pair("quotes", "QUOTES"),
          std::pair("changes", "CHANGES"), std::pair("offTick", "OFF TICK"), std::pair("low", "LOW"),
          std::pair("high", "HIGH"), std::pair("last", "LAST")}) {
        const auto column = make<NSTableColumn>(&NSTableColumn::initWithIdentifier, NSString::fromUtf8(identifier));
        column->setTitle(NSString::fromUtf8(title));
        table->addTableColumn(column);
    }
    return table;
}

Ref<NSTableView> instrumentTable(NSArray* savedLayout) {
    auto table = instrumentTable();
    rearrangedWithColumnKeyValues(table, savedLayout);
    return table;
}

} // namespace replay
