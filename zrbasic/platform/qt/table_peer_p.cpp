#include <zrbasic/platform/qt/table_peer_p.h>

#include <zrbasic/platform/foundation/mutable_index_set.h>
#include <zrbasic/platform/qt/conversions_p.h>
#include <zrbasic/platform/qt/delivery_p.h>
#include <zrbasic/platform/qt/event_loop_p.h>
#include <zrbasic/platform/qt/peers_p.h>
#include <zrbasic/platform/qt/table_model_p.h>
#include <zrbasic/platform/qt/table_widget_p.h>
#include <zrbasic/platform/runtime/message.h>

#include <QEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <cmath>
#include <limits>

namespace zr::qt {
namespace {

// The largest that a header of Qt has room for.
constexpr double mostPixels = (1 << 20) - 1;

int pixelsOf(double width) {
    return static_cast<int>(std::floor(std::clamp(width, 0.0, mostPixels) + 0.5));
}

/// Whoever is told may let go of the table, while Qt is still in the middle of the widget.
void callOut(FunctionRef<void()> work) {
    const Delivery delivery;
    duringEvent(work);
}

/// Keeps `content` as large as the widget that it lies in. No layout, as that would have a say about the widget's own
/// size.
class Filling final : public QObject {
  public:
    Filling(QWidget& around, QWidget& content) : QObject(&content), m_content(content) {
        around.installEventFilter(this);
        content.setGeometry(around.rect());
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Resize) {
            m_content.setGeometry(static_cast<QWidget*>(watched)->rect());
        }
        return false;
    }

  private:
    QWidget& m_content;
};

} // namespace

std::unique_ptr<ViewPeer> makeTablePeer(NSTableView& table) {
    return std::make_unique<TablePeer>(table);
}

TablePeer::TablePeer(NSTableView& table)
    : WidgetPeer(table), m_table(table), m_model(std::make_shared<TableModel>(table)) {}

TablePeer::~TablePeer() {
    m_model->forgetTable();
}

TableWidget* TablePeer::tableWidget() const {
    return m_widget;
}

QWidget* TablePeer::keyboardWidget() {
    return m_widget;
}

bool TablePeer::drawsView() const {
    return false;
}

void TablePeer::populate(QWidget& widget) {
    m_widget = new TableWidget(m_model, &widget);
    new Filling(widget, *m_widget);
    showEverything();
    connectHeader();
    connectRows();
}

void TablePeer::showEverything() {
    m_widget->setEnabled(m_table.isEnabled());
    columnsChanged();
    rowsChanged();
}

void TablePeer::connectHeader() {
    QHeaderView* const header = m_widget->horizontalHeader();
    QObject::connect(header, &QHeaderView::sectionMoved, &m_connections, [this](int number, int from, int to) {
        if (!m_isShowing) {
            userDidMoveColumn(number, from, to);
        }
    });
    QObject::connect(header, &QHeaderView::sectionResized, &m_connections, [this](int number, int, int pixels) {
        if (!m_isShowing) {
            userDidResizeColumn(number, pixels);
        }
    });
}

void TablePeer::connectRows() {
    QObject::connect(m_widget->selectionModel(), &QItemSelectionModel::selectionChanged, &m_connections, [this] {
        if (!m_isShowing) {
            userDidSelect();
        }
    });
    const auto click = [this](const QModelIndex& index, bool isDoubleClick) {
        const Ref<NSTableView> table(&m_table);
        const NSInteger column = m_model->positionOf(index.column());
        callOut([&] { table->userDidClick(column, index.row(), isDoubleClick); });
    };
    QObject::connect(m_widget, &QTableView::clicked, &m_connections,
                     [click](const QModelIndex& at) { click(at, false); });
    QObject::connect(m_widget, &QTableView::doubleClicked, &m_connections,
                     [click](const QModelIndex& at) { click(at, true); });
}

void TablePeer::viewChanged(ViewChange change) {
    WidgetPeer::viewChanged(change);
    if (!m_widget) {
        return;
    }
    if (change == ViewChange::Content) {
        m_widget->setFont(toQt(m_table.font()));
    }
    if (change == ViewChange::Enabled) {
        m_widget->setEnabled(m_table.isEnabled());
    }
    if (change == ViewChange::Content || change == ViewChange::Display) {
        m_widget->viewport()->update();
    }
}

void TablePeer::columnsChanged() {
    if (!m_widget) {
        return;
    }
    const QScopedValueRollback<bool> showing(m_isShowing, true);
    QHeaderView* const header = m_widget->horizontalHeader();
    const int before = m_model->columnCount();
    m_model->readColumns();
    header->setSectionsMovable(m_table.allowsColumnReordering());
    header->setSectionResizeMode(m_table.allowsColumnResizing() ? QHeaderView::Interactive : QHeaderView::Fixed);
    for (int position = 0; position < m_model->columnCount(); ++position) {
        const int number = m_model->numberOfColumnAt(position);
        const NSTableColumn& column = *m_model->columnNumbered(number);
        if (header->visualIndex(number) != position) {
            header->moveSection(header->visualIndex(number), position);
        }
        // A width set while the section is hidden would be forgotten.
        header->setSectionHidden(number, false);
        header->resizeSection(number, pixelsOf(column.width()));
        header->setSectionHidden(number, column.isHidden());
    }
    m_model->headerChanged();
    if (m_model->columnCount() != before) {
        selectionChanged();
    }
}

