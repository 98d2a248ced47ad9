#pragma once

#include <zrbasic/platform/appkit/table_view.h>
#include <zrbasic/platform/foundation/attributed_string.h>
#include <zrbasic/platform/qt/session.h>
#include <zrbasic/platform/qt/table_model_p.h>

#include <QHeaderView>
#include <QTableView>
#include <QTest>
#include <QWindow>

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>

namespace zr::test {

/// Every cell says who it is, and the source writes down which it was asked for.
class ScreenTableSource : public NSObject {
    ZR_OBJECT(ScreenTableSource, NSObject)
  public:
    NSInteger numberOfRowsInTableView(NSTableView*) { return rows; }
    ZR_METHOD(numberOfRowsInTableView, "numberOfRowsInTableView:")
    id valueOf(NSTableView*, NSTableColumn* column, NSInteger row) {
        asked.emplace(row, column->identifier()->utf8());
        return id(NSString::fromUtf8(text.empty() ? column->identifier()->utf8() + std::to_string(row) : text));
    }
    ZR_METHOD(valueOf, "tableView:objectValueForTableColumn:row:")

    [[nodiscard]] std::set<NSInteger> askedRows() const {
        std::set<NSInteger> found;
        for (const auto& [row, column] : asked) {
            found.insert(row);
        }
        return found;
    }

    NSInteger rows = 0;
    std::string text;
    std::set<std::pair<NSInteger, std::string>> asked;
};

/// What Qt's header shows, from left to right, in the words of `layout`: "bid 100, ask 50 hidden".
inline std::string shownLayout(const QTableView& shown) {
    const auto& header = *shown.horizontalHeader();
    const auto& model = static_cast<const qt::TableModel&>(*shown.model());
    std::string text;
    for (int position = 0; position < header.count(); ++position) {
        const int number = header.logicalIndex(position);
        const Ref<NSString> name = model.columnNumbered(number)->identifier();
        text += (text.empty() ? "" : ", ") + (name ? name->utf8() : "-");
        text += header.isSectionHidden(number) ? " hidden" : ' ' + std::to_string(header.sectionSize(number));
    }
    return text;
}

/// The same from the table, with its widths rounded to pixels.
inline std::string expectedLayout(NSTableView& table) {
    std::string text;
    const Ref<NSArray> columns = table.tableColumns();
    for (const id& element : columns->elements()) {
        const auto* const column = cast<NSTableColumn>(element);
        const Ref<NSString> name = column->identifier();
        text += (text.empty() ? "" : ", ") + (name ? name->utf8() : "-");
        text += column->isHidden() ? " hidden" : ' ' + std::to_string(qRound(column->width()));
    }
    return text;
}

/// A table of the columns "bid", "ask" and "last" on the screen.
class TableOnScreen : public testing::Test {
  protected:
    void SetUp() override {
        for (const Ref<NSString>& name : {"bid"_ns, "ask"_ns, "last"_ns}) {
            table->addTableColumn(make<NSTableColumn>(&NSTableColumn::initWithIdentifier, name));
            column(name)->setTitle(name);
        }
        source->rows = 20;
        table->setDataSource(source);
        show();
    }

    void show() {
        QWidget* const around = qt::widget(table);
        ASSERT_TRUE(around);
        around->resize(400, 200);
        around->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(around));
        shown = around->findChild<QTableView*>();
        ASSERT_TRUE(shown);
    }

    [[nodiscard]] Ref<NSTableColumn> column(NSString* name) const { return table->tableColumnWithIdentifier(name); }

    /// Carries out what is left to do, painting too.
    static void settle() { QTest::qWait(20); }

    /// A point of a widget in its window.
    static QPoint inWindow(const QWidget& widget, QPoint point) { return widget.mapTo(widget.window(), point); }

    /// By the window's own events, as a user's come.
    static void drag(const QWidget& in, QPoint from, QPoint to) {
        QWindow* const window = in.window()->windowHandle();
        QTest::mousePress(window, Qt::LeftButton, {}, inWindow(in, from));
        constexpr int steps = 8;
        for (int step = 1; step <= steps; ++step) {
            QTest::mouseMove(window, inWindow(in, from + (to - from) * step / steps));
        }
        QTest::mouseRelease(window, Qt::LeftButton, {}, inWindow(in, to));
        settle();
    }

    [[nodiscard]] QHeaderView& header() const { return *shown->horizontalHeader(); }

    /// In the header: the middle of the section that stands there, and its right edge.
    [[nodiscard]] QPoint middleOf(int position) const {
        const int number = header().logicalIndex(position);
        return {header().sectionViewportPosition(number) + header().sectionSize(number) / 2, header().height() / 2};
    }
    [[nodiscard]] QPoint edgeOf(int position) const {
        const int number = header().logicalIndex(position);
        return {header().sectionViewportPosition(number) + header().sectionSize(number) - 1, header().height() / 2};
    }

    void dragHeader(QPoint from, QPoint to) const { drag(*header().viewport(), from, to); }

    /// In the rows.
    [[nodiscard]] QPoint cell(int position, int row) const {
        return shown->visualRect(shown->model()->index(row, header().logicalIndex(position))).center();
    }
    void click(QPoint point, Qt::KeyboardModifiers modifiers = {}) const {
        QTest::mouseClick(shown->window()->windowHandle(), Qt::LeftButton, modifiers,
                          inWindow(*shown->viewport(), point));
        settle();
    }

    Ref<NSTableView> table = make<NSTableView>();
    Ref<ScreenTableSource> source = make<ScreenTableSource>();
    QTableView* shown = nullptr;
};

} // namespace zr::test
