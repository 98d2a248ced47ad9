#include <zrbasic/platform/appkit/table_view.h>

#include <zrbasic/platform/appkit/delegate_telling_p.h>
#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/menu.h>
#include <zrbasic/platform/foundation/attributed_string.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/mutable_index_set.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace zr {
namespace {

// What a toolkit can still lay out below one another.
constexpr NSInteger mostRows = 10'000'000;

bool hasOperation(NSObject* object, SEL operation) {
    return object && object->respondsToSelector(operation);
}

Ref<NSString> textOf(NSObject* value) {
    if (!value || value == NSNull::null()) {
        return ""_ns;
    }
    if (auto* const string = cast<NSString>(value)) {
        return Ref<NSString>(string);
    }
    if (auto* const number = cast<NSNumber>(value)) {
        return number->stringValue();
    }
    const Ref<NSString> description = value->description();
    return description ? description : ""_ns;
}

} // namespace

Ref<NSString> NSTableViewSelectionDidChangeNotification() {
    return "NSTableViewSelectionDidChangeNotification"_ns;
}

Ref<NSString> NSTableViewColumnDidMoveNotification() {
    return "NSTableViewColumnDidMoveNotification"_ns;
}

Ref<NSString> NSTableViewColumnDidResizeNotification() {
    return "NSTableViewColumnDidResizeNotification"_ns;
}

TableDisplay::~TableDisplay() = default;

ZR_DEFINE_CLASS(NSTableView) {
    is.classMethod<&NSTableView::cellClass>("cellClass");
    is.method<&NSTableView::tableColumns>("tableColumns");
    is.method<&NSTableView::numberOfColumns>("numberOfColumns");
    is.method<&NSTableView::addTableColumn>("addTableColumn:");
    is.method<&NSTableView::removeTableColumn>("removeTableColumn:");
    is.method<&NSTableView::moveColumn_toColumn>("moveColumn:toColumn:");
    is.method<&NSTableView::columnWithIdentifier>("columnWithIdentifier:");
    is.method<&NSTableView::tableColumnWithIdentifier>("tableColumnWithIdentifier:");
    is.method<&NSTableView::allowsColumnReordering>("allowsColumnReordering");
    is.method<&NSTableView::setAllowsColumnReordering>("setAllowsColumnReordering:");
    is.method<&NSTableView::allowsColumnResizing>("allowsColumnResizing");
    is.method<&NSTableView::setAllowsColumnResizing>("setAllowsColumnResizing:");
    is.method<&NSTableView::headerMenu>("headerMenu");
    is.method<&NSTableView::setHeaderMenu>("setHeaderMenu:");
    is.method<&NSTableView::dataSource>("dataSource");
    is.method<&NSTableView::setDataSource>("setDataSource:");
    is.method<&NSTableView::delegate>("delegate");
    is.method<&NSTableView::setDelegate>("setDelegate:");
    is.method<&NSTableView::numberOfRows>("numberOfRows");
    is.method<&NSTableView::rowHeight>("rowHeight");
    is.method<&NSTableView::setRowHeight>("setRowHeight:");
    is.method<&NSTableView::reloadData>("reloadData");
    is.method<&NSTableView::reloadDataForRowIndexes_columnIndexes>("reloadDataForRowIndexes:columnIndexes:");
    is.method<&NSTableView::scrollRowToVisible>("scrollRowToVisible:");
    is.method<&NSTableView::allowsEmptySelection>("allowsEmptySelection");
    is.method<&NSTableView::setAllowsEmptySelection>("setAllowsEmptySelection:");
    is.method<&NSTableView::allowsMultipleSelection>("allowsMultipleSelection");
    is.method<&NSTableView::setAllowsMultipleSelection>("setAllowsMultipleSelection:");
    is.method<&NSTableView::selectedRowIndexes>("selectedRowIndexes");
    is.method<&NSTableView::selectedRow>("selectedRow");
    is.method<&NSTableView::numberOfSelectedRows>("numberOfSelectedRows");
    is.method<&NSTableView::isRowSelected>("isRowSelected:");
    is.method<&NSTableView::selectRowIndexes_byExtendingSelection>("selectRowIndexes:byExtendingSelection:");
    is.method<&NSTableView::deselectAll>("deselectAll:");
    is.method<&NSTableView::doubleAction>("doubleAction");
    is.method<&NSTableView::setDoubleAction>("setDoubleAction:");
    is.method<&NSTableView::clickedRow>("clickedRow");
    is.method<&NSTableView::clickedColumn>("clickedColumn");
}