void TablePeer::userDidMoveColumn(int number, int from, int to) {
    const Ref<NSTableView> table(&m_table);
    const QPointer<QObject> standing(&m_connections);
    // Where the header had it must be where the table has it, or somebody has moved columns while the user did.
    if (m_model->positionOf(number) == from) {
        callOut([&] { send<void>(table, "moveColumn:toColumn:"_sel, NSInteger{from}, NSInteger{to}); });
    }
    if (standing) {
        columnsChanged();
    }
}

void TablePeer::userDidResizeColumn(int number, int pixels) {
    const Ref<NSTableColumn> column(m_model->columnNumbered(number));
    // Hiding a section is reported as a width of nothing.
    if (!column || pixels <= 0 || pixels == pixelsOf(column->width())) {
        return;
    }
    const Ref<NSTableView> table(&m_table);
    const QPointer<QObject> standing(&m_connections);
    callOut([&] { send<void>(column, "setWidth:"_sel, static_cast<double>(pixels)); });
    if (standing) {
        columnsChanged();
    }
}

void TablePeer::rowsChanged() {
    if (!m_widget) {
        return;
    }
    const QScopedValueRollback<bool> showing(m_isShowing, true);
    m_widget->setFont(toQt(m_table.font()));
    const int height = std::clamp(pixelsOf(m_table.rowHeight()), 1, 10'000);
    m_widget->verticalHeader()->setDefaultSectionSize(height);
    // Scroll bars count pixels in whole numbers.
    const NSInteger most = std::numeric_limits<int>::max() / 2 / height;
    m_model->setRowCount(static_cast<int>(std::min(m_table.numberOfRows(), most)));
    m_widget->viewport()->update();
    selectionChanged();
}

void TablePeer::cellsChanged(NSIndexSet* rows, NSIndexSet* columns) {
    int first = 0;
    int last = 0;
    if (!m_widget || !m_widget->visibleRows(first, last)) {
        return;
    }
    for (int number = 0; number < m_model->columnCount(); ++number) {
        if (!columns->containsIndex(static_cast<NSUInteger>(m_model->positionOf(number)))) {
            continue;
        }
        for (int row = first; row <= last; ++row) {
            if (rows->containsIndex(static_cast<NSUInteger>(row))) {
                m_widget->update(m_model->index(row, number));
            }
        }
    }
}

void TablePeer::selectionChanged() {
    if (!m_widget) {
        return;
    }
    const QScopedValueRollback<bool> showing(m_isShowing, true);
    m_widget->setSelectionMode(m_table.allowsMultipleSelection() ? QAbstractItemView::ExtendedSelection
                                                                 : QAbstractItemView::SingleSelection);
    const int lastColumn = m_model->columnCount() - 1;
    const int rowCount = m_model->rowCount();
    QItemSelection selection;
    const Ref<NSIndexSet> selected = m_table.selectedRowIndexes();
    for (const NSRange range : selected->ranges()) {
        const auto first = static_cast<qint64>(range.location);
        const qint64 last = std::min<qint64>(first + static_cast<qint64>(range.length), rowCount) - 1;
        if (lastColumn >= 0 && first <= last) {
            selection.append(QItemSelectionRange(m_model->index(static_cast<int>(first), 0),
                                                 m_model->index(static_cast<int>(last), lastColumn)));
        }
    }
    QItemSelectionModel& present = *m_widget->selectionModel();
    if (present.selection() != selection) {
        present.select(selection, QItemSelectionModel::ClearAndSelect);
    }
    // The arrow keys go on from the selected row.
    const auto row = static_cast<int>(std::min<NSInteger>(m_table.selectedRow(), rowCount - 1));
    if (row >= 0 && lastColumn >= 0 && !m_table.isRowSelected(present.currentIndex().row())) {
        present.setCurrentIndex(m_model->index(row, 0), QItemSelectionModel::NoUpdate);
    }
}

void TablePeer::userDidSelect() {
    const Ref<NSMutableIndexSet> rows = NSMutableIndexSet::indexSet();
    for (const QItemSelectionRange& range : m_widget->selectionModel()->selection()) {
        rows->addIndexesInRange(
            NSMakeRange(static_cast<NSUInteger>(range.top()), static_cast<NSUInteger>(range.height())));
    }
    const Ref<NSTableView> table(&m_table);
    const QPointer<QObject> standing(&m_connections);
    callOut([&] { table->userDidSelectRows(rows); });
    // What the table did not agree to is taken back.
    if (standing) {
        selectionChanged();
    }
}

void TablePeer::scrollToRow(NSInteger row) {
    if (!m_widget || row >= m_model->rowCount()) {
        return;
    }
    const int top = m_widget->rowViewportPosition(static_cast<int>(row));
    const int below = top + m_widget->rowHeight(static_cast<int>(row)) - m_widget->viewport()->height();
    QScrollBar* const bar = m_widget->verticalScrollBar();
    if (top < 0) {
        bar->setValue(bar->value() + top);
    } else if (below > 0) {
        bar->setValue(bar->value() + std::min(below, top));
    }
}

} // namespace zr::qt
