#include "table_on_screen.h"

#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/mutable_attributed_string.h>
#include <zrbasic/platform/foundation/mutable_index_set.h>
#include <zrbasic/platform/foundation/notification_center.h>
#include <zrbasic/platform/qt/event_loop_p.h>
#include <zrbasic/platform/qt/table_peer_p.h>
#include <zrbasic/platform/qt/table_widget_p.h>
#include <zrbasic/ui/responder.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QScrollBar>
#include <QWheelEvent>

namespace zr {
namespace {

class ScreenTableStyles : public test::ScreenTableSource {
    ZR_OBJECT(ScreenTableStyles, ScreenTableSource)
  public:
    using ScreenTableSource = test::ScreenTableSource;

    Ref<NSAttributedString> styledOf(NSTableView*, NSTableColumn*, NSInteger row) {
        return row == 1 ? styled : nullptr;
    }
    ZR_METHOD(styledOf, "tableView:attributedValueForTableColumn:row:")
    Ref<NSColor> backgroundOf(NSTableView*, NSTableColumn* column, NSInteger row) {
        return row == lit && column->identifier()->isEqual("ask"_ns) ? NSColor::redColor() : nullptr;
    }
    ZR_METHOD(backgroundOf, "tableView:backgroundColorForTableColumn:row:")

    Ref<NSAttributedString> styled;
    NSInteger lit = -1;
};

class ScreenTableListener : public NSObject {
    ZR_OBJECT(ScreenTableListener, NSObject)
  public:
    void selected(NSNotification*) { ++selections; }
    ZR_METHOD(selected, "tableViewSelectionDidChange:")
    void clicked(NSTableView* table) {
        log += std::to_string(table->clickedColumn()) + ',' + std::to_string(table->clickedRow()) + '|';
        if (letsGo) {
            *letsGo = nullptr;
        }
    }
    ZR_METHOD(clicked, "clicked:")
    void twice(NSTableView*) { log += "twice|"; }
    ZR_METHOD(twice, "twice:")

