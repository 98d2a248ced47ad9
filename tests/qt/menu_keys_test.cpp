#include "menu_testing.h"

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/text_field.h>
#include <zrbasic/platform/foundation/dispatch_queue.h>

namespace zr::test {
namespace {

/// Writes down which items were chosen.
class ChosenItems : public NSObject {
    ZR_OBJECT(ChosenItems, NSObject)
  public:
    void choose(NSObject* item) { log += cast<NSMenuItem>(item)->title()->utf8() + ' '; }
    ZR_METHOD(choose, "choose:")

    std::string log;
};

/// A view with a menu of its own.
class MenuKeysView : public NSView {
    ZR_OBJECT(MenuKeysView, NSView)
  public:
    bool performKeyEquivalent(NSEvent* event) override { return menu->performKeyEquivalent(event); }

    Ref<NSMenu> menu = make<NSMenu>();
};

class MenuKeys : public ViewWindow {
  protected:
    void SetUp() override {
        view = make<MenuKeysView>(&MenuKeysView::initWithFrame, NSRect{{0, 0}, {10, 10}});
        content->addSubview(view);
        for (const auto& [title, key] : {std::pair{"Save", "s"}, {"SaveAs", "S"}}) {
            view->menu
                ->addItemWithTitle_action_keyEquivalent(NSString::stringWithUTF8String(title), "choose:"_sel,
                                                        NSString::stringWithUTF8String(key))
                ->setTarget(chosen);
        }
        show();
    }
    std::string press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QTest::keyClick(handle(), key, modifiers);
        return std::exchange(chosen->log, {});
    }

    Ref<MenuKeysView> view;
    const Ref<ChosenItems> chosen = make<ChosenItems>();
};

TEST_F(MenuKeys, aSmallLetterIsItsKeyWithControl) {
    EXPECT_EQ(press(Qt::Key_S, Qt::ControlModifier), "Save ");
    EXPECT_EQ(press(Qt::Key_S, Qt::NoModifier), "");
    EXPECT_EQ(press(Qt::Key_S, Qt::AltModifier), "");
    EXPECT_EQ(press(Qt::Key_S, Qt::ControlModifier | Qt::AltModifier), "");
    EXPECT_EQ(press(Qt::Key_T, Qt::ControlModifier), "");
}

TEST_F(MenuKeys, aCapitalLetterIsTheKeyWithControlAndShift) {
    EXPECT_EQ(press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier), "SaveAs ");
    view->menu->itemWithTitle("SaveAs"_ns)->setEnabled(false);
    EXPECT_EQ(press(Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier), "");
    EXPECT_EQ(press(Qt::Key_S, Qt::ControlModifier), "Save ");
}

/// A menu of the application, and a field in a window of ours.
class MainMenuKeys : public ViewWindow {
  protected:
    void SetUp() override {
        add("Save", "s", NSEventModifierFlagCommand);
        add("Up", "\uF700", NSEventModifierFlagOption);
        add("Far up", "\uF700", NSEventModifierFlagOption | NSEventModifierFlagShift);
        add("Nudge", "n", NSEventModifierFlagOption);
        add("Reload", "\uF708", 0);
        add("Flatten", "\uF708", NSEventModifierFlagControl);
        add("Plain arrow", "\uF701", 0);
        NSApplication::sharedApplication()->setMainMenu(menu);
        field->setStringValue("100"_ns);
        content->addSubview(field);
        show();
    }
    ~MainMenuKeys() override {
        NSApplication::sharedApplication()->setMainMenu(nullptr);
        field = nullptr;
    }

    void add(const char* title, const char* key, NSUInteger mask) {
        const auto item = menu->addItemWithTitle_action_keyEquivalent(NSString::fromUtf8(title), "choose:"_sel,
                                                                      NSString::fromUtf8(key));
        item->setKeyEquivalentModifierMask(mask);
        item->setTarget(chosen);
    }
    std::string press(QWindow* in, Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QTest::keyClick(in, key, modifiers);
        return std::exchange(chosen->log, {});
    }

    const Ref<NSMenu> menu = make<NSMenu>();
    const Ref<ChosenItems> chosen = make<ChosenItems>();
    Ref<NSTextField> field = make<NSTextField>(&NSTextField::initWithFrame, NSRect{{20, 20}, {100, 24}});
};

