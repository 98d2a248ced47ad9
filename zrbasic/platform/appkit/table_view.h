#pragma once

#include <zrbasic/platform/appkit/control.h>
#include <zrbasic/platform/appkit/table_column.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/index_set.h>

namespace zr {

class NSMenu;

/// The selected rows are others now; its object is the table, as for all of these.
[[nodiscard]] ZR_EXPORT Ref<NSString> NSTableViewSelectionDidChangeNotification();
/// A column stands elsewhere: the numbers "NSOldColumn" and "NSNewColumn" in the user info are its positions.
[[nodiscard]] ZR_EXPORT Ref<NSString> NSTableViewColumnDidMoveNotification();
/// A column has another width: "NSTableColumn" in the user info is the column, "NSOldWidth" a number.
[[nodiscard]] ZR_EXPORT Ref<NSString> NSTableViewColumnDidResizeNotification();

/// What a table shows in one place.
struct TableCellContent {
    /// Never null.
    Ref<NSString> text = ""_ns;
    /// The same with fonts and colours; null for plain text.
    Ref<NSAttributedString> styledText;
    /// Behind the text, from edge to edge; null for none.
    Ref<NSColor> backgroundColor;
};

/// What shows a table on a screen; its peer is one. Told what has changed, it reads the rest from the table.
class ZR_EXPORT TableDisplay {
  public:
    TableDisplay() = default;
    TableDisplay(const TableDisplay&) = delete;
    TableDisplay& operator=(const TableDisplay&) = delete;
    virtual ~TableDisplay();

    /// Which columns there are, their order, widths, titles, or what users may do to them.
    virtual void columnsChanged() = 0;
    /// How many rows there are, how high, and everything in them.
    virtual void rowsChanged() = 0;
    /// What those rows show in the columns of those positions.
    virtual void cellsChanged(NSIndexSet* rows, NSIndexSet* columns) = 0;
    virtual void selectionChanged() = 0;
    /// Scrolls as far as it takes to see the row, and no farther.
    virtual void scrollToRow(NSInteger row) = 0;
};

/// Rows of values under columns, from which rows can be selected.
///
/// The columns stand in the order they are shown in from left to right; hidden ones keep their place among them. What
/// stands in the rows is asked of the data source, by message, and only as far as it is seen:
/// `numberOfRowsInTableView:` and `tableView:objectValueForTableColumn:row:`. A data source that also has
/// `tableView:attributedValueForTableColumn:row:` may give a styled text instead, null for a plain one, and one that has
/// `tableView:backgroundColorForTableColumn:row:` a colour behind it, null for none.
///
/// The delegate is told `tableViewSelectionDidChange:`, `tableViewColumnDidMove:` and `tableViewColumnDidResize:`, as
/// far as it responds, with the notifications that are posted. Main thread only.
class ZR_EXPORT NSTableView : public NSControl {
    ZR_DECLARE_CLASS(NSTableView, NSControl)
  public:
    NSTableView();
    ~NSTableView() override;

    /// Action cells, as what is clicked is no cell of its own.
    [[nodiscard]] static Class* cellClass();

    // Columns

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

    /// Whether users may drag columns to other places or widths; both true at first.
    [[nodiscard]] bool allowsColumnReordering() const { return m_allowsColumnReordering; }
    void setAllowsColumnReordering(bool allows);
    [[nodiscard]] bool allowsColumnResizing() const { return m_allowsColumnResizing; }
    void setAllowsColumnResizing(bool allows);

    /// The menu that a press with the right button opens over the columns' titles; null at first, which opens none.
    /// Kept. That of the rows is the view's own (see `NSView::setMenu`).
    [[nodiscard]] Ref<NSMenu> headerMenu() const;
    void setHeaderMenu(NSMenu* menu);

    // Rows

    /// Not kept; null at first. Setting another one reads everything anew.
    [[nodiscard]] id dataSource() const { return m_dataSource.lock(); }
    void setDataSource(NSObject* source);
    [[nodiscard]] id delegate() const { return m_delegate.lock(); }
    void setDelegate(NSObject* delegate) { m_delegate = Weak<NSObject>(delegate); }

    /// As the data source had it when it was asked last; from 0 to ten million, whatever it answered.
    [[nodiscard]] NSInteger numberOfRows() const { return m_numberOfRows; }
    /// In points; 17 at first. At least 1; what is not a number is 1.
    [[nodiscard]] double rowHeight() const { return m_rowHeight; }
    void setRowHeight(double height);

