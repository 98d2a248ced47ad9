#include <zrbasic/platform/appkit/alert.h>
#include <zrbasic/platform/appkit/panel.h>
#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/foundation/dispatch_queue.h>
#include <zrbasic/platform/qt/message_box_p.h>
#include <zrbasic/platform/qt/session.h>
#include <zrbasic/platform/runtime/exception.h>

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

namespace zr {
namespace {

/// Ends a test that would wait for its user for ever.
class Watchdog {
  public:
    Watchdog() {
        m_timer.setSingleShot(true);
        QObject::connect(&m_timer, &QTimer::timeout, [] {
            std::fputs("nobody answered the message box\n", stderr);
            _exit(1);
        });
        m_timer.start(20'000);
    }

  private:
    QTimer m_timer;
};

class MessageBoxes : public testing::Test {
  protected:
    void addButtons(std::initializer_list<const char*> titles) const {
        for (const char* const title : titles) {
            alert->addButtonWithTitle(NSString::fromUtf8(title));
        }
    }

    /// Asks, and does that with the box as soon as it is shown.
    NSInteger ask(std::function<void(QMessageBox&)> answer) {
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&timer, &answer] {
            if (auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                timer.stop();
                answer(*box);
            }
        });
        timer.start(5);
        return currentToolkit().askUser(*alert);
    }

    /// From left to right.
    static std::vector<QAbstractButton*> buttonsOf(const QMessageBox& box) {
        const auto list = box.buttons();
        std::vector<QAbstractButton*> buttons(list.begin(), list.end());
        std::sort(buttons.begin(), buttons.end(), [&box](const QAbstractButton* one, const QAbstractButton* other) {
            return one->mapTo(&box, QPoint()).x() < other->mapTo(&box, QPoint()).x();
        });
        return buttons;
    }

    Watchdog watchdog;
    Ref<NSAlert> alert = make<NSAlert>();
};

TEST_F(MessageBoxes, giveTheNumberOfTheButtonPressed) {
    addButtons({"Sell", "Hold", "Buy"});
    for (std::size_t i = 0; i < 3; ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(ask([i](QMessageBox& box) { buttonsOf(box)[i]->click(); }), static_cast<NSInteger>(i));
    }
}

TEST_F(MessageBoxes, showTheTextsAsTheyAre) {
    alert->setMessageText("<b>1 & 2</b>"_ns);
    alert->setInformativeText("<i>more</i>"_ns);
    alert->setAlertStyle(NSAlertStyleCritical);
    addButtons({"A & B"});
    ask([](QMessageBox& box) {
        EXPECT_EQ(box.text(), "<b>1 & 2</b>");
        EXPECT_EQ(box.informativeText(), "<i>more</i>");
        EXPECT_EQ(box.icon(), QMessageBox::Critical);
        int texts = 0;
        for (const QLabel* const label : box.findChildren<QLabel*>()) {
            if (!label->text().isEmpty()) {
                ++texts;
                EXPECT_EQ(label->textFormat(), Qt::PlainText) << label->text().toStdString();
            }
        }
        EXPECT_EQ(texts, 2);
        EXPECT_EQ(box.buttons().first()->text(), "A && B");
        box.buttons().first()->click();
    });
}

TEST_F(MessageBoxes, haveTheIconOfTheirStyle) {
    struct Row {
        NSAlertStyle style;
        QMessageBox::Icon icon;
    };
    addButtons({"OK"});
    for (const Row row :
         {Row{NSAlertStyleWarning, QMessageBox::Warning}, Row{NSAlertStyleInformational, QMessageBox::Information},
          Row{NSAlertStyleCritical, QMessageBox::Critical}}) {
        SCOPED_TRACE(row.style);
        alert->setAlertStyle(row.style);
        ask([&row](QMessageBox& box) {
            EXPECT_EQ(box.icon(), row.icon);
            box.buttons().first()->click();
        });
    }
}

TEST_F(MessageBoxes, takeReturnForTheFirstButton) {
    addButtons({"Sell", "Cancel", "Buy"});
    EXPECT_EQ(ask([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); }), 0);
}

