#include <zrbasic/model/table_column_layout.h>

#include <zrbasic/collections/dictionary_writing.h>
#include <zrbasic/collections/sequence.h>
#include <zrbasic/core/text.h>
#include <zrbasic/model/object_helpers.h>
#include <zrbasic/platform/appkit/table_view.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/number.h>

namespace zr {

namespace {

// The spellings are those of layouts that users have already saved.
const Ref<NSString>& identifierKey() {
    return detail::stringLiteral<"identifier">();
}

const Ref<NSString>& widthKey() {
    return detail::stringLiteral<"width">();
}

const Ref<NSString>& hiddenKey() {
    return detail::stringLiteral<"hidden">();
}

Ref<NSTableColumn> columnAt(NSTableView* table, NSInteger index) {
    // A negative index is far past the end as well.
    return Ref<NSTableColumn>(
        cast<NSTableColumn>(zr_objectAtIndex(table->tableColumns(), static_cast<NSUInteger>(index))));
}

bool isIn(NSArray* identifiers, NSTableColumn* column) {
    return identifiers && identifiers->containsObject(column->identifier());
}

} // namespace

ZR_GROUP(NSTableView, ZRXHelper) {
    is.method<&arrangedColumnDatas>("arrangedColumnDatas");
    is.method<&arrangedColumnInfos>("arrangedColumnInfos");
    is.method<&rearrangedWithColumnDatas>("rearrangedWithColumnDatas:");
    is.method<&rearrangedWithColumnKeyValues>("rearrangedWithColumnKeyValues:");
    is.method<&comparedColumnData_andIndex>("comparedColumnData:andIndex:");
    is.method<&rearrangedWithColumnIdentifiers>("rearrangedWithColumnIdentifiers:");
    is.method<&hideColumnsWithIdentifiers>("hideColumnsWithIdentifiers:");
    is.method<&onlyHideColumnsWithIdentifiers>("onlyHideColumnsWithIdentifiers:");
}

ZRTableColumnData::~ZRTableColumnData() = default;

Ref<ZRTableColumnData> ZRTableColumnData::instanceWithKeyValues(NSDictionary* keyValues) {
    if (!keyValues) {
        return nullptr;
    }
    const id identifier = keyValues->objectForKey(identifierKey());
    const id width = keyValues->objectForKey(widthKey());
    const id hidden = keyValues->objectForKey(hiddenKey());
    if (!ZRXTextValid(identifier) || !isValidObject<NSNumber>(width) || !isValidObject<NSNumber>(hidden)) {
        return nullptr;
    }
    Ref<ZRTableColumnData> made = make<ZRTableColumnData>();
    made->setIdentifier(cast<NSString>(identifier));
    made->setWidth(cast<NSNumber>(width)->doubleValue());
    made->setHidden(cast<NSNumber>(hidden)->boolValue());
    return made;
}

Ref<NSDictionary> ZRTableColumnData::cachedKeyValues() const {
    const Ref<NSMutableDictionary> keyValues = NSMutableDictionary::dictionary();
    zr_setObject_forKey(keyValues, identifier(), identifierKey());
    zr_setDouble_forKey(keyValues, width(), widthKey());
    zr_setBool_forKey(keyValues, isHidden(), hiddenKey());
    return keyValues;
}

Ref<NSArray> arrangedColumnDatas(NSTableView* self) {
    if (!self) {
        return nullptr;
    }
    return zr_map(self->tableColumns(), [](NSObject* element) -> id {
        const auto* const column = cast<NSTableColumn>(element);
        const Ref<ZRTableColumnData> data = make<ZRTableColumnData>();
        data->setIdentifier(column->identifier());
        data->setWidth(column->width());
        data->setHidden(column->isHidden());
        return data;
    });
}

Ref<NSArray> arrangedColumnInfos(NSTableView* self) {
    return zr_map(arrangedColumnDatas(self),
                  [](NSObject* data) -> id { return cast<ZRTableColumnData>(data)->cachedKeyValues(); });
}

void rearrangedWithColumnDatas(NSTableView* self, NSArray* columnDatas) {
    if (!self || !columnDatas) {
        return;
    }
    // Both counts are asked for anew at every step, as those who watch the columns may change either list.
    for (NSInteger i = 0; i < static_cast<NSInteger>(columnDatas->count()) && i < self->numberOfColumns(); ++i) {
        const id record = columnDatas->objectAtIndex(static_cast<NSUInteger>(i));
        for (NSInteger j = i; j < self->numberOfColumns(); ++j) {
            if (comparedColumnData_andIndex(self, cast<ZRTableColumnData>(record), j)) {
                self->moveColumn_toColumn(j, i);
                break;
            }
        }
    }
}

void rearrangedWithColumnKeyValues(NSTableView* self, NSArray* keyValues) {
    rearrangedWithColumnDatas(self, zr_map(keyValues, [](NSObject* element) -> id {
                                  return ZRTableColumnData::instanceWithKeyValues(cast<NSDictionary>(element));
                              }));
}

bool comparedColumnData_andIndex(NSTableView* self, ZRTableColumnData* columnData, NSInteger index) {
    const Ref<NSTableColumn> column = self && columnData ? columnAt(self, index) : nullptr;
    if (!column) {
        return false;
    }
    const Ref<NSString> identifier = column->identifier();
    if (!identifier || !identifier->isEqual(columnData->identifier())) {
        return false;
    }
    column->setWidth(columnData->width());
    column->setHidden(columnData->isHidden());
    return true;
}

void rearrangedWithColumnIdentifiers(NSTableView* self, NSArray* identifiers) {
    if (!self || !identifiers) {
        return;
    }
    // The search for a column to move compares the columns themselves, not their identifiers. A column is no text and
    // never matches, so the search ends where it starts, at the first column.
    constexpr NSInteger cursor = 0;
    for (NSInteger i = 0; i < static_cast<NSInteger>(identifiers->count()) && i < self->numberOfColumns(); ++i) {
        const id wanted = identifiers->objectAtIndex(static_cast<NSUInteger>(i));
        if (!wanted->isEqual(columnAt(self, i)->identifier())) {
            self->moveColumn_toColumn(cursor, i);
        }
    }
}

void hideColumnsWithIdentifiers(NSTableView* self, NSArray* identifiers) {
    if (!self) {
        return;
    }
    const Ref<NSArray> columns = self->tableColumns();
    for (const id& element : columns->elements()) {
        auto* const column = cast<NSTableColumn>(element);
        if (isIn(identifiers, column)) {
            column->setHidden(true);
        }
    }
}

void onlyHideColumnsWithIdentifiers(NSTableView* self, NSArray* identifiers) {
    if (!self) {
        return;
    }
    const Ref<NSArray> columns = self->tableColumns();
    for (const id& element : columns->elements()) {
        auto* const column = cast<NSTableColumn>(element);
        column->setHidden(isIn(identifiers, column));
    }
}

} // namespace zr
