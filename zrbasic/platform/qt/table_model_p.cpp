#include <zrbasic/platform/qt/table_model_p.h>

#include <zrbasic/platform/qt/conversions_p.h>
#include <zrbasic/platform/qt/event_loop_p.h>

#include <algorithm>

namespace zr::qt {

TableModel::TableModel(NSTableView& table) : m_table(&table) {}

TableModel::~TableModel() = default;

int TableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : m_rowCount;
}

int TableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

QVariant TableModel::data(const QModelIndex& index, int role) const {
    switch (role) {
        case Qt::DisplayRole:
        case Qt::AccessibleTextRole:
            return toQt(content(index).text);
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(alignmentOf(columnNumbered(index.column())));
        default:
            return {};
    }
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    const NSTableColumn* const column = orientation == Qt::Horizontal ? columnNumbered(section) : nullptr;
    if (!column) {
        return {};
    }
    switch (role) {
        case Qt::DisplayRole:
        case Qt::AccessibleTextRole:
            return toQt(column->title());
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(alignmentOf(column));
        default:
            return {};
    }
}

Qt::ItemFlags TableModel::flags(const QModelIndex& index) const {
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren : Qt::NoItemFlags;
}

TableCellContent TableModel::content(const QModelIndex& index) const {
    TableCellContent content;
    if (m_table && index.isValid()) {
        const Ref<NSTableView> kept(m_table);
        duringEvent([&] { content = kept->contentAtColumn_row(positionOf(index.column()), index.row()); });
    }
    return content;
}

NSTableColumn* TableModel::columnNumbered(int number) const {
    const auto index = static_cast<std::size_t>(number);
    return number >= 0 && index < m_columns.size() ? m_columns[index].get() : nullptr;
}

int TableModel::numberOfColumnAt(NSInteger position) const {
    const auto found = std::find(m_positions.begin(), m_positions.end(), position);
    return found == m_positions.end() ? -1 : static_cast<int>(found - m_positions.begin());
}

NSInteger TableModel::positionOf(int number) const {
    return number >= 0 && static_cast<std::size_t>(number) < m_positions.size()
               ? m_positions[static_cast<std::size_t>(number)]
               : -1;
}

void TableModel::readColumns() {
    const Ref<NSArray> list = m_table->tableColumns();
    const auto& columns = list->elements();
    const auto place = [&columns](const NSTableColumn* column) {
        return std::find_if(columns.begin(), columns.end(), [column](const id& each) { return each.get() == column; });
    };
    for (int number = columnCount() - 1; number >= 0; --number) {
        if (place(columnNumbered(number)) == columns.end()) {
            beginRemoveColumns({}, number, number);
            m_columns.erase(m_columns.begin() + number);
            m_positions.erase(m_positions.begin() + number);
            endRemoveColumns();
        }
    }
    for (const id& element : columns) {
        Ref<NSTableColumn> column(cast<NSTableColumn>(element));
        if (std::find(m_columns.begin(), m_columns.end(), column) == m_columns.end()) {
            beginInsertColumns({}, columnCount(), columnCount());
            m_columns.push_back(std::move(column));
            m_positions.push_back(-1);
            endInsertColumns();
        }
    }
    for (std::size_t number = 0; number < m_columns.size(); ++number) {
        m_positions[number] = place(m_columns[number].get()) - columns.begin();
    }
}

void TableModel::headerChanged() {
    if (!m_columns.empty()) {
        Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
    }
}

void TableModel::setRowCount(int count) {
    if (count > m_rowCount) {
        beginInsertRows({}, m_rowCount, count - 1);
        m_rowCount = count;
        endInsertRows();
    } else if (count < m_rowCount) {
        beginRemoveRows({}, count, m_rowCount - 1);
        m_rowCount = count;
        endRemoveRows();
    }
}

Qt::Alignment alignmentOf(const NSTableColumn* column) {
    switch (column ? column->alignment() : NSTextAlignmentNatural) {
        case NSTextAlignmentRight:
            return Qt::AlignRight | Qt::AlignVCenter;
        case NSTextAlignmentCenter:
            return Qt::AlignHCenter | Qt::AlignVCenter;
        case NSTextAlignmentLeft:
            // Not turned around where text runs from the right.
            return Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter;
        case NSTextAlignmentJustified:
        case NSTextAlignmentNatural:
            break;
    }
    return Qt::AlignLeft | Qt::AlignVCenter;
}

} // namespace zr::qt