    /// Asks how many rows there are, and shows everything anew. Selected rows that are gone leave the selection.
    virtual void reloadData();
    /// Shows those cells anew. Rows and columns that are not there, and null, are passed over.
    virtual void reloadDataForRowIndexes_columnIndexes(NSIndexSet* rows, NSIndexSet* columns);
    /// A row that is not there does nothing.
    virtual void scrollRowToVisible(NSInteger row);

    // Selection

    /// Whether users may have nothing selected, true at first, or several rows, false at first. Taken away, the first
    /// row is selected where none is, and the first selected one stays alone.
    [[nodiscard]] bool allowsEmptySelection() const { return m_allowsEmptySelection; }
    void setAllowsEmptySelection(bool allows);
    [[nodiscard]] bool allowsMultipleSelection() const { return m_allowsMultipleSelection; }
    void setAllowsMultipleSelection(bool allows);

    /// Never null.
    [[nodiscard]] Ref<NSIndexSet> selectedRowIndexes() const { return m_selectedRows; }
    /// The last selected row; -1 for none.
    [[nodiscard]] NSInteger selectedRow() const;
    [[nodiscard]] NSInteger numberOfSelectedRows() const;
    [[nodiscard]] bool isRowSelected(NSInteger row) const;
    /// Selects these rows, in place of the selected ones or besides them. Rows that are not there are passed over;
    /// null is none. Where only one may be selected, that is the first of them. An empty selection may always be made
    /// this way.
    virtual void selectRowIndexes_byExtendingSelection(NSIndexSet* rows, bool extends);
    /// Selects nothing, where that is allowed.
    virtual void deselectAll(NSObject* sender);

    // Clicks: the action is sent for a click, the double action for the second one of a double click.

    /// Sent to the target as the action is; none at first.
    [[nodiscard]] SEL doubleAction() const { return m_doubleAction; }
    void setDoubleAction(SEL action) { m_doubleAction = action; }
    /// Where the click was, while its action is carried out, or while a menu is open that was opened there; -1 beside
    /// all of them, over the titles for the row, and otherwise.
    [[nodiscard]] NSInteger clickedRow() const { return m_clickedRow; }
    [[nodiscard]] NSInteger clickedColumn() const { return m_clickedColumn; }

    [[nodiscard]] NSSize intrinsicContentSize() const override;
    [[nodiscard]] bool acceptsFirstResponder() const override;
    /// Nothing: what is seen of a table is the toolkit's.
    void drawRect(NSRect dirtyRect) override;

    // For toolkits

    /// Asks the data source; empty for a column or row that is not there.
    [[nodiscard]] TableCellContent contentAtColumn_row(NSInteger column, NSInteger row);
    /// The user has selected these rows; as far as that is allowed, they are.
    void userDidSelectRows(NSIndexSet* rows);
    /// The user has clicked there.
    void userDidClick(NSInteger column, NSInteger row, bool isDoubleClick);
    /// The user has pressed the right button there: the event goes to `rightMouseDown:`, or opens the header's menu.
    void userDidAskForMenu(NSInteger column, NSInteger row, NSEvent* event);
    void userDidAskForHeaderMenu(NSInteger column, NSEvent* event);

  private:
    friend class NSTableColumn;

    /// Stands while the user's click there is seen to.
    class Click;

    void columnsChanged();
    void columnWasResized(NSTableColumn* column, double oldWidth);
    [[nodiscard]] TableDisplay* display() const;
    /// Without rows that are gone, and as many as may be.
    [[nodiscard]] Ref<NSIndexSet> selectable(NSIndexSet* rows) const;
    void takeSelection(Ref<NSIndexSet> rows);
    void post(NSString* name, SEL operation, NSDictionary* userInfo);

    Ref<NSMenu> m_headerMenu;
    Ref<NSArray> m_columns = NSArray::array();
    Weak<NSObject> m_dataSource;
    Weak<NSObject> m_delegate;
    Ref<NSIndexSet> m_selectedRows = NSIndexSet::indexSet();
    NSInteger m_numberOfRows = 0;
    double m_rowHeight = 17;
    SEL m_doubleAction{};
    NSInteger m_clickedRow = -1;
    NSInteger m_clickedColumn = -1;
    bool m_allowsColumnReordering = true;
    bool m_allowsColumnResizing = true;
    bool m_allowsEmptySelection = true;
    bool m_allowsMultipleSelection = false;
};

} // namespace zr
