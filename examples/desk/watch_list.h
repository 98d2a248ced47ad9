#pragma once

#include <examples/replay/tracker.h>

#include <zrbasic/platform/appkit/menu.h>
#include <zrbasic/platform/appkit/table_view.h>
#include <zrbasic/platform/foundation/notification.h>

#include <functional>
#include <memory>
#include <vector>

namespace desk {

/// The instruments in a table that follows their quotes: a price that changes lights up for a moment.
class WatchList : public zr::NSObject {
    ZR_OBJECT(WatchList, zr::NSObject)
  public:
    /// Makes the table, with the columns as the user left them.
    void follow(const std::vector<zr::Ref<replay::Tracker>>& trackers);
    [[nodiscard]] zr::NSTableView* table() const { return m_table; }
    /// Shows and hides the columns.
    [[nodiscard]] zr::NSMenu* columnMenu() const { return m_columnMenu; }
    /// Of the selected row; null when there is none.
    [[nodiscard]] replay::Tracker* selected() const;
    /// Shows what has changed since the last time, and lets go out what has been lit up long enough.
    void refresh();

    /// Called when an instrument was quoted, when another one is selected, and when the columns are others.
    std::function<void(replay::Tracker*)> onQuote;
    std::function<void()> onSelection;
    std::function<void()> onLayout;

    // Asked and told by the table

    zr::NSInteger rows(zr::NSTableView*) const { return static_cast<zr::NSInteger>(m_rows.size()); }
    ZR_METHOD(rows, "numberOfRowsInTableView:")
    zr::Ref<zr::NSAttributedString> text(zr::NSTableView*, zr::NSTableColumn* column, zr::NSInteger row) const;
    ZR_METHOD(text, "tableView:attributedValueForTableColumn:row:")
    zr::Ref<zr::NSColor> background(zr::NSTableView*, zr::NSTableColumn* column, zr::NSInteger row) const;
    ZR_METHOD(background, "tableView:backgroundColorForTableColumn:row:")
    void selectionDidChange(zr::NSNotification*) { onSelection(); }
    ZR_METHOD(selectionDidChange, "tableViewSelectionDidChange:")
    void columnDidMove(zr::NSNotification*) { onLayout(); }
    ZR_METHOD(columnDidMove, "tableViewColumnDidMove:")
    void columnDidResize(zr::NSNotification*) { onLayout(); }
    ZR_METHOD(columnDidResize, "tableViewColumnDidResize:")

  private:
    struct Row;

    zr::Ref<zr::NSTableView> m_table;
    zr::Ref<zr::NSMenu> m_columnMenu;
    std::vector<std::shared_ptr<Row>> m_rows;
};

} // namespace desk
