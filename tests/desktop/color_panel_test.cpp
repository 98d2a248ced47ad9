#include "desktop_testing.h"

#include <zrbasic/ui/color_panel.h>
#include <zrbasic/ui/text_field.h>

namespace zr {
namespace {

using test::becomes;
using test::click;
using test::middleOf;
using test::outputOf;
using test::serverNumber;
using test::type;

class DesktopColorTaker : public NSObject {
    ZR_OBJECT(DesktopColorTaker, NSObject)
  public:
    void take(NSColor*) { ++count; }
    ZR_METHOD(take, "take:")

    int count = 0;
};

class ColorPanelOnDesktop : public test::Desktop {
  protected:
    ~ColorPanelOnDesktop() override {
        panelWithTarget_action(nullptr, {});
        panel->orderOut(nullptr);
    }

    const Ref<DesktopColorTaker> taker = make<DesktopColorTaker>();
    const Ref<NSColorPanel> panel = panelWithTarget_action(taker, "take:"_sel);
};

TEST_F(ColorPanelOnDesktop, choosingAColorLeavesTheKeyboardWhereItIs) {
    const Ref<NSWindow> window = showWindow(NSMakeRect(50, 450, 300, 200), "Document"_ns);
    const Ref<ZRXTextField> field = make<ZRXTextField>(&ZRXTextField::initWithFrame, NSMakeRect(40, 60, 160, 26));
    window->contentView()->addSubview(field);
    QTest::qWait(50);
    click(middleOf(field));
    ASSERT_TRUE(becomes([&field] { return field->currentEditor() != nullptr; }));
    type("a");
    ASSERT_TRUE(becomes([&field] { return field->stringValue()->utf8() == "a"; }));

    panel->setFrameOrigin({600, 100});
    panel->orderFront(nullptr);
    ASSERT_TRUE(becomes([this] { return qt::widget(panel.get()) && qt::widget(panel.get())->isVisible(); }));
    QTest::qWait(200);
    type("b");
    EXPECT_TRUE(becomes([&field] { return field->stringValue()->utf8() == "ab"; })) << "showing it takes nothing";

    const NSRect shown = test::contentOnServer(panel);
    taker->count = 0;
    // In the square of hues, at the upper right of the dialog.
    click({shown.origin.x + shown.size.width * 0.6, shown.origin.y + shown.size.height * 0.75});
    EXPECT_TRUE(becomes([this] { return taker->count == 2; })) << taker->count;
    EXPECT_FALSE(panel->color()->isEqual(NSColor::whiteColor()));
    type("c");
    EXPECT_TRUE(becomes([&field] { return field->stringValue()->utf8() == "abc"; })) << field->stringValue()->utf8();
    EXPECT_TRUE(window->isKeyWindow());
    EXPECT_FALSE(panel->isKeyWindow());
    EXPECT_EQ(outputOf("xdotool", {"getactivewindow"}).trimmed(), serverNumber(window));
}

} // namespace
} // namespace zr