    int selections = 0;
    std::string log;
    Ref<NSTableView>* letsGo = nullptr;
};

class ScreenTableRaiser : public NSObject {
    ZR_OBJECT(ScreenTableRaiser, NSObject)
  public:
    NSInteger numberOfRowsInTableView(NSTableView*) { return 3; }
    ZR_METHOD(numberOfRowsInTableView, "numberOfRowsInTableView:")
    id valueOf(NSTableView*, NSTableColumn*, NSInteger) {
        NSException::raise(NSGenericException, "no value");
        return nullptr;
    }
    ZR_METHOD(valueOf, "tableView:objectValueForTableColumn:row:")
};

class TablePeers : public test::TableOnScreen {
  protected:
    [[nodiscard]] std::string selection() const {
        std::string text;
        table->selectedRowIndexes()->enumerateIndexesUsingBlock(
            [&text](NSUInteger row, bool&) { text += (text.empty() ? "" : ",") + std::to_string(row); });
        return text;
    }
    [[nodiscard]] std::string shownSelection() const {
        std::set<int> rows;
        for (const QModelIndex& index : shown->selectionModel()->selectedIndexes()) {
            rows.insert(index.row());
        }
        std::string text;
        for (const int row : rows) {
            text += (text.empty() ? "" : ",") + std::to_string(row);
        }
        return text;
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const {
        QTest::keyClick(shown, key, modifiers);
        settle();
    }

    /// How many pixels of that colour, or nearly, there are in a part of the rows.
    [[nodiscard]] int pixels(QRect part, QColor color) const {
        const QImage picture = shown->viewport()->grab(part).toImage();
        int found = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const QColor is = picture.pixelColor(x, y);
                found += qAbs(is.red() - color.red()) < 30 && qAbs(is.green() - color.green()) < 30 &&
                         qAbs(is.blue() - color.blue()) < 30;
            }
        }
        return found;
    }
    [[nodiscard]] QRect cellRect(int position, int row) const {
        return shown->visualRect(shown->model()->index(row, header().logicalIndex(position)));
    }
};

TEST_F(TablePeers, asksForWhatIsSeenAlone) {
    source->rows = 100'000;
    source->asked.clear();
    table->reloadData();
    settle();
    ASSERT_FALSE(source->asked.empty());
    EXPECT_LT(*source->askedRows().rbegin(), 20);
    source->asked.clear();
    table->scrollRowToVisible(99'999);
    settle();
    ASSERT_FALSE(source->asked.empty());
    EXPECT_GT(*source->askedRows().begin(), 99'980);
    EXPECT_EQ(*source->askedRows().rbegin(), 99'999);
    column("ask"_ns)->setHidden(true);
    source->asked.clear();
    shown->viewport()->repaint();
    for (const auto& [row, name] : source->asked) {
        EXPECT_NE(name, "ask");
    }
}

TEST_F(TablePeers, scrollsThroughManyRowsInNoTime) {
    source->rows = 100'000;
    table->reloadData();
    QElapsedTimer timer;
    timer.start();
    constexpr int steps = 200;
    for (int step = 0; step <= steps; ++step) {
        shown->verticalScrollBar()->setValue(shown->verticalScrollBar()->maximum() / steps * step);
        shown->viewport()->repaint();
    }
    // Generous: a row each would take minutes.
    EXPECT_LT(timer.elapsed(), 10'000);
    RecordProperty("milliseconds", static_cast<int>(timer.elapsed()));
    EXPECT_LT(source->askedRows().size(), 5'000U);
}

TEST_F(TablePeers, scrollsAsFarAsItTakes) {
    QScrollBar* const bar = shown->verticalScrollBar();
    table->scrollRowToVisible(3);
    EXPECT_EQ(bar->value(), 0);
    table->scrollRowToVisible(19);
    EXPECT_EQ(bar->value(), bar->maximum());
    table->scrollRowToVisible(18);
    EXPECT_EQ(bar->value(), bar->maximum());
    table->scrollRowToVisible(2);
    EXPECT_EQ(bar->value(), 2 * 17);
    table->scrollRowToVisible(99);
    EXPECT_EQ(bar->value(), 2 * 17);
}

TEST_F(TablePeers, drawsAnewOnlyTheCellsAskedFor) {
    settle();
    source->asked.clear();
    table->reloadDataForRowIndexes_columnIndexes(NSIndexSet::indexSetWithIndex(3), NSIndexSet::indexSetWithIndex(1));
    settle();
    const std::set<std::pair<NSInteger, std::string>> expected{{3, "ask"}};
    EXPECT_EQ(source->asked, expected);
    source->asked.clear();
    table->moveColumn_toColumn(1, 0);
    settle();
    source->asked.clear();
    table->reloadDataForRowIndexes_columnIndexes(NSIndexSet::indexSetWithIndex(3), NSIndexSet::indexSetWithIndex(1));
    // Neither row 19, which is not seen, nor column 9, which does not exist.
    table->reloadDataForRowIndexes_columnIndexes(NSIndexSet::indexSetWithIndex(19), NSIndexSet::indexSetWithIndex(1));
    table->reloadDataForRowIndexes_columnIndexes(NSIndexSet::indexSetWithIndex(3), NSIndexSet::indexSetWithIndex(9));
    settle();
    const std::set<std::pair<NSInteger, std::string>> moved{{3, "bid"}};
    EXPECT_EQ(source->asked, moved);
}

TEST_F(TablePeers, hasRowsAsManyAndAsHighAsTheTable) {
    EXPECT_EQ(shown->model()->rowCount(), 20);
    EXPECT_EQ(shown->rowHeight(0), 17);
    source->rows = 3;
    table->reloadData();
    EXPECT_EQ(shown->model()->rowCount(), 3);
    table->setRowHeight(24.6);
    EXPECT_EQ(shown->rowHeight(2), 25);
    EXPECT_EQ(table->rowHeight(), 24.6);
    source->rows = 10'000'000;
    table->reloadData();
    table->setRowHeight(1e9);
    EXPECT_EQ(shown->rowHeight(0), 10'000);
    EXPECT_LT(shown->verticalHeader()->length(), std::numeric_limits<int>::max());
}

TEST_F(TablePeers, selectsTheRowThatIsClicked) {
    const Ref<ScreenTableListener> listener = make<ScreenTableListener>();
    table->setDelegate(listener);
    click(cell(1, 2));
    EXPECT_EQ(selection(), "2");
    EXPECT_EQ(listener->selections, 1);
    click(cell(0, 2));
    EXPECT_EQ(listener->selections, 1);
    click(cell(0, 4), Qt::ShiftModifier);
    EXPECT_EQ(selection(), "4");
    click(cell(0, 4), Qt::ControlModifier);
    EXPECT_EQ(selection(), "");
    EXPECT_EQ(shownSelection(), "");
}

TEST_F(TablePeers, selectsRowsByKeys) {
    click(cell(0, 2));
    key(Qt::Key_Down);
    EXPECT_EQ(selection(), "3");
    key(Qt::Key_Up);
    key(Qt::Key_Up);
    EXPECT_EQ(selection(), "1");
    key(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(selection(), "19");
    EXPECT_EQ(shown->verticalScrollBar()->value(), shown->verticalScrollBar()->maximum());
    table->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(7), false);
    key(Qt::Key_Down);
    EXPECT_EQ(selection(), "8");
}

TEST_F(TablePeers, tellsItsObserversOfClicksKeysAndTheWheel) {
    std::string told;
    eventObserver_forEventAction(
        table, [&told](NSEvent*) { told += "down "; }, "mouseDown:"_sel);
    eventObserver_forEventAction(
        table, [&told](NSEvent*) { told += "up "; }, "mouseUp:"_sel);
    eventObserver_forEventAction(
        table, [&told](NSEvent* event) { told += "key " + event->characters()->utf8() + ' '; }, "keyDown:"_sel);
    eventObserver_forEventAction(
        table, [&told](NSEvent*) { told += "wheel "; }, "scrollWheel:"_sel);
    click(cell(0, 1));
    key(Qt::Key_X);
    QWheelEvent wheel(cell(0, 1), shown->viewport()->mapToGlobal(cell(0, 1)), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(shown->viewport(), &wheel);
    EXPECT_EQ(told, "down up key x wheel ");
    EXPECT_EQ(selection(), "1");
    EXPECT_GT(shown->verticalScrollBar()->value(), 0);
}

TEST_F(TablePeers, selectsSeveralRowsWhereThatIsAllowed) {
    table->setAllowsMultipleSelection(true);
    click(cell(0, 1));
    click(cell(0, 3), Qt::ShiftModifier);
    EXPECT_EQ(selection(), "1,2,3");
    click(cell(0, 5), Qt::ControlModifier);
    click(cell(0, 2), Qt::ControlModifier);
    EXPECT_EQ(selection(), "1,3,5");
    EXPECT_EQ(shownSelection(), "1,3,5");
    source->rows = 100'000;
    table->reloadData();
    settle();
    source->asked.clear();
    key(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(table->numberOfSelectedRows(), 100'000);
    EXPECT_LT(source->askedRows().size(), 50U);
    table->setAllowsMultipleSelection(false);
    EXPECT_EQ(shownSelection(), "0");
}

TEST_F(TablePeers, keepsARowSelectedWhereThereMustBeOne) {
    table->setAllowsEmptySelection(false);
    EXPECT_EQ(shownSelection(), "0");
    click(cell(0, 2));
    click(cell(0, 2), Qt::ControlModifier);
    EXPECT_EQ(selection(), "2");
    EXPECT_EQ(shownSelection(), "2");
    source->rows = 4;
    table->reloadData();
    click({50, shown->viewport()->height() - 5});
    EXPECT_EQ(selection(), "2");
    EXPECT_EQ(shownSelection(), "2");
    table->setAllowsEmptySelection(true);
    click({50, shown->viewport()->height() - 5});
    EXPECT_EQ(selection(), "");
}

TEST_F(TablePeers, showsWhatTheProgramSelects) {
    const Ref<ScreenTableListener> listener = make<ScreenTableListener>();
    table->setDelegate(listener);
    table->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(4), false);
    EXPECT_EQ(shownSelection(), "4");
    EXPECT_EQ(listener->selections, 1);
    table->removeTableColumn(column("bid"_ns));
    table->addTableColumn(make<NSTableColumn>(&NSTableColumn::initWithIdentifier, "new"_ns));
    EXPECT_EQ(shownSelection(), "4");
    EXPECT_TRUE(shown->selectionModel()->isRowSelected(4));
    source->rows = 4;
    table->reloadData();
    EXPECT_EQ(shownSelection(), "");
    EXPECT_EQ(listener->selections, 2);
}

TEST_F(TablePeers, isNotSearchedByTyping) {
    source->rows = 100'000;
    table->reloadData();
    click(cell(0, 2));
    source->asked.clear();
    QTest::keyClicks(shown, "bid9");
    settle();
    EXPECT_EQ(selection(), "2");
    EXPECT_LT(source->askedRows().size(), 50U);
}

TEST_F(TablePeers, sendsItsActionsForClicks) {
    const Ref<ScreenTableListener> listener = make<ScreenTableListener>();
    table->setTarget(listener);
    table->setAction("clicked:"_sel);
    table->setDoubleAction("twice:"_sel);
    table->moveColumn_toColumn(2, 0);
    click(cell(1, 3));
    EXPECT_EQ(listener->log, "1,3|");
    QTest::mouseDClick(shown->window()->windowHandle(), Qt::LeftButton, {}, inWindow(*shown->viewport(), cell(1, 3)));
    settle();
    EXPECT_NE(listener->log.find("twice|"), std::string::npos);
}

TEST_F(TablePeers, mayBeLetGoByItsOwnAction) {
    const Ref<ScreenTableListener> listener = make<ScreenTableListener>();
    table->setTarget(listener);
    table->setAction("clicked:"_sel);
    listener->letsGo = &table;
    const QPointer<QTableView> widget(shown);
    click(cell(1, 3));
    EXPECT_EQ(listener->log, "1,3|");
    EXPECT_FALSE(table);
    EXPECT_TRUE(QTest::qWaitFor([&widget] { return widget.isNull(); }, 5000));
}

TEST_F(TablePeers, outlivesItsWidget) {
    table->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(4), false);
    delete qt::widget(table);
    table->reloadData();
    table->scrollRowToVisible(5);
    table->reloadDataForRowIndexes_columnIndexes(NSIndexSet::indexSetWithIndex(1), NSIndexSet::indexSetWithIndex(1));
    show();
    EXPECT_EQ(shownSelection(), "4");
    click(cell(0, 2));
    EXPECT_EQ(selection(), "2");
}

TEST_F(TablePeers, alignsTextByItsColumn) {
    source->text = "7";
    column("ask"_ns)->setAlignment(NSTextAlignmentRight);
    column("last"_ns)->setAlignment(NSTextAlignmentCenter);
    settle();
    const QRect cells[] = {cellRect(0, 1), cellRect(1, 1), cellRect(2, 1)};
    const auto third = [this, &cells](int cell, int which) {
        const QRect rect = cells[cell];
        return pixels({rect.left() + which * rect.width() / 3, rect.top(), rect.width() / 3, rect.height() - 1},
                      Qt::black) > 0;
    };
    const bool expected[3][3] = {{true, false, false}, {false, false, true}, {false, true, false}};
    for (int cell = 0; cell < 3; ++cell) {
        for (int which = 0; which < 3; ++which) {
            SCOPED_TRACE(std::to_string(cell) + " third " + std::to_string(which));
            EXPECT_EQ(third(cell, which), expected[cell][which]);
        }
    }
}

TEST_F(TablePeers, coloursTextsAndCells) {
    const Ref<ScreenTableStyles> styles = make<ScreenTableStyles>();
    styles->rows = 5;
    styles->lit = 2;
    styles->text = "MMMM";
    styles->styled =
        make<NSAttributedString>(&NSAttributedString::initWithString_attributes, "MMMM"_ns,
                                 dictionary({{NSForegroundColorAttributeName(), id(NSColor::blueColor())}}).get());
    table->setDataSource(styles);
    settle();
    EXPECT_GT(pixels(cellRect(0, 1), Qt::blue), 5);
    EXPECT_EQ(pixels(cellRect(0, 0), Qt::blue), 0);
    EXPECT_GT(pixels(cellRect(1, 2), Qt::red), 500);
    EXPECT_EQ(pixels(cellRect(0, 2), Qt::red), 0);
    table->selectRowIndexes_byExtendingSelection(NSIndexSet::indexSetWithIndex(2), false);
    EXPECT_GT(pixels(cellRect(1, 2), Qt::red), 500);
    styles->lit = -1;
    table->reloadDataForRowIndexes_columnIndexes(NSIndexSet::indexSetWithIndex(2), NSIndexSet::indexSetWithIndex(1));
    EXPECT_EQ(pixels(cellRect(1, 2), Qt::red), 0);
}

TEST_F(TablePeers, drawsATextOfSeveralStyles) {
    const Ref<ScreenTableStyles> styles = make<ScreenTableStyles>();
    styles->rows = 5;
    const Ref<NSMutableAttributedString> text =
        make<NSMutableAttributedString>(&NSMutableAttributedString::initWithString, "MMMM"_ns);
    text->addAttribute_value_range(NSForegroundColorAttributeName(), NSColor::blueColor(), NSMakeRange(0, 2));
    text->addAttribute_value_range(NSForegroundColorAttributeName(), NSColor::redColor(), NSMakeRange(2, 2));
    styles->styled = text;
    table->setDataSource(styles);
    settle();
    EXPECT_GT(pixels(cellRect(0, 1), Qt::blue), 3);
    EXPECT_GT(pixels(cellRect(0, 1), Qt::red), 3);
    EXPECT_EQ(pixels(cellRect(0, 2), Qt::red), 0);
}

TEST_F(TablePeers, ignoresClicksWhileItIsDisabled) {
    table->setEnabled(false);
    click(cell(0, 2));
    EXPECT_EQ(selection(), "");
    table->setEnabled(true);
    click(cell(0, 2));
    EXPECT_EQ(selection(), "2");
}

TEST_F(TablePeers, takesTheKeyboardByAClickAndPassesItOnByTab) {
    const Ref<NSWindow> window = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSMakeRect(50, 50, 400, 400),
                                                NSUInteger{NSWindowStyleMaskTitled});
    const Ref<NSTableView> other = make<NSTableView>(&NSTableView::initWithFrame, NSMakeRect(0, 0, 400, 200));
    window->contentView()->addSubview(table);
    table->setFrame(NSMakeRect(0, 200, 400, 200));
    window->contentView()->addSubview(other);
    window->makeKeyAndOrderFront(nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowActive(qt::widget(window)));
    shown = dynamic_cast<qt::TablePeer&>(*table->peer()).tableWidget();
    settle();
    click(cell(0, 2));
    EXPECT_EQ(selection(), "2");
    EXPECT_EQ(window->firstResponder(), table);
    QWindow* const keys = qt::widget(window)->windowHandle();
    QTest::keyClick(keys, Qt::Key_Down);
    EXPECT_EQ(selection(), "3");
    QTest::keyClick(keys, Qt::Key_Tab);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->firstResponder() == other; }, 5000));
    QTest::keyClick(keys, Qt::Key_Down);
    EXPECT_EQ(selection(), "3");
    QTest::keyClick(keys, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return window->firstResponder() == table; }, 5000));
    QTest::keyClick(keys, Qt::Key_Down);
    EXPECT_EQ(selection(), "4");
    table->removeFromSuperview();
    window->orderOut(nullptr);
}

TEST_F(TablePeers, leavesACellEmptyWhoseValueRaises) {
    const Ref<ScreenTableRaiser> raiser = make<ScreenTableRaiser>();
    table->setDataSource(raiser);
    bool hasRaised = false;
    try {
        QElapsedTimer timer;
        timer.start();
        qt::handleEventsUntil([&timer] { return timer.elapsed() > 5000; });
    } catch (const NSException&) {
        hasRaised = true;
    }
    EXPECT_TRUE(hasRaised);
    table->setDataSource(source);
    settle();
    EXPECT_EQ(shown->model()->rowCount(), 20);
}

} // namespace
} // namespace zr