NSTableView::NSTableView() = default;
NSTableView::~NSTableView() = default;

Class* NSTableView::cellClass() {
    return NSActionCell::classObject();
}

TableDisplay* NSTableView::display() const {
    return dynamic_cast<TableDisplay*>(peer());
}

void NSTableView::post(NSString* name, SEL operation, NSDictionary* userInfo) {
    tellDelegateAndPost(this, delegate(), operation, name, userInfo);
}

NSInteger NSTableView::numberOfColumns() const {
    return static_cast<NSInteger>(m_columns->count());
}

void NSTableView::addTableColumn(NSTableColumn* column) {
    if (!column) {
        return;
    }
    const Ref<NSTableView> previous = column->tableView();
    if (previous.get() == this) {
        return;
    }
    // The table that it leaves may be the last to hold it.
    const Ref<NSTableColumn> kept(column);
    if (previous) {
        previous->removeTableColumn(column);
    }
    m_columns = m_columns->arrayByAddingObject(column);
    column->m_tableView = Weak<NSTableView>(this);
    columnsChanged();
}

void NSTableView::removeTableColumn(NSTableColumn* column) {
    if (!column || column->tableView().get() != this) {
        return;
    }
    column->m_tableView = nullptr;
    const auto& columns = m_columns->elements();
    std::vector<id> remaining;
    remaining.reserve(columns.size());
    std::copy_if(columns.begin(), columns.end(), std::back_inserter(remaining),
                 [column](const id& candidate) { return candidate.get() != column; });
    m_columns = NSArray::fromElements(std::move(remaining));
    columnsChanged();
}

void NSTableView::moveColumn_toColumn(NSInteger from, NSInteger to) {
    const NSInteger count = numberOfColumns();
    if (from < 0 || to < 0 || from >= count || to >= count || from == to) {
        return;
    }
    std::vector<id> columns(m_columns->elements().begin(), m_columns->elements().end());
    const auto first = columns.begin() + std::min(from, to);
    const auto last = columns.begin() + std::max(from, to) + 1;
    std::rotate(first, from < to ? first + 1 : last - 1, last);
    m_columns = NSArray::fromElements(std::move(columns));
    columnsChanged();
    post(NSTableViewColumnDidMoveNotification(), "tableViewColumnDidMove:"_sel,
         dictionary({{"NSOldColumn"_ns, box(from)}, {"NSNewColumn"_ns, box(to)}}));
}

NSInteger NSTableView::columnWithIdentifier(NSString* identifier) const {
    const auto& columns = m_columns->elements();
    const auto found = std::find_if(columns.begin(), columns.end(), [identifier](const id& column) {
        const Ref<NSString> candidate = cast<NSTableColumn>(column)->identifier();
        return candidate && candidate->isEqual(identifier);
    });
    return found == columns.end() ? -1 : found - columns.begin();
}

Ref<NSTableColumn> NSTableView::tableColumnWithIdentifier(NSString* identifier) const {
    const NSInteger position = columnWithIdentifier(identifier);
    if (position < 0) {
        return nullptr;
    }
    return Ref<NSTableColumn>(cast<NSTableColumn>(m_columns->objectAtIndex(static_cast<NSUInteger>(position))));
}

void NSTableView::columnsChanged() {
    if (TableDisplay* const shown = display()) {
        shown->columnsChanged();
    }
}

void NSTableView::columnWasResized(NSTableColumn* column, double oldWidth) {
    const Ref<NSTableColumn> kept(column);
    columnsChanged();
    post(NSTableViewColumnDidResizeNotification(), "tableViewColumnDidResize:"_sel,
         dictionary({{"NSTableColumn"_ns, id(column)}, {"NSOldWidth"_ns, box(oldWidth)}}));
}

