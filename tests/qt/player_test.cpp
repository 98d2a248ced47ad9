#include "field_testing.h"
#include "view_testing.h"

#include <examples/actions/player.h>

#include <zrbasic/platform/appkit/menu.h>
#include <zrbasic/platform/appkit/menu_item.h>
#include <zrbasic/platform/appkit/pop_up_button.h>
#include <zrbasic/platform/appkit/table_view.h>
#include <zrbasic/ui/callback_target.h>
#include <zrbasic/ui/menu_item.h>

#include <QTemporaryDir>
#include <QTimer>

#include <fstream>
#include <optional>

namespace zr::test {
namespace {

class RecordedActions : public FieldWindow {
  protected:
    void SetUp() override { show(); }

    /// A player of these lines.
    actions::Player& load(const std::string& lines) {
        const std::string file = m_folder.filePath("actions").toStdString();
        std::ofstream(file, std::ios::binary) << lines;
        return m_player.emplace(file);
    }
    /// Plays these lines to the end; what went wrong, without the file's name.
    std::string play(const std::string& lines) {
        bool isOver = false;
        load(lines).start([&isOver] {
            isOver = true;
            // An application that terminates does so.
            if (QWidget* const menu = QApplication::activePopupWidget()) {
                menu->close();
            }
        });
        EXPECT_TRUE(eventually([&isOver] { return isOver; }));
        const std::string fault = m_player->fault();
        return fault.substr(fault.empty() ? 0 : fault.find("actions") + 7);
    }
    void endPlayer() { m_player.reset(); }

    Ref<LoggingView> logging(NSRect frame) {
        const auto view = loggingView(frame);
        view->setIdentifier("view"_ns);
        view->takesKeys = true;
        window->contentView()->addSubview(view);
        view->take();
        return view;
    }
    /// Where an event was, in the view.
    static std::string placeOf(NSEvent* event, NSView* view) {
        const NSPoint at = view->convertPoint_fromView(event->locationInWindow(), nullptr);
        return std::to_string(int(at.x)) + ',' + std::to_string(int(at.y));
    }

