#pragma once

#include <zrbasic/platform/appkit/table_view.h>

#include <QHeaderView>
#include <QStyledItemDelegate>
#include <QTableView>

#include <memory>

namespace zr::qt {

class TableModel;

/// Titles on a plain ground, with thin lines between them.
class TableHeader final : public QHeaderView {
  public:
    explicit TableHeader(QWidget* parent);
    ~TableHeader() override;

    QSize sizeHint() const override;

  protected:
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
};

/// Draws what the table says stands in a cell, asking it once.
class TableCellPainter final : public QStyledItemDelegate {
  public:
    explicit TableCellPainter(QObject* parent);
    ~TableCellPainter() override;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

/// Qt's table with our rules: rows are selected and nothing is edited in it, no focus frames, and what is not on the
/// screen is not asked for.
class TableWidget final : public QTableView {
  public:
    TableWidget(std::shared_ptr<TableModel> model, QWidget* parent);
    ~TableWidget() override;

    /// Would look at every row for what begins with the letters typed.
    void keyboardSearch(const QString& search) override;
    /// The rows that are on the screen, from `first` to `last`; false when there are none.
    [[nodiscard]] bool visibleRows(int& first, int& last) const;

  protected:
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override;
    bool viewportEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void initViewItemOption(QStyleOptionViewItem* option) const override;
    bool focusNextPrevChild(bool next) override;

  private:
    [[nodiscard]] NSTableView* table() const;
    /// Whether a press opens the table's menu, which is seen to then.
    bool opensMenu(const QMouseEvent& event);

    /// Kept, as Qt may keep the widget longer than the table has its peer.
    std::shared_ptr<TableModel> m_model;
};

} // namespace zr::qt
