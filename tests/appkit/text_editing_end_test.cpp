#include "text_listening.h"
#include "text_toolkit.h"

#include <zrbasic/platform/appkit/beep.h>
#include <zrbasic/platform/runtime/message.h>

#include <gtest/gtest.h>

#include <string>

namespace zr {
namespace {

using test::TextDelegate;
using test::TextViewTest;

/// Listens at the default notification centre.
class CenterListener : public NSObject {
    ZR_OBJECT(CenterListener, NSObject)
  public:
    void hear(NSNotification* notification) {
        log += notification->name()->utf8() + ' ';
        object = notification->object();
    }
    ZR_METHOD(hear, "hear:")

    std::string log;
    id object;
};

class TextEditingEnd : public TextViewTest {
  protected:
    TextEditingEnd() { view->setFieldEditor(true); }
};

TEST_F(TextEditingEnd, beginsWithTheKeyboardAndEndsWithIt) {
    ASSERT_TRUE(window->makeFirstResponder(view));
    EXPECT_EQ(delegate->heard(), "begin? begun ");
    EXPECT_EQ(delegate->last->object(), view);
    EXPECT_EQ(delegate->last->userInfo(), nullptr);
    EXPECT_TRUE(view->insertText("a"_ns));
    EXPECT_EQ(delegate->heard(), "changed ");
    ASSERT_TRUE(window->makeFirstResponder(nullptr));
    EXPECT_EQ(delegate->heard(), "end? ended/0 ");
    EXPECT_EQ(delegate->last->name()->utf8(), "NSTextDidEndEditingNotification");
    ASSERT_TRUE(window->makeFirstResponder(view));
    ASSERT_TRUE(window->makeFirstResponder(nullptr));
    EXPECT_EQ(delegate->heard(), "begin? begun end? ended/0 ");
}

TEST_F(TextEditingEnd, isToldAtTheNotificationCenterToo) {
    const auto listener = make<CenterListener>();
    const auto center = NSNotificationCenter::defaultCenter();
    center->addObserver_selector_name_object(listener, "hear:"_sel, nullptr, view);
    window->makeFirstResponder(view);
    view->insertText("a"_ns);
    window->makeFirstResponder(nullptr);
    EXPECT_EQ(listener->log,
              "NSTextDidBeginEditingNotification NSTextDidChangeNotification "
              "NSTextDidEndEditingNotification ");
    EXPECT_EQ(listener->object, view);
    center->removeObserver(listener);
}

TEST_F(TextEditingEnd, followsTheKeysOfAField) {
    const struct {
        const char* command;
        const char* heard;
    } rows[] = {
        {"insertNewline:", "insertNewline: end? ended/16 "},
        {"insertTab:", "insertTab: end? ended/17 "},
        {"insertBacktab:", "insertBacktab: end? ended/18 "},
        {"cancelOperation:", "cancelOperation: end? ended/23 "},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.command);
        window->makeFirstResponder(view);
        delegate->heard();
        send<void>(view, "doCommandBySelector:"_sel, sel_registerName(row.command));
        EXPECT_EQ(delegate->heard(), row.heard);
        EXPECT_EQ(window->firstResponder(), window);
    }
    EXPECT_EQ(text(), "");
}

TEST_F(TextEditingEnd, doesNotComeWhenTheDelegateDealsWithTheKey) {
    window->makeFirstResponder(view);
    delegate->heard();
    delegate->takesCommands = true;
    view->doCommandBySelector("insertNewline:"_sel);
    EXPECT_EQ(delegate->heard(), "insertNewline: ");
    EXPECT_TRUE(isFirst());
    const std::uint64_t beeps = beepCount();
    view->doCommandBySelector("noSuchCommand:"_sel);
    EXPECT_EQ(beepCount(), beeps);
    delegate->takesCommands = false;
    view->doCommandBySelector("noSuchCommand:"_sel);
    EXPECT_EQ(beepCount(), beeps + 1);
    EXPECT_TRUE(isFirst());
}

TEST_F(TextEditingEnd, canBeRefusedAndForgetsTheMovementThen) {
    window->makeFirstResponder(view);
    delegate->mayEnd = false;
    delegate->heard();
    view->insertNewline(nullptr);
    EXPECT_EQ(delegate->heard(), "end? ");
    EXPECT_TRUE(isFirst());
    EXPECT_FALSE(window->makeFirstResponder(nullptr));
    delegate->mayEnd = true;
    delegate->heard();
    EXPECT_TRUE(window->makeFirstResponder(nullptr));
    EXPECT_EQ(delegate->heard(), "end? ended/0 ");
}

TEST_F(TextEditingEnd, reportsTheMovementThatAToolkitHasSetOnce) {
    window->makeFirstResponder(view);
    view->setTextMovement(NSTextMovementBacktab);
    delegate->heard();
    window->makeFirstResponder(nullptr);
    EXPECT_EQ(delegate->heard(), "end? ended/18 ");
    window->makeFirstResponder(view);
    delegate->heard();
    window->makeFirstResponder(nullptr);
    EXPECT_EQ(delegate->heard(), "end? ended/0 ");
}

TEST_F(TextEditingEnd, comesOnceAlsoWhenTheEditorIsTakenOutMeanwhile) {
    window->makeFirstResponder(view);
    delegate->heard();
    delegate->whenTold = [this] { view->removeFromSuperview(); };
    view->insertTab(nullptr);
    EXPECT_EQ(delegate->heard(), "end? ended/17 ");
    EXPECT_EQ(window->firstResponder(), window);
    EXPECT_EQ(view->window(), nullptr);
}

TEST_F(TextEditingEnd, isToldByAFieldEditorThatWasNotAllowedToBegin) {
    delegate->mayBegin = false;
    ASSERT_TRUE(window->makeFirstResponder(view));
    EXPECT_TRUE(isFirst());
    EXPECT_FALSE(view->insertText("a"_ns));
    EXPECT_EQ(delegate->heard(), "begin? begin? ");
    window->makeFirstResponder(nullptr);
    EXPECT_EQ(delegate->heard(), "ended/0 ");
    delegate->mayBegin = true;
    window->makeFirstResponder(view);
    window->makeFirstResponder(nullptr);
    EXPECT_EQ(delegate->heard(), "begin? begun end? ended/0 ");
}

TEST_F(TextEditingEnd, isNotToldByATextThatWasOnlyRead) {
    view->setFieldEditor(false);
    view->setEditable(false);
    ASSERT_TRUE(window->makeFirstResponder(view));
    ASSERT_TRUE(window->makeFirstResponder(nullptr));
    EXPECT_EQ(delegate->heard(), "");
}

TEST_F(TextEditingEnd, worksWithoutAWindow) {
    view->removeFromSuperview();
    EXPECT_TRUE(view->insertText("a"_ns));
    view->insertNewline(nullptr);
    EXPECT_EQ(delegate->heard(), "begin? begun changed end? ended/16 ");
    EXPECT_TRUE(view->resignFirstResponder());
    EXPECT_EQ(delegate->heard(), "");
}

TEST_F(TextEditingEnd, asksOnlyADelegateThatResponds) {
    view->setDelegate(make<NSObject>());
    ASSERT_TRUE(window->makeFirstResponder(view));
    EXPECT_TRUE(view->insertText("a"_ns));
    view->doCommandBySelector("insertNewline:"_sel);
    EXPECT_EQ(window->firstResponder(), window);
    view->setDelegate(nullptr);
    ASSERT_TRUE(window->makeFirstResponder(view));
    view->cancelOperation(nullptr);
    EXPECT_EQ(window->firstResponder(), window);
    EXPECT_EQ(delegate->heard(), "");
}

TEST_F(TextEditingEnd, keepsTheTextThatIsSetWhenEditingBegins) {
    delegate->whenTold = [this] {
        delegate->whenTold = nullptr;
        show("12", {0, 1});
    };
    view->setString("a long text"_ns);
    EXPECT_TRUE(view->insertText("X"_ns));
    EXPECT_EQ(text(), "X2");
}

} // namespace
} // namespace zr