TEST_F(MessageBoxes, takeEscapeAndClosingForCancelOrTheLastButton) {
    const auto escape = [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); };
    const auto close = [](QMessageBox& box) { box.close(); };
    addButtons({"Sell", "Buy"});
    EXPECT_EQ(ask(escape), 1);
    EXPECT_EQ(ask(close), 1);
    alert = make<NSAlert>();
    addButtons({"Sell", "Cancel", "Buy", "Cancel"});
    EXPECT_EQ(ask(escape), 1);
    EXPECT_EQ(ask(close), 1);
}

TEST_F(MessageBoxes, canBeAnsweredWithoutButtonsOfTheirOwn) {
    EXPECT_EQ(ask([](QMessageBox& box) {
                  ASSERT_EQ(box.buttons().size(), 1);
                  box.buttons().first()->click();
              }),
              0);
}

TEST_F(MessageBoxes, letTheMainQueueGoOn) {
    addButtons({"OK"});
    bool hasRun = false;
    ask([&hasRun](QMessageBox& box) {
        dispatch_async(dispatch_get_main_queue(), [&hasRun, &box] {
            hasRun = true;
            box.buttons().first()->click();
        });
    });
    EXPECT_TRUE(hasRun);
}

TEST_F(MessageBoxes, closeAndPassOnWhatIsRaisedMeanwhile) {
    addButtons({"OK"});
    EXPECT_THROW(ask([](QMessageBox&) {
                     dispatch_async(dispatch_get_main_queue(),
                                    [] { NSException::raise(NSGenericException, "no quotes"); });
                 }),
                 NSException);
    EXPECT_FALSE(QApplication::activeModalWidget());
}

TEST_F(MessageBoxes, nest) {
    addButtons({"A", "B"});
    const Ref<NSAlert> inner = make<NSAlert>();
    inner->addButtonWithTitle("X"_ns);
    inner->addButtonWithTitle("Y"_ns);
    NSInteger innerAnswer = -1;
    const NSInteger answer = ask([&](QMessageBox& box) {
        QTimer::singleShot(20, [&box] {
            auto* const top = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_TRUE(top);
            EXPECT_NE(top, &box);
            buttonsOf(*top)[1]->click();
        });
        innerAnswer = currentToolkit().askUser(*inner);
        buttonsOf(box)[0]->click();
    });
    EXPECT_EQ(innerAnswer, 1);
    EXPECT_EQ(answer, 0);
}

TEST_F(MessageBoxes, answerForTheUserWhenTheirWindowIsTakenAway) {
    addButtons({"A", "B"});
    const Ref<NSWindow> window = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSMakeRect(10, 10, 200, 100),
                                                NSUInteger{NSWindowStyleMaskTitled});
    window->makeKeyAndOrderFront(nullptr);
    ASSERT_TRUE(QTest::qWaitFor([&window] { return window->isKeyWindow(); }, 5000));
    EXPECT_EQ(ask([&window](QMessageBox& box) {
                  EXPECT_EQ(box.parentWidget(), qt::widget(window));
                  window->dropPeer();
              }),
              1);
    window->orderOut(nullptr);
}

TEST_F(MessageBoxes, areAbortedWhenTheApplicationTerminates) {
    addButtons({"A", "Cancel"});
    const auto application = NSApplication::sharedApplication();
    QTimer::singleShot(0, [&application] { application->terminate(nullptr); });
    QTimer otherwise;
    QObject::connect(&otherwise, &QTimer::timeout, [] {
        if (auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            box->close();
        }
    });
    otherwise.start(3000);
    EXPECT_EQ(alert->runModal(), NSModalResponseAbort);
    EXPECT_FALSE(QApplication::activeModalWidget());
    application->run();
}

TEST_F(MessageBoxes, areRunByAlerts) {
    addButtons({"A", "B"});
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&timer] {
        if (auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            timer.stop();
            buttonsOf(*box)[1]->click();
        }
    });
    timer.start(5);
    EXPECT_EQ(alert->runModal(), NSAlertSecondButtonReturn);
}

} // namespace
} // namespace zr