void NSTableView::setAllowsColumnReordering(bool allows) {
    m_allowsColumnReordering = allows;
    columnsChanged();
}

void NSTableView::setAllowsColumnResizing(bool allows) {
    m_allowsColumnResizing = allows;
    columnsChanged();
}

void NSTableView::setDataSource(NSObject* source) {
    if (m_dataSource.lock().get() == source && source) {
        return;
    }
    m_dataSource = Weak<NSObject>(source);
    send<void>(this, "reloadData"_sel);
}

void NSTableView::setRowHeight(double height) {
    const double accepted = height > 1 ? height : 1;
    if (m_rowHeight == accepted) {
        return;
    }
    m_rowHeight = accepted;
    if (TableDisplay* const shown = display()) {
        shown->rowsChanged();
    }
}

void NSTableView::reloadData() {
    const id source = dataSource();
    const NSInteger answered = hasOperation(source, "numberOfRowsInTableView:"_sel)
                                   ? send<NSInteger>(source, "numberOfRowsInTableView:"_sel, this)
                                   : 0;
    m_numberOfRows = std::clamp<NSInteger>(answered, 0, mostRows);
    if (TableDisplay* const shown = display()) {
        shown->rowsChanged();
    }
    userDidSelectRows(m_selectedRows);
}

void NSTableView::reloadDataForRowIndexes_columnIndexes(NSIndexSet* rows, NSIndexSet* columns) {
    TableDisplay* const shown = display();
    if (shown && rows && columns) {
        shown->cellsChanged(rows, columns);
    }
}

void NSTableView::scrollRowToVisible(NSInteger row) {
    TableDisplay* const shown = display();
    if (shown && row >= 0 && row < m_numberOfRows) {
        shown->scrollToRow(row);
    }
}

void NSTableView::setAllowsEmptySelection(bool allows) {
    m_allowsEmptySelection = allows;
    userDidSelectRows(m_selectedRows);
}

void NSTableView::setAllowsMultipleSelection(bool allows) {
    m_allowsMultipleSelection = allows;
    if (TableDisplay* const shown = display()) {
        shown->selectionChanged();
    }
    takeSelection(selectable(m_selectedRows));
}

NSInteger NSTableView::selectedRow() const {
    return m_selectedRows->count() > 0 ? static_cast<NSInteger>(m_selectedRows->lastIndex()) : -1;
}

NSInteger NSTableView::numberOfSelectedRows() const {
    return static_cast<NSInteger>(m_selectedRows->count());
}

bool NSTableView::isRowSelected(NSInteger row) const {
    return row >= 0 && m_selectedRows->containsIndex(static_cast<NSUInteger>(row));
}

Ref<NSIndexSet> NSTableView::selectable(NSIndexSet* rows) const {
    const auto chosen = make<NSMutableIndexSet>(&NSMutableIndexSet::initWithIndexSet, rows);
    const auto count = static_cast<NSUInteger>(m_numberOfRows);
    chosen->removeIndexesInRange(NSMakeRange(count, static_cast<NSUInteger>(NSNotFound) - count));
    if (!m_allowsMultipleSelection && chosen->count() > 1) {
        return NSIndexSet::indexSetWithIndex(chosen->firstIndex());
    }
    return Ref<NSIndexSet>(cast<NSIndexSet>(chosen->copy()));
}

void NSTableView::takeSelection(Ref<NSIndexSet> rows) {
    if (rows->isEqualToIndexSet(m_selectedRows)) {
        return;
    }
    m_selectedRows = std::move(rows);
    if (TableDisplay* const shown = display()) {
        shown->selectionChanged();
    }
    post(NSTableViewSelectionDidChangeNotification(), "tableViewSelectionDidChange:"_sel, nullptr);
}

