#pragma once

#include <zrbasic/platform/appkit/table_column.h>
#include <zrbasic/platform/foundation/array.h>

namespace zr {

/// A table's columns, in the order they are shown in from left to right. Hidden columns keep their place among them.
/// Main thread only.
class ZR_EXPORT NSTableView : public NSObject {
    ZR_DECLARE_CLASS(NSTableView, NSObject)
  public:
    NSTableView();
    ~NSTableView() override;

    /// All columns; a list of the moment that does not change with the table. Never null.
    [[nodiscard]] Ref<NSArray> tableColumns() const { return m_columns; }
    [[nodiscard]] NSInteger numberOfColumns() const;

    /// Puts the column behind the others; one that belongs to another table leaves that first. Null, and one that is
    /// there already, do nothing.
    void addTableColumn(NSTableColumn* column);
    /// Null, and one that is not there, do nothing.
    void removeTableColumn(NSTableColumn* column);
    /// Takes the column at `from` out and puts it in so that it stands at `to` then. A position that no column has
    /// does nothing.
    void moveColumn_toColumn(NSInteger from, NSInteger to);

    /// The position of the first column of that identifier; -1 when there is none, and for null.
    [[nodiscard]] NSInteger columnWithIdentifier(NSString* identifier) const;
    /// The column itself; null when there is none, and for null.
    [[nodiscard]] Ref<NSTableColumn> tableColumnWithIdentifier(NSString* identifier) const;

  private:
    Ref<NSArray> m_columns = NSArray::array();
};

} // namespace zr
