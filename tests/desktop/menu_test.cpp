#include "desktop_testing.h"

#include <zrbasic/platform/appkit/pop_up_button.h>

#include <QApplication>
#include <QMenu>
#include <QTimer>

namespace zr {
namespace {

using test::becomes;
using test::outputOf;
using test::pressKeys;
using test::serverPoint;

class MenuChoice : public NSObject {
    ZR_OBJECT(MenuChoice, NSObject)
  public:
    void chosen(NSObject* sender) {
        const auto* const item = cast<NSMenuItem>(sender);
        log += (item ? item->title() : cast<NSPopUpButton>(sender)->title())->utf8() + ' ';
    }
    ZR_METHOD(chosen, "chosen:")

    std::string log;
};

class MenusOnDesktop : public test::Desktop {
  protected:
    /// Does that once a menu is on the screen.
    static void onceOpen(std::function<void(QMenu&)> work) {
        auto* const timer = new QTimer(qApp);
        QObject::connect(timer, &QTimer::timeout, timer, [timer, work = std::move(work)] {
            auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            if (menu && menu->windowHandle() && menu->windowHandle()->isExposed()) {
                timer->stop();
                timer->deleteLater();
                // A moment for the pointer and the keyboard to be the menu's.
                QTest::qWait(100);
                work(*menu);
            }
        });
        timer->start(20);
    }
    static QStringList middleOf(const QMenu& menu, int item) {
        const QPoint point = menu.mapToGlobal(menu.actionGeometry(menu.actions()[item]).center());
        return {QString::number(point.x()), QString::number(point.y())};
    }

    const Ref<MenuChoice> choice = make<MenuChoice>();
};

TEST_F(MenusOnDesktop, openUnderTheRightButtonAndAreChosenFromByPointerAndKeys) {
    const Ref<NSWindow> window = showWindow(NSMakeRect(200, 150, 300, 200), "Orders"_ns);
    const Ref<NSMenu> menu = make<NSMenu>();
    for (const Ref<NSString>& title : {"Cancel"_ns, "Change"_ns}) {
        menu->addItemWithTitle_action_keyEquivalent(title, "chosen:"_sel, nullptr)->setTarget(choice);
    }
    window->contentView()->setMenu(menu);
    onceOpen([](QMenu& open) {
        outputOf("xdotool", QStringList{"mousemove"} + middleOf(open, 1) + QStringList{"click", "1"});
    });
    test::click(test::middleOf(window->contentView()), "3");
    EXPECT_TRUE(becomes([this] { return choice->log == "Change "; })) << choice->log;
    onceOpen([](QMenu&) { pressKeys({"Down", "Return"}); });
    test::click(test::middleOf(window->contentView()), "3");
    EXPECT_TRUE(becomes([this] { return choice->log == "Change Cancel "; })) << choice->log;
    EXPECT_TRUE(window->isKeyWindow());
}

TEST_F(MenusOnDesktop, ofAPopUpButtonTakeADragFromIt) {
    const Ref<NSWindow> window = showWindow(NSMakeRect(200, 150, 300, 200), "Rounding"_ns);
    const Ref<NSPopUpButton> button = make<NSPopUpButton>(&NSPopUpButton::initWithFrame, NSMakeRect(40, 60, 120, 26));
    button->addItemsWithTitles(NSArray::arrayWithObjects({"Plain"_ns, "Down"_ns, "Up"_ns}));
    button->setTarget(choice);
    button->setAction("chosen:"_sel);
    window->contentView()->addSubview(button);
    QTest::qWait(50);
    onceOpen([](QMenu& open) {
        outputOf("xdotool", QStringList{"mousemove"} + middleOf(open, 1));
        QTest::qWait(50);
        outputOf("xdotool", QStringList{"mousemove"} + middleOf(open, 2));
        QTest::qWait(50);
        outputOf("xdotool", {"mouseup", "1"});
    });
    outputOf("xdotool", QStringList{"mousemove"} + serverPoint(test::middleOf(button)) + QStringList{"mousedown", "1"});
    EXPECT_TRUE(becomes([this] { return choice->log == "Up "; })) << choice->log;
    EXPECT_EQ(button->indexOfSelectedItem(), 2);
    // A click opens the menu as well, and one beside it closes it again.
    bool wasOpen = false;
    onceOpen([&](QMenu&) {
        wasOpen = true;
        test::click({window->frame().origin.x + 250, window->frame().origin.y + 20});
    });
    test::click(test::middleOf(button));
    EXPECT_TRUE(becomes([&] { return wasOpen && !QApplication::activePopupWidget(); }));
    EXPECT_EQ(choice->log, "Up ");
    EXPECT_EQ(button->indexOfSelectedItem(), 2);
}

} // namespace
} // namespace zr