void NSTableView::selectRowIndexes_byExtendingSelection(NSIndexSet* rows, bool extends) {
    Ref<NSIndexSet> chosen = selectable(rows);
    if (extends && m_allowsMultipleSelection) {
        const auto both = make<NSMutableIndexSet>(&NSMutableIndexSet::initWithIndexSet, m_selectedRows);
        both->addIndexes(chosen);
        chosen = Ref<NSIndexSet>(cast<NSIndexSet>(both->copy()));
    } else if (extends && chosen->count() == 0) {
        return;
    }
    takeSelection(std::move(chosen));
}

void NSTableView::deselectAll(NSObject*) {
    userDidSelectRows(nullptr);
}

void NSTableView::userDidSelectRows(NSIndexSet* rows) {
    Ref<NSIndexSet> chosen = selectable(rows);
    if (chosen->count() == 0 && !m_allowsEmptySelection && m_numberOfRows > 0) {
        chosen = m_selectedRows->count() > 0 ? selectable(m_selectedRows) : chosen;
        if (chosen->count() == 0) {
            chosen = NSIndexSet::indexSetWithIndex(0);
        }
    }
    takeSelection(std::move(chosen));
}

/// What is sent meanwhile may raise, and may let go of the table.
class NSTableView::Click {
  public:
    Click(NSTableView& table, NSInteger column, NSInteger row) : m_table(&table) {
        table.m_clickedColumn = column;
        table.m_clickedRow = row;
    }
    ~Click() { m_table->m_clickedColumn = m_table->m_clickedRow = -1; }
    Click(const Click&) = delete;
    Click& operator=(const Click&) = delete;

  private:
    Ref<NSTableView> m_table;
};

void NSTableView::userDidClick(NSInteger column, NSInteger row, bool isDoubleClick) {
    const Click click(*this, column, row);
    send<bool>(this, "sendAction:to:"_sel, isDoubleClick ? m_doubleAction : action(), target());
}

void NSTableView::userDidAskForMenu(NSInteger column, NSInteger row, NSEvent* event) {
    const Click click(*this, column, row);
    send<void>(this, "rightMouseDown:"_sel, event);
}

void NSTableView::userDidAskForHeaderMenu(NSInteger column, NSEvent* event) {
    const Click click(*this, column, -1);
    const Ref<NSMenu> menu = m_headerMenu;
    NSMenu::popUpContextMenu_withEvent_forView(menu, event, this);
}

NSSize NSTableView::intrinsicContentSize() const {
    return {NSViewNoIntrinsicMetric, NSViewNoIntrinsicMetric};
}

bool NSTableView::acceptsFirstResponder() const {
    return isEnabled();
}

void NSTableView::drawRect(NSRect) {}

TableCellContent NSTableView::contentAtColumn_row(NSInteger column, NSInteger row) {
    TableCellContent content;
    const id source = dataSource();
    if (!source || column < 0 || column >= numberOfColumns() || row < 0 || row >= m_numberOfRows) {
        return content;
    }
    const id asked = m_columns->objectAtIndex(static_cast<NSUInteger>(column));
    const SEL background = "tableView:backgroundColorForTableColumn:row:"_sel;
    if (source->respondsToSelector(background)) {
        content.backgroundColor = send<Ref<NSColor>>(source, background, this, asked, row);
    }
    const SEL styled = "tableView:attributedValueForTableColumn:row:"_sel;
    if (source->respondsToSelector(styled)) {
        content.styledText = send<Ref<NSAttributedString>>(source, styled, this, asked, row);
    }
    const SEL plain = "tableView:objectValueForTableColumn:row:"_sel;
    if (!content.styledText && source->respondsToSelector(plain)) {
        const id value = send<id>(source, plain, this, asked, row);
        content.styledText = Ref<NSAttributedString>(cast<NSAttributedString>(value));
        content.text = content.styledText ? content.text : textOf(value);
    }
    if (content.styledText) {
        content.text = content.styledText->string();
    }
    return content;
}

Ref<NSMenu> NSTableView::headerMenu() const {
    return m_headerMenu;
}

void NSTableView::setHeaderMenu(NSMenu* menu) {
    m_headerMenu = Ref<NSMenu>(menu);
}

} // namespace zr