TEST_F(MainMenuKeys, workInAWindow) {
    EXPECT_EQ(press(handle(), Qt::Key_S, Qt::ControlModifier), "Save ");
    EXPECT_EQ(press(handle(), Qt::Key_Up, Qt::AltModifier), "Up ");
    EXPECT_EQ(press(handle(), Qt::Key_Up, Qt::AltModifier | Qt::ShiftModifier), "Far up ");
    EXPECT_EQ(press(handle(), Qt::Key_N, Qt::AltModifier), "Nudge ");
    EXPECT_EQ(press(handle(), Qt::Key_F5, Qt::NoModifier), "Reload ");
    EXPECT_EQ(press(handle(), Qt::Key_F5, Qt::MetaModifier), "Flatten ");
    EXPECT_EQ(press(handle(), Qt::Key_F5, Qt::ShiftModifier), "");
    EXPECT_EQ(press(handle(), Qt::Key_Up, Qt::NoModifier), "");
    EXPECT_EQ(press(handle(), Qt::Key_Down, Qt::NoModifier), "Plain arrow ") << "which no view wanted";
}

TEST_F(MainMenuKeys, workWhileAFieldIsEditedAndLeaveItItsOwn) {
    window->makeFirstResponder(field);
    ASSERT_TRUE(field->currentEditor());
    EXPECT_EQ(press(handle(), Qt::Key_Up, Qt::AltModifier), "Up ");
    EXPECT_EQ(press(handle(), Qt::Key_F5, Qt::NoModifier), "Reload ");
    EXPECT_EQ(press(handle(), Qt::Key_S, Qt::ControlModifier), "Save ");
    EXPECT_EQ(press(handle(), Qt::Key_N, Qt::AltModifier), "Nudge ");
    EXPECT_EQ(field->stringValue()->utf8(), "100") << "nothing of it was typed";
    EXPECT_EQ(press(handle(), Qt::Key_A, Qt::ControlModifier), "");
    EXPECT_EQ(field->currentEditor()->selectedRange().length, 3u) << "which no item stands for";
    QTest::keyClicks(host()->focusWidget(), "7s");
    EXPECT_EQ(chosen->log, "");
    EXPECT_EQ(field->stringValue()->utf8(), "7s") << "plain letters are typed";
    EXPECT_TRUE(field->currentEditor());
}

TEST_F(MainMenuKeys, workInAWindowOfQtWithViewsInIt) {
    QWidget around;
    around.resize(200, 100);
    const auto view = loggingView({{0, 0}, {50, 50}});
    qt::widget(view)->setParent(&around);
    qt::widget(view)->show();
    around.show();
    around.activateWindow();
    ASSERT_TRUE(eventually([&] { return around.isActiveWindow(); }));
    EXPECT_EQ(press(around.windowHandle(), Qt::Key_S, Qt::ControlModifier), "Save ");
    EXPECT_EQ(press(around.windowHandle(), Qt::Key_F5, Qt::NoModifier), "Reload ");
    view->shortcut = "s"_ns;
    EXPECT_EQ(press(around.windowHandle(), Qt::Key_S, Qt::ControlModifier), "") << "what is in the window comes first";
    EXPECT_EQ(view->take(), "in shortcut ");
    around.setWindowModality(Qt::ApplicationModal);
    around.hide();
    around.show();
    ASSERT_TRUE(eventually([&] { return QApplication::activeModalWidget() == &around; }));
    EXPECT_EQ(press(around.windowHandle(), Qt::Key_F5, Qt::NoModifier), "") << "a dialog that Qt runs modally";
}

TEST_F(MainMenuKeys, areOutOfReachInAModalSession) {
    dispatch_async(dispatch_get_main_queue(), [this] {
        EXPECT_EQ(press(handle(), Qt::Key_S, Qt::ControlModifier), "");
        EXPECT_EQ(press(handle(), Qt::Key_F5, Qt::NoModifier), "");
        NSApplication::sharedApplication()->stopModal();
    });
    NSApplication::sharedApplication()->runModalForWindow(window);
    window->makeKeyAndOrderFront(nullptr);
    EXPECT_EQ(press(handle(), Qt::Key_S, Qt::ControlModifier), "Save ");
}

TEST_F(MainMenuKeys, waitUntilAMenuOnTheScreenIsGone) {
    std::string meanwhile = "none";
    {
        const MenuUser user({[&](QMenu& open) {
            QTest::keyClick(&open, Qt::Key_S, Qt::ControlModifier);
            QTest::keyClick(handle(), Qt::Key_F5);
            meanwhile = std::exchange(chosen->log, {});
            open.close();
        }});
        EXPECT_FALSE(menu->popUpMenuPositioningItem_atLocation_inView(nullptr, {10, 10}, content));
    }
    EXPECT_EQ(meanwhile, "");
    EXPECT_EQ(press(handle(), Qt::Key_F5, Qt::NoModifier), "Reload ");
}

} // namespace
} // namespace zr::test
