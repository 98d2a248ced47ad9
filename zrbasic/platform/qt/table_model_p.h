#pragma once

#include <zrbasic/platform/appkit/table_view.h>

#include <QAbstractTableModel>

#include <vector>

namespace zr::qt {

/// A table's rows and columns as Qt's views want them. Asks the table when it is asked itself, and keeps nothing.
///
/// Qt's columns are numbered as they came; where the user sees them is the header's business. So a column keeps its
/// number here while it moves in the table.
class TableModel final : public QAbstractTableModel {
  public:
    explicit TableModel(NSTableView& table);
    ~TableModel() override;

    /// The table is on its way out: what may still be asked is answered with nothing.
    void forgetTable() { m_table = nullptr; }
    [[nodiscard]] NSTableView* table() const { return m_table; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    [[nodiscard]] TableCellContent content(const QModelIndex& index) const;
    /// Null for a number that no column has.
    [[nodiscard]] NSTableColumn* columnNumbered(int number) const;
    /// -1 for a position that no column has.
    [[nodiscard]] int numberOfColumnAt(NSInteger position) const;
    /// Where the column stands in the table.
    [[nodiscard]] NSInteger positionOf(int number) const;

    /// Takes in the columns that the table has now.
    void readColumns();
    /// A title or an alignment may be another one.
    void headerChanged();
    void setRowCount(int count);

  private:
    NSTableView* m_table;
    std::vector<Ref<NSTableColumn>> m_columns;
    std::vector<NSInteger> m_positions;
    int m_rowCount = 0;
};

/// Where text stands that a column aligns, in a row as high as it takes.
[[nodiscard]] Qt::Alignment alignmentOf(const NSTableColumn* column);

} // namespace zr::qt