  private:
    QTemporaryDir m_folder;
    std::optional<actions::Player> m_player;
};

TEST_F(RecordedActions, clickWhereTheyWereDone) {
    const auto view = logging({{20, 20}, {100, 60}});
    EXPECT_EQ(play(R"({"click": "view"})"), "");
    EXPECT_EQ(view->take(), "down up ");
    EXPECT_EQ(placeOf(view->last, view), "50,30");
    EXPECT_EQ(play(R"({"click": "view", "at": [10, 5]})"), "");
    EXPECT_EQ(placeOf(view->last, view), "10,55") << "counted from the upper left corner";
    view->flips = true;
    EXPECT_EQ(play(R"({"click": "view", "at": [30, 5]})"), "");
    EXPECT_EQ(placeOf(view->last, view), "30,5");
    view->take();
    EXPECT_EQ(play(R"({"click": "view", "button": "right"})"), "");
    EXPECT_EQ(view->take(), "rightDown rightUp ");
}

TEST_F(RecordedActions, clickAsOftenAsTheySay) {
    const auto view = logging({{200, 20}, {100, 60}});
    std::string counts;
    view->onEvent = [&] { counts += std::to_string(view->last->clickCount()); };
    EXPECT_EQ(play(R"({"click": "view", "times": 2})"), "");
    EXPECT_EQ(view->take(), "down up down up ");
    EXPECT_EQ(counts, "1122");
    EXPECT_EQ(play(R"({"click": "view", "at": [5, 5], "times": 0})"), "");
    EXPECT_EQ(view->take(), "down up ") << "once is the least";
}

TEST_F(RecordedActions, drag) {
    const auto view = logging({{20, 20}, {100, 60}});
    EXPECT_EQ(play(R"({"click": "view", "at": [10, 10], "to": [50, 20]})"), "");
    const std::string log = view->take();
    EXPECT_TRUE(log.starts_with("down dragged dragged dragged ")) << log;
    EXPECT_TRUE(log.ends_with("dragged up ")) << log;
    EXPECT_EQ(placeOf(view->last, view), "50,40");
}

TEST_F(RecordedActions, typeIntoWhatHasTheKeyboard) {
    const auto first = add<NSTextField>({{20, 100}, {200, 24}});
    first->setIdentifier("first"_ns);
    const auto second = add<NSTextField>({{20, 60}, {200, 24}});
    second->setIdentifier("second"_ns);
    EXPECT_EQ(play("{\"click\": \"first\"}\n"
                   "{\"keyboard\": \"first\"}\n"
                   "{\"type\": \"2241\xEF\xBC\x8C"
                   "5\"}\n"
                   "{\"expect\": \"first\", \"text\": \"2241\xEF\xBC\x8C"
                   "5\"}\n"
                   "{\"key\": \"Backspace\"}\n"
                   "{\"key\": \"7\"}\n"
                   "{\"key\": \"Tab\"}\n"
                   "{\"keyboard\": \"second\"}\n"
                   "{\"type\": \"Abc\"}\n"
                   "{\"key\": \"a\", \"with\": \"ctrl\"}\n"
                   "{\"key\": \"x\"}\n"
                   "{\"expect\": \"second\", \"text\": \"x\"}\n"
                   "{\"key\": \"Tab\", \"with\": \"shift\"}\n"
                   "{\"keyboard\": \"first\"}\n"),
              "");
    EXPECT_EQ(first->stringValue()->utf8(),
              "2241\xEF\xBC\x8C"
              "7");
    EXPECT_EQ(second->stringValue()->utf8(), "x");
}

TEST_F(RecordedActions, pressKeysWithModifiers) {
    const auto view = logging({{20, 20}, {100, 60}});
    std::string keys;
    view->onEvent = [&] {
        if (view->last->type() == NSEventTypeKeyDown) {
            const NSUInteger flags = view->last->modifierFlags();
            keys += std::string(flags & NSEventModifierFlagCommand ? "C" : "") +
                    (flags & NSEventModifierFlagOption ? "A" : "") + (flags & NSEventModifierFlagShift ? "S" : "") +
                    view->last->characters()->utf8() + ' ';
        }
    };
    EXPECT_EQ(play("{\"click\": \"view\"}\n{\"key\": \"b\"}\n{\"key\": \"B\", \"with\": \"ctrl+shift\"}\n"
                   "{\"key\": \"Up\", \"with\": \"alt\"}\n{\"key\": \"Escape\"}\n{\"key\": \" \"}\n"),
              "");
    EXPECT_EQ(keys, "b CSB A\xEF\x9C\x80 \033   ");
}

TEST_F(RecordedActions, chooseFromMenus) {
    const auto popUp = make<NSPopUpButton>(&NSPopUpButton::initWithFrame_pullsDown, NSRect{{20, 20}, {160, 26}}, false);
    popUp->addItemsWithTitles(array({"one"_ns, "two"_ns, "three"_ns}));
    popUp->setIdentifier("choice"_ns);
    window->contentView()->addSubview(popUp);
    EXPECT_EQ(play("{\"expect\": \"choice\", \"text\": \"one\"}\n"
                   "{\"click\": \"choice\"}\n{\"choose\": \"three\"}\n"
                   "{\"expect\": \"choice\", \"text\": \"three\"}\n"
                   "{\"click\": \"choice\"}\n{\"choose\": \"three\"}\n"
                   "{\"click\": \"choice\"}\n{\"key\": \"Up\"}\n{\"key\": \"Return\"}\n"
                   "{\"expect\": \"choice\", \"text\": \"two\"}\n"
                   "{\"click\": \"choice\"}\n{\"choose\": \"four\", \"within\": 0.1}"),
              ", line 12: \"four\": there is no such item in an open menu");
    EXPECT_EQ(popUp->titleOfSelectedItem()->utf8(), "two");
}

TEST_F(RecordedActions, expectWhatViewsShow) {
    const auto button = NSButton::buttonWithTitle_target_action("Pause"_ns, nullptr, {});
    button->setIdentifier("button"_ns);
    const auto box = NSButton::checkboxWithTitle_target_action("Dark"_ns, nullptr, {});
    box->setIdentifier("box"_ns);
    box->setFrame({{200, 100}, {100, 20}});
    const auto text = make<NSTextView>(&NSTextView::initWithFrame, NSRect{{0, 0}, {80, 40}});
    text->setString("one\ntwo"_ns);
    text->setIdentifier("text"_ns);
    const auto table = make<NSTableView>(&NSTableView::initWithFrame, NSRect{{0, 0}, {80, 40}});
    table->setIdentifier("table"_ns);
    for (const auto& title : {"Bid"_ns, "Ask"_ns, "Last"_ns}) {
        const auto column = make<NSTableColumn>(&NSTableColumn::initWithIdentifier, title);
        column->setTitle(title);
        column->setHidden(title->isEqual("Ask"_ns));
        table->addTableColumn(column);
    }
    for (const Ref<NSView>& view : {Ref<NSView>(button), Ref<NSView>(box), Ref<NSView>(text), Ref<NSView>(table)}) {
        window->contentView()->addSubview(view);
    }
    EXPECT_EQ(play("{\"expect\": \"button\", \"text\": \"Pause\"}\n{\"expect\": \"button\", \"on\": false}\n"
                   "{\"expect\": \"box\", \"on\": false}\n{\"click\": \"box\"}\n{\"expect\": \"box\", \"on\": true}\n"
                   "{\"expect\": \"text\", \"contains\": \"e\\nt\"}\n{\"expect\": \"table\", \"text\": \"Bid, Last\"}\n"
                   "{\"absent\": \"nothing\"}"),
              "");
    EXPECT_EQ(play("{\"expect\": \"table\", \"text\": \"Bid\", \"within\": 0}"),
              ", line 1: \"table\": it shows \"Bid, Last\"");
    EXPECT_EQ(play("{\"expect\": \"box\", \"on\": false, \"within\": 0}"), ", line 1: \"box\": it is not so");
    EXPECT_EQ(play("{\"expect\": \"text\", \"contains\": \"three\", \"within\": 0}"),
              ", line 1: \"text\": it shows \"one\ntwo\"");
    EXPECT_EQ(play("{\"absent\": \"text\", \"within\": 0}"), ", line 1: \"text\": it is there");
    EXPECT_EQ(play("{\"keyboard\": \"button\", \"within\": 0}"), ", line 1: \"button\": it does not have the keyboard");
}

TEST_F(RecordedActions, waitForWhatIsStillToCome) {
    const auto label = NSTextField::labelWithString("early"_ns);
    label->setIdentifier("label"_ns);
    window->contentView()->addSubview(label);
    QTimer::singleShot(150, [label] { label->setStringValue("late"_ns); });
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(play("{\"expect\": \"label\", \"text\": \"late\"}\n{\"wait\": 0.2}\n{\"wait\": 0}"), "");
    EXPECT_GE(clock.elapsed(), 350);
    EXPECT_EQ(play("{\"wait\": -5}\n{\"wait\": \"long\"}\n{\"wait\": null}"), "") << "for nothing";
    clock.restart();
    EXPECT_EQ(play("{\"expect\": \"label\", \"text\": \"never\", \"within\": 0.3}"),
              ", line 1: \"label\": it shows \"late\"");
    EXPECT_GE(clock.elapsed(), 300);
}

TEST_F(RecordedActions, goOnWhenAWindowIsClosed) {
    const auto view = logging({{20, 20}, {100, 60}});
    const auto other = make<NSWindow>(&NSWindow::initWithContentRect_styleMask, NSRect{{60, 60}, {200, 100}},
                                      NSUInteger(NSWindowStyleMaskTitled | NSWindowStyleMaskClosable));
    const auto field = make<NSTextField>(&NSTextField::initWithFrame, NSRect{{10, 10}, {100, 24}});
    field->setIdentifier("view"_ns);
    other->contentView()->addSubview(field);
    other->makeKeyAndOrderFront(nullptr);
    EXPECT_EQ(play("{\"click\": \"view\"}\n{\"type\": \"a\"}\n{\"expect\": \"view\", \"text\": \"a\"}"), "")
        << "the frontmost view of that name";
    other->orderOut(nullptr);
    view->take();
    EXPECT_EQ(play("{\"click\": \"view\"}\n{\"keyboard\": \"view\"}\n{\"key\": \"b\"}"), "");
    EXPECT_EQ(view->take(), "down up keyDown keyUp ");
}

TEST_F(RecordedActions, areObjectsLineByLine) {
    EXPECT_EQ(load("").fault().substr(load("").fault().find("actions")), "actions: nothing to play");
    EXPECT_EQ(play("# one\n\n  \t\r\n{\"wait\": 0}\r\n# two"), "");
    const auto view = logging({{20, 20}, {100, 60}});
    EXPECT_EQ(play("{\"click\": \"view\"}\n[]"), ", line 2: no object");
    EXPECT_EQ(view->take(), "") << "nothing is played of a list that cannot be read";
    const std::pair<const char*, const char*> table[] = {
        {"[]", ", line 1: no object"},
        {"7", ", line 1: no object"},
        {" # indented", ", line 1: no object"},
        {"{\"wait\": 0}\n{\"wait\": 0", ", line 2: no object"},
        {"{\"wait\": 0}{\"wait\": 0}", ", line 1: no object"},
        {"\x01\xFF", ", line 1: no object"},
        {"{\"within\": 0}", ", line 1: it says nothing to do"},
        {"{\"click\": 7, \"within\": 0}", ", line 1: it says nothing to do"},
        {"{\"click\": \"\", \"within\": 0}", ", line 1: \"\": there is no such view"},
        {"{\"key\": 7, \"within\": 0}", ", line 1: there is no key \"\""},
        {"{\"key\": \"ab\", \"within\": 0}", ", line 1: there is no key \"ab\""},
        {"{\"key\": \"a\", \"with\": \"alt+meta\", \"within\": 0}", ", line 1: there is no modifier \"meta\""},
        {"{\"picture\": \"/nowhere/at/all.png\", \"within\": 0}", ", line 1: the picture cannot be written"},
    };
    for (const auto& [lines, fault] : table) {
        SCOPED_TRACE(lines);
        EXPECT_EQ(play(lines), fault);
    }
}

TEST_F(RecordedActions, endWithTheirPlayer) {
    const auto view = logging({{20, 20}, {100, 60}});
    bool isOver = false;
    load("{\"wait\": 0.05}\n{\"click\": \"view\"}").start([&isOver] { isOver = true; });
    endPlayer();
    QTest::qWait(150);
    EXPECT_FALSE(isOver);
    EXPECT_EQ(view->take(), "");
    auto& unplayed = load("# first\n{\"wait\": 0}");
    EXPECT_TRUE(unplayed.fault().ends_with("actions, line 2: not played"));
}

} // namespace
} // namespace zr::test
