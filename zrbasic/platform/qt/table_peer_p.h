#pragma once

#include <zrbasic/platform/appkit/table_view.h>
#include <zrbasic/platform/qt/view_peer_p.h>

#include <QPointer>

#include <memory>

namespace zr::qt {

class TableModel;
class TableWidget;

/// A table on the screen: Qt's table view, which shows what the table has, and tells it what the user does.
///
/// The table's columns are the truth. Qt's header has them in the same order, hidden ones included, with their widths
/// as whole pixels; what the user drags there is taken over into the table.
class TablePeer final : public WidgetPeer, public TableDisplay {
  public:
    explicit TablePeer(NSTableView& table);
    ~TablePeer() override;

    void viewChanged(ViewChange change) override;

    void columnsChanged() override;
    void rowsChanged() override;
    void cellsChanged(NSIndexSet* rows, NSIndexSet* columns) override;
    void selectionChanged() override;
    void scrollToRow(NSInteger row) override;

    /// Null when there is none at the moment.
    [[nodiscard]] TableWidget* tableWidget() const;

  protected:
    void populate(QWidget& widget) override;
    QWidget* keyboardWidget() override;
    bool drawsView() const override;

  private:
    void showEverything();
    void connectHeader();
    void connectRows();
    void userDidMoveColumn(int number, int from, int to);
    void userDidResizeColumn(int number, int pixels);
    void userDidSelect();

    NSTableView& m_table;
    std::shared_ptr<TableModel> m_model;
    QPointer<TableWidget> m_widget;
    /// Its end ends all connections to the widget.
    QObject m_connections;
    /// What Qt reports meanwhile is our own doing.
    bool m_isShowing = false;
};

} // namespace zr::qt
