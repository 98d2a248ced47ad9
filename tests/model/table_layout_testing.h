#pragma once

#include <zrbasic/platform/appkit/table_view.h>

#include <gtest/gtest.h>
#include <initializer_list>
#include <string>
#include <vector>

namespace zr::test {

/// Where the tests get their tables from: a plain one, or one that is on a screen.
struct TableSource {
    const char* name;
    Ref<NSTableView> (*make)();
};

inline void PrintTo(const TableSource& source, std::ostream* out) {
    *out << source.name;
}

/// The columns in words, "Bid 100" or "Bid 100 hidden", commas between them; "-" for a column without an identifier.
inline std::string layout(NSTableView* table) {
    std::string text;
    const Ref<NSArray> columns = table->tableColumns();
    for (const id& element : columns->elements()) {
        const auto* const column = cast<NSTableColumn>(element);
        const Ref<NSString> identifier = column->identifier();
        text += (text.empty() ? "" : ", ") + (identifier ? identifier->utf8() : "-") + ' ' +
                std::to_string(static_cast<int>(column->width())) + (column->isHidden() ? " hidden" : "");
    }
    return text;
}

/// The identifiers alone.
inline std::string order(NSTableView* table) {
    std::string text;
    const Ref<NSArray> columns = table->tableColumns();
    for (const id& element : columns->elements()) {
        const Ref<NSString> identifier = cast<NSTableColumn>(element)->identifier();
        text += (text.empty() ? "" : ",") + (identifier ? identifier->utf8() : "-");
    }
    return text;
}

class TableColumnLayout : public testing::TestWithParam<TableSource> {
  protected:
    /// A table of these columns, each 100 points wide; "-" stands for one without an identifier.
    static Ref<NSTableView> table(const std::vector<std::string>& names) {
        Ref<NSTableView> made = GetParam().make();
        for (const std::string& name : names) {
            const Ref<NSString> identifier = name == "-" ? nullptr : NSString::fromUtf8(name);
            made->addTableColumn(make<NSTableColumn>(&NSTableColumn::initWithIdentifier, identifier));
        }
        return made;
    }

    static Ref<NSTableView> prices() { return table({"Bid", "Ask", "Last"}); }

    static Ref<NSTableColumn> columnAt(NSTableView* view, NSUInteger index) {
        return Ref<NSTableColumn>(cast<NSTableColumn>(view->tableColumns()->objectAtIndex(index)));
    }
};

} // namespace zr::test
