#pragma once

#include <zrbasic/platform/appkit/text_view.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/notification_center.h>
#include <zrbasic/platform/foundation/number.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

namespace zr::test {

/// A delegate that can answer everything, and writes down what it is told and asked.
class TextDelegate : public NSObject {
    ZR_OBJECT(TextDelegate, NSObject)
  public:
    bool shouldBegin(NSText*) {
        log += "begin? ";
        run(whenAsked);
        return mayBegin;
    }
    ZR_METHOD(shouldBegin, "textShouldBeginEditing:")
    bool shouldEnd(NSText*) {
        log += "end? ";
        return mayEnd;
    }
    ZR_METHOD(shouldEnd, "textShouldEndEditing:")
    void didBegin(NSNotification* notification) { hear("begun", notification); }
    ZR_METHOD(didBegin, "textDidBeginEditing:")
    void didChange(NSNotification* notification) { hear("changed", notification); }
    ZR_METHOD(didChange, "textDidChange:")
    void didEnd(NSNotification* notification) { hear("ended", notification); }
    ZR_METHOD(didEnd, "textDidEndEditing:")
    bool command(NSTextView*, SEL action) {
        log += std::string(action.name()) + ' ';
        return takesCommands;
    }
    ZR_METHOD(command, "textView:doCommandBySelector:")
    bool click(NSTextView*, NSObject* link, NSUInteger index) {
        log += "click " + (link ? link->description()->utf8() : "(null)") + ' ' + std::to_string(index) + ' ';
        return takesClicks;
    }
    ZR_METHOD(click, "textView:clickedOnLink:atIndex:")

    std::string heard() { return std::exchange(log, ""); }

    std::string log;
    Ref<NSNotification> last;
    bool mayBegin = true;
    bool mayEnd = true;
    bool takesCommands = false;
    bool takesClicks = false;
    std::function<void()> whenAsked;
    std::function<void()> whenTold;

  private:
    static void run(const std::function<void()>& action) {
        if (const auto running = action) {
            running();
        }
    }
    void hear(const char* what, NSNotification* notification) {
        last = Ref<NSNotification>(notification);
        log += what;
        const Ref<NSDictionary> userInfo = notification->userInfo();
        if (auto* const movement = cast<NSNumber>(userInfo ? userInfo->peek(NSTextMovementKey()) : nullptr)) {
            log += '/' + movement->description()->utf8();
        }
        log += ' ';
        run(whenTold);
    }
};

/// A window with a text view in it, which has a delegate, and stands for a field editor if the test wants it.
class TextViewTest : public testing::Test {
  protected:
    TextViewTest() {
        window->contentView()->addSubview(view);
        view->setDelegate(delegate);
    }
    ~TextViewTest() override { NSNotificationCenter::defaultCenter()->removeObserver(delegate); }

    std::string text() { return view->string()->utf8(); }
    void show(const char* shown, NSRange selection) {
        view->setString(NSString::fromUtf8(shown));
        view->setSelectedRange(selection);
    }
    bool isFirst() { return window->firstResponder() == view; }

    Ref<NSWindow> window = make<NSWindow>();
    Ref<NSTextView> view = make<NSTextView>(&NSTextView::initWithFrame, NSMakeRect(0, 0, 100, 20));
    Ref<TextDelegate> delegate = make<TextDelegate>();
};

} // namespace zr::test
