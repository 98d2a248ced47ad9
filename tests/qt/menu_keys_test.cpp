#include "view_testing.h"

#include <zrbasic/platform/appkit/menu.h>

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

} // namespace
} // namespace zr::test
