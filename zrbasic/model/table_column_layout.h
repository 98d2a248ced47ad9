#pragma once

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/string.h>

/// What users make of a table's columns, order, widths, and which are hidden, kept between runs.
///
///     saved->setObject_forKey(arrangedColumnInfos(table), "columns"_ns);
///     ...
///     rearrangedWithColumnKeyValues(table, cast<NSArray>(saved->objectForKey("columns"_ns)));
///
/// Nothing here raises, and nothing but the table's columns is changed. A null table does nothing and gives null or
/// false. Main thread only.
namespace zr {

class NSTableView;

/// The layout of one column. A saved layout is a list of these, or of their dictionary forms, the first column first.
///
/// The dictionary form has the entries "identifier" (a string; left out when there is none), "width" and "hidden"
/// (numbers).
class ZR_EXPORT ZRTableColumnData : public NSObject {
    ZR_OBJECT(ZRTableColumnData, NSObject)
  public:
    ~ZRTableColumnData() override;

    /// A new record of a dictionary form. Null unless the identifier is a string of more than white space and both
    /// others are numbers; a string "120" is no width.
    [[nodiscard]] static Ref<ZRTableColumnData> instanceWithKeyValues(NSDictionary* keyValues);
    ZR_CLASS_METHOD(instanceWithKeyValues, "instanceWithKeyValues:")

    /// The column's identifier, all that ties the record to a column; null at first.
    ZR_PROPERTY(Copied<NSString>, identifier, setIdentifier)
    /// In points; 0 at first.
    ZR_PROPERTY(double, width, setWidth)
    ZR_PROPERTY(bool, isHidden, setHidden)

    /// The dictionary form, a new one every time.
    [[nodiscard]] Ref<NSDictionary> cachedKeyValues() const;
    ZR_METHOD(cachedKeyValues, "cachedKeyValues")
};

// NSTableView(ZRXHelper)

/// A record for every column in the table's order, hidden ones included.
[[nodiscard]] ZR_EXPORT Ref<NSArray> arrangedColumnDatas(NSTableView* self);
/// The same as dictionaries, ready to be saved.
[[nodiscard]] ZR_EXPORT Ref<NSArray> arrangedColumnInfos(NSTableView* self);

/// Applies a saved layout: puts the column of each record in the record's place, with its width and visibility.
///
/// A record whose column is gone still takes its place: what stands there stays, and the records behind it are placed
/// one further on. Only columns at or behind a record's place are looked at, the first one of the identifier is taken,
/// and those without a record come last, as they were. An element of another kind is a record without a column. Null
/// and empty do nothing.
ZR_EXPORT void rearrangedWithColumnDatas(NSTableView* self, NSArray* columnDatas);
/// The same for dictionary forms. One that is no proper form is dropped and takes no place.
ZR_EXPORT void rearrangedWithColumnKeyValues(NSTableView* self, NSArray* keyValues);

/// Whether the column at `index` has the record's identifier; if so, it takes the record's width, within its limits,
/// and visibility. False when there is no such column, or one of the two has no identifier.
ZR_EXPORT bool comparedColumnData_andIndex(NSTableView* self, ZRTableColumnData* columnData, NSInteger index);

/// Reorders in a way of its own: wherever the column at a position is not the one listed for it, the table's first
/// column moves there.
///
/// Columns Bid, Ask, Last and identifiers Last, Bid, Ask give Bid, Last, Ask. For an order as listed use
/// `rearrangedWithColumnDatas`. Null and empty do nothing.
ZR_EXPORT void rearrangedWithColumnIdentifiers(NSTableView* self, NSArray* identifiers);

/// Hides the columns of these identifiers and leaves the others alone. Null hides none.
ZR_EXPORT void hideColumnsWithIdentifiers(NSTableView* self, NSArray* identifiers);
/// Hides the columns of these identifiers and shows the others, those without an identifier too. Null shows all.
ZR_EXPORT void onlyHideColumnsWithIdentifiers(NSTableView* self, NSArray* identifiers);

} // namespace zr
