#include "desktop_testing.h"

#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/ui/responder.h>
#include <zrbasic/ui/text_field.h>

namespace zr {
namespace {

using test::becomes;
using test::click;
using test::middleOf;
using test::outputOf;
using test::pressKeyNumbered;

class KeyboardLayoutsOnDesktop : public test::Desktop {
  protected:
    KeyboardLayoutsOnDesktop() { outputOf("setxkbmap", {"-layout", "de,us"}); }
    ~KeyboardLayoutsOnDesktop() override { outputOf("setxkbmap", {"-layout", "us"}); }
};

TEST_F(KeyboardLayoutsOnDesktop, areThoseThatTheUserHas) {
    const std::vector<std::string> expected{"de", "us"};
    EXPECT_TRUE(becomes([&expected] { return currentToolkit().keyboardLayouts() == expected; }));
    currentToolkit().selectKeyboardLayout(1);
    EXPECT_TRUE(becomes([] { return currentToolkit().currentKeyboardLayout() == 1; }));
    for (const NSInteger nowhere : {NSInteger{-1}, NSInteger{2}, NSInteger{4}}) {
        SCOPED_TRACE(nowhere);
        currentToolkit().selectKeyboardLayout(nowhere);
        EXPECT_EQ(currentToolkit().currentKeyboardLayout(), 1);
    }
    currentToolkit().selectKeyboardLayout(0);
    EXPECT_TRUE(becomes([] { return currentToolkit().currentKeyboardLayout() == 0; }));
}

TEST_F(KeyboardLayoutsOnDesktop, areNotTakenForTheirVariants) {
    outputOf("setxkbmap", {"-layout", "us,us,de", "-variant", "dvorak,,nodeadkeys"});
    const std::vector<std::string> expected{"us(dvorak)", "us", "de(nodeadkeys)"};
    EXPECT_TRUE(becomes([&expected] { return currentToolkit().keyboardLayouts() == expected; }));
    currentToolkit().selectKeyboardLayout(0);
    EXPECT_TRUE(becomes([] { return currentToolkit().currentKeyboardLayout() == 0; }));
    changeTextInputSourceToABC(make<NSResponder>());
    EXPECT_TRUE(becomes([] { return currentToolkit().currentKeyboardLayout() == 1; })) << "the plain one";
    outputOf("setxkbmap", {"-variant", ""});
}

TEST_F(KeyboardLayoutsOnDesktop, decideWhatAKeyTypes) {
    const Ref<NSWindow> window = showWindow(NSMakeRect(200, 150, 300, 200), "Keys"_ns);
    const Ref<ZRXTextField> field = make<ZRXTextField>(&ZRXTextField::initWithFrame, NSMakeRect(40, 60, 160, 26));
    window->contentView()->addSubview(field);
    QTest::qWait(50);
    click(middleOf(field));
    ASSERT_TRUE(becomes([&field] { return field->currentEditor() != nullptr; }));
    // The one between "t" and "u".
    constexpr int key = 29;
    currentToolkit().selectKeyboardLayout(0);
    pressKeyNumbered(key);
    EXPECT_TRUE(becomes([&field] { return field->stringValue()->utf8() == "z"; })) << field->stringValue()->utf8();
    changeTextInputSourceToABC(field);
    pressKeyNumbered(key);
    EXPECT_TRUE(becomes([&field] { return field->stringValue()->utf8() == "zy"; })) << field->stringValue()->utf8();
    changeTextInputSourceToABC(field);
    EXPECT_EQ(currentToolkit().currentKeyboardLayout(), 1);
    currentToolkit().selectKeyboardLayout(0);
    pressKeyNumbered(key);
    EXPECT_TRUE(becomes([&field] { return field->stringValue()->utf8() == "zyz"; })) << field->stringValue()->utf8();
}

} // namespace
} // namespace zr
