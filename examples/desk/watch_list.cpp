#include "watch_list.h"

#include "look.h"

#include <examples/replay/fields.h>

#include <zrbasic/core/tick.h>
#include <zrbasic/model/observation.h>
#include <zrbasic/model/table_column_layout.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/foundation/attributed_string.h>
#include <zrbasic/platform/foundation/mutable_index_set.h>
#include <zrbasic/platform/foundation/user_defaults.h>
#include <zrbasic/ui/callback_target.h>
#include <zrbasic/ui/menu_item.h>

#include <algorithm>
#include <chrono>

namespace desk {

using namespace zr;
using replay::Tracker;

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

constexpr Seconds lightingTime{0.6};

struct Column {
    const char* field;
    double width;
};

constexpr Column columns[] = {{"instrument", 116}, {"last", 92}, {"change", 78},  {"low", 92},   {"high", 92},
                              {"volume", 92},      {"tick", 92}, {"offTick", 70}, {"quotes", 74}};

bool isNamed(NSTableColumn* column, std::string_view identifier) {
    return column->identifier()->utf8() == identifier;
}

bool isOffTick(const Tracker& tracker) {
    return tracker.last() && !roundMatchWithTick(tracker.last(), tracker.instrument()->tick());
}

} // namespace

struct WatchList::Row {
    Ref<Tracker> tracker;
    /// None before the price has changed.
    std::optional<Way> way;
    bool isDirty = false;
    Clock::time_point litUntil;

    void priceDidChange(NSObject* before, NSObject* now) {
        const auto* const old = cast<NSDecimalNumber>(before);
        auto* const price = cast<NSDecimalNumber>(now);
        isDirty = true;
        if (old && price && !old->isEqual(price)) {
            way = old->compare(price) == NSOrderedAscending ? Way::Up : Way::Down;
            litUntil = Clock::now() + std::chrono::duration_cast<Clock::duration>(lightingTime);
        }
    }
    /// How bright it is lit up, 1 to 0.
    [[nodiscard]] double light() const { return std::max(Seconds(litUntil - Clock::now()) / lightingTime, 0.0); }
};

void WatchList::follow(const std::vector<Ref<Tracker>>& trackers) {
    m_table = make<NSTableView>(&NSTableView::initWithFrame, NSZeroRect);
    m_table->setIdentifier("watchList"_ns);
    m_table->setAccessibilityLabel("Watch list"_ns);
    m_table->setRowHeight(22);
    for (const Column& column : columns) {
        const auto made = make<NSTableColumn>(&NSTableColumn::initWithIdentifier, NSString::fromUtf8(column.field));
        made->setTitle(NSString::fromUtf8(replay::fieldNamed(column.field).title));
        made->setWidth(column.width);
        made->setMinWidth(40);
        made->setAlignment(&column == columns ? NSTextAlignmentLeft : NSTextAlignmentRight);
        m_table->addTableColumn(made);
    }
    rearrangedWithColumnKeyValues(m_table, NSUserDefaults::standardUserDefaults()->arrayForKey("columns"_ns));
    m_columnMenu = make<NSMenu>();
    for (const id& element : m_table->tableColumns()) {
        const Ref<NSTableColumn> column(static_cast<NSTableColumn*>(element.get()));
        const auto item = itemWithTitle_action(column->title(), {});
        item->setState(!column->isHidden());
        setCallback(item, [this, column](NSObject* sender) {
            column->setHidden(!column->isHidden());
            static_cast<NSMenuItem*>(sender)->setState(!column->isHidden());
            onLayout();
        });
        m_columnMenu->addItem(item);
    }
    m_table->setHeaderMenu(m_columnMenu);
    for (const auto& tracker : trackers) {
        const auto row = std::make_shared<Row>();
        row->tracker = tracker;
        m_rows.push_back(row);
        // Kept by the row, the block must not keep it.
        addObserver_forKeyPath_withBlock(
            tracker->latest(), this, "price"_ns,
            [this, row = row.get()](NSObject*, NSString*, NSObject* before, NSObject* now) {
                row->priceDidChange(before, now);
                onQuote(row->tracker);
            });
    }
    m_table->setDataSource(this);
    m_table->setDelegate(this);
}

Tracker* WatchList::selected() const {
    const NSInteger row = m_table->selectedRow();
    return row >= 0 ? m_rows.at(static_cast<std::size_t>(row))->tracker.get() : nullptr;
}

void WatchList::refresh() {
    const auto changed = make<NSMutableIndexSet>();
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        const bool isLit = m_rows[i]->light() > 0;
        // Once more when it has gone out.
        if (std::exchange(m_rows[i]->isDirty, isLit) || isLit) {
            changed->addIndex(i);
        }
    }
    const auto all = static_cast<NSUInteger>(m_table->numberOfColumns());
    m_table->reloadDataForRowIndexes_columnIndexes(changed, NSIndexSet::indexSetWithIndexesInRange({0, all}));
}

Ref<NSAttributedString> WatchList::text(NSTableView*, NSTableColumn* column, NSInteger place) const {
    const Row& row = *m_rows.at(static_cast<std::size_t>(place));
    const bool isSilent = row.tracker->quotes() == 0 && !isNamed(column, "instrument") && !isNamed(column, "tick");
    const std::string words = isSilent ? "" : replay::fieldNamed(column->identifier()->utf8()).text(*row.tracker);
    Ref<NSColor> color = NSColor::labelColor();
    if (isNamed(column, "last") && row.way) {
        color = highlight(*row.way);
    } else if (isNamed(column, "change") && replay::changeOf(*row.tracker) != 0) {
        color = highlight(replay::changeOf(*row.tracker) > 0 ? Way::Up : Way::Down);
    }
    return make<NSAttributedString>(&NSAttributedString::initWithString_attributes, NSString::fromUtf8(words).get(),
                                    dictionary({{NSForegroundColorAttributeName(), color}}).get());
}

Ref<NSColor> WatchList::background(NSTableView*, NSTableColumn* column, NSInteger place) const {
    const Row& row = *m_rows.at(static_cast<std::size_t>(place));
    if (isNamed(column, "last") && row.light() > 0) {
        return highlight(*row.way)->colorWithAlphaComponent(0.22 * row.light());
    }
    const bool isMarked =
        isNamed(column, "last") ? isOffTick(*row.tracker) : isNamed(column, "offTick") && row.tracker->offTick() > 0;
    return isMarked ? noticeColor()->colorWithAlphaComponent(0.18) : nullptr;
}

} // namespace desk
