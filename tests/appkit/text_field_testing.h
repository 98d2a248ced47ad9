#pragma once

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/text_field.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/notification_center.h>
#include <zrbasic/platform/foundation/number.h>

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace zr::test {

/// Agrees to everything unless told otherwise, and writes down what it is told.
class FieldDelegate : public NSObject {
    ZR_OBJECT(FieldDelegate, NSObject)
  public:
    bool shouldBegin(NSObject*, NSObject*) { return mayBegin; }
    ZR_METHOD(shouldBegin, "control:textShouldBeginEditing:")
    bool shouldEnd(NSObject*, NSObject*) {
        log += "should end\n";
        return mayEnd;
    }
    ZR_METHOD(shouldEnd, "control:textShouldEndEditing:")
    void begin(NSNotification* notification) { tell("begin", notification); }
    ZR_METHOD(begin, "controlTextDidBeginEditing:")
    void change(NSNotification* notification) { tell("change", notification); }
    ZR_METHOD(change, "controlTextDidChange:")
    void end(NSNotification* notification) {
        const id movement = notification->userInfo()->objectForKey("NSTextMovement"_ns);
        tell("end " + movement->description()->utf8(), notification);
        if (whenEnded) {
            whenEnded();
        }
    }
    ZR_METHOD(end, "controlTextDidEndEditing:")
    bool command(NSObject*, NSObject*, SEL action) {
        log += std::string(action.name()) + '\n';
        return takesCommands;
    }
    ZR_METHOD(command, "control:textView:doCommandBySelector:")
    void act(NSObject* sender) {
        log += "act " + cast<NSTextField>(sender)->stringValue()->utf8() + '\n';
        if (whenActing) {
            whenActing();
        }
    }
    ZR_METHOD(act, "act:")

    std::string log;
    bool mayBegin = true;
    bool mayEnd = true;
    bool takesCommands = false;
    std::function<void()> whenEnded;
    std::function<void()> whenActing;

  private:
    void tell(const std::string& what, NSNotification* notification) {
        const auto field = cast<NSTextField>(notification->object());
        log += what + ' ' + (field ? field->stringValue()->utf8() : "?") + '\n';
        EXPECT_NE(cast<NSText>(notification->userInfo()->objectForKey("NSFieldEditor"_ns)), nullptr);
    }
};

/// A window, and two fields in it from left to right.
template <class Field>
class FieldsInWindow : public testing::Test {
  protected:
    FieldsInWindow() {
        window->contentView()->addSubview(field);
        window->contentView()->addSubview(other);
        field->setDelegate(delegate);
    }

    [[nodiscard]] Ref<NSTextView> editor() const {
        return cast<NSTextView>(window->fieldEditor_forObject(false, nullptr));
    }
    /// As a key that stands for a command.
    void press(SEL command) const { send<void>(window->firstResponder(), "doCommandBySelector:"_sel, command); }
    [[nodiscard]] bool isEdited(NSTextField* one) const {
        return editor() && one->currentEditor() == editor() && window->firstResponder() == editor();
    }
    [[nodiscard]] std::string shown() const { return editor()->string()->utf8(); }

    const Ref<NSWindow> window = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{{0, 0}, {400, 200}},
                                                NSUInteger{NSWindowStyleMaskTitled});
    const Ref<Field> field = make<Field>(&Field::initWithFrame, NSRect{{10, 100}, {120, 24}});
    const Ref<Field> other = make<Field>(&Field::initWithFrame, NSRect{{200, 100}, {120, 24}});
    const Ref<FieldDelegate> delegate = make<FieldDelegate>();
};

} // namespace zr::test
