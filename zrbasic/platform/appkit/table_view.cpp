#include <zrbasic/platform/appkit/table_view.h>

#include <algorithm>
#include <vector>

namespace zr {

ZR_DEFINE_CLASS(NSTableView) {
    is.method<&NSTableView::tableColumns>("tableColumns");
    is.method<&NSTableView::numberOfColumns>("numberOfColumns");
    is.method<&NSTableView::addTableColumn>("addTableColumn:");
    is.method<&NSTableView::removeTableColumn>("removeTableColumn:");
    is.method<&NSTableView::moveColumn_toColumn>("moveColumn:toColumn:");
    is.method<&NSTableView::columnWithIdentifier>("columnWithIdentifier:");
    is.method<&NSTableView::tableColumnWithIdentifier>("tableColumnWithIdentifier:");
}

NSTableView::NSTableView() = default;
NSTableView::~NSTableView() = default;

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

} // namespace zr
