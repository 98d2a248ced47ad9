#include "player.h"

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/pop_up_button.h>
#include <zrbasic/platform/appkit/table_view.h>
#include <zrbasic/platform/appkit/text_view.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/json_serialization.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/qt/session.h>

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <fstream>
#include <map>
#include <utility>

namespace actions {

using namespace zr;

namespace {

/// How many seconds something may take to come true.
constexpr double patience = 5;

std::string textOf(NSDictionary* what, const char* key) {
    auto* const text = cast<NSString>(what->peek(NSString::fromUtf8(key)));
    return text ? text->utf8() : "";
}

double numberOf(NSObject* number) {
    const auto* const known = cast<NSNumber>(number);
    return known ? known->doubleValue() : 0;
}

/// Up to a day, for whoever asks for more as well.
std::chrono::milliseconds inSeconds(double count) {
    return std::chrono::milliseconds(static_cast<long>(std::clamp(count, 0.0, 86400.0) * 1000));
}

Ref<NSView> viewIn(NSView* around, NSString* identifier) {
    if (identifier->isEqual(around->identifier())) {
        return Ref<NSView>(around);
    }
    for (const id& subview : around->subviews()) {
        if (const auto found = viewIn(static_cast<NSView*>(subview.get()), identifier)) {
            return found;
        }
    }
    return nullptr;
}

/// The frontmost one of that identifier.
Ref<NSView> viewNamed(NSString* identifier) {
    for (const id& window : NSApplication::sharedApplication()->orderedWindows()) {
        if (const auto found = viewIn(static_cast<NSWindow*>(window.get())->contentView(), identifier)) {
            return found;
        }
    }
    return nullptr;
}

std::string columnTitles(NSTableView* table) {
    std::string titles;
    for (const id& element : table->tableColumns()) {
        auto* const column = static_cast<NSTableColumn*>(element.get());
        if (!column->isHidden()) {
            titles += (titles.empty() ? "" : ", ") + column->title()->utf8();
        }
    }
    return titles;
}

std::string shownBy(NSView* view) {
    if (auto* const text = cast<NSText>(view)) {
        return text->string()->utf8();
    }
    if (auto* const table = cast<NSTableView>(view)) {
        return columnTitles(table);
    }
    if (auto* const popUp = cast<NSPopUpButton>(view)) {
        return popUp->titleOfSelectedItem()->utf8();
    }
    if (auto* const button = cast<NSButton>(view)) {
        return button->title()->utf8();
    }
    auto* const control = cast<NSControl>(view);
    return control ? control->stringValue()->utf8() : "";
}

std::string check(NSView* view, NSDictionary* what) {
    if (const auto* const isOn = cast<NSNumber>(what->peek("on"_ns))) {
        auto* const button = cast<NSButton>(view);
        return button && (button->state() == NSControlStateValueOn) == isOn->boolValue() ? "" : "it is not so";
    }
    const std::string shown = shownBy(view);
    const bool isAsExpected = what->peek("contains"_ns) ? shown.find(textOf(what, "contains")) != std::string::npos
                                                        : shown == textOf(what, "text");
    return isAsExpected ? "" : "it shows \"" + shown + "\"";
}

/// A field has it by its editor.
bool hasKeyboard(NSView* view) {
    const Ref<NSWindow> window = view->window();
    const Ref<NSResponder> first = window->isKeyWindow() ? window->firstResponder() : nullptr;
    auto* const control = cast<NSControl>(view);
    return first && (first == view || (control && first == control->currentEditor()));
}

/// A menu that is open gets everything.
QWindow* windowWithKeyboard() {
    QWidget* const popup = QApplication::activePopupWidget();
    return popup ? popup->windowHandle() : QGuiApplication::focusWindow();
}

/// When the window that had it is closed, and there is no window manager.
void handKeyboardOn() {
    const Ref<NSArray> windows = NSApplication::sharedApplication()->orderedWindows();
    if (!windowWithKeyboard() && windows->count() > 0) {
        if (QWidget* const front = qt::widget(static_cast<NSWindow*>(windows->objectAtIndex(0).get()))) {
            front->activateWindow();
        }
    }
}

/// What the mouse does in a window.
class Mouse {
  public:
    explicit Mouse(QWindow* window, Qt::MouseButton button = Qt::LeftButton) : m_window(window), m_button(button) {}

    /// By their times, two clicks are a double click to whoever counts them; Qt's own widgets do not.
    void click(QPointF at, int times = 1) const {
        for (int i = 0; i < times; ++i) {
            send(QEvent::MouseButtonPress, at, m_button, m_button);
            send(QEvent::MouseButtonRelease, at, m_button, {});
        }
    }
    void drag(QPointF from, QPointF to) const {
        send(QEvent::MouseButtonPress, from, m_button, m_button);
        move(from, to, m_button);
        send(QEvent::MouseButtonRelease, to, m_button, {});
    }
    void move(QPointF from, QPointF to, Qt::MouseButtons down = {}) const {
        constexpr int steps = 10;
        for (int step = 1; step <= steps; ++step) {
            send(QEvent::MouseMove, from + (to - from) * step / steps, Qt::NoButton, down);
        }
    }

  private:
    void send(QEvent::Type type, QPointF at, Qt::MouseButton button, Qt::MouseButtons down) const {
        if (m_window) {
            QMouseEvent event(type, at, at, m_window->mapToGlobal(at), button, down, Qt::NoModifier);
            const auto now = std::chrono::steady_clock::now().time_since_epoch();
            event.setTimestamp(quint64(std::chrono::duration_cast<std::chrono::milliseconds>(now).count()));
            QCoreApplication::sendEvent(m_window, &event);
        }
    }

    /// One event may take it off the screen for good.
    QPointer<QWindow> m_window;
    Qt::MouseButton m_button;
};

/// In Qt's coordinates of the window; the middle of the view without a place in it.
QPointF placeOf(NSView* view, NSObject* place) {
    const NSRect bounds = view->bounds();
    NSPoint at{NSMinX(bounds) + bounds.size.width / 2, NSMinY(bounds) + bounds.size.height / 2};
    if (auto* const numbers = cast<NSArray>(place); numbers && numbers->count() == 2) {
        const double y = numberOf(numbers->objectAtIndex(1));
        at = NSMakePoint(numberOf(numbers->objectAtIndex(0)), view->isFlipped() ? y : bounds.size.height - y);
    }
    const NSPoint inWindow = view->convertPoint_toView(at, nullptr);
    return {inWindow.x, view->window()->contentView()->frame().size.height - inWindow.y};
}

std::string click(NSView* view, NSDictionary* what) {
    QWidget* const widget = qt::widget(view->window().get());
    if (!widget || !widget->windowHandle()) {
        return "its window is not shown";
    }
    const Mouse mouse(widget->windowHandle(), textOf(what, "button") == "right" ? Qt::RightButton : Qt::LeftButton);
    const QPointF at = placeOf(view, what->peek("at"_ns));
    if (NSObject* const to = what->peek("to"_ns)) {
        mouse.drag(at, placeOf(view, to));
    } else {
        mouse.click(at, static_cast<int>(std::clamp(numberOf(what->peek("times"_ns)), 1.0, 100.0)));
    }
    return "";
}

std::string choose(const std::string& title) {
    QWidget* const popup = QApplication::activePopupWidget();
    const auto* const menu = qobject_cast<QMenu*>(popup);
    for (QAction* const action : menu ? menu->actions() : QList<QAction*>()) {
        // A shortcut stands behind the title.
        if (action->text().section(u'\t', 0, 0).toStdString() == title) {
            const QPointF at = menu->actionGeometry(action).center();
            // Where the hand has not moved since the menu was opened, it has not chosen.
            const Mouse mouse(popup->windowHandle());
            mouse.move(QPointF(0, 0), at);
            mouse.click(at);
            return "";
        }
    }
    return "there is no such item in an open menu";
}

std::string press(int key, Qt::KeyboardModifiers modifiers, const QString& text) {
    if (!windowWithKeyboard()) {
        return "no window has the keyboard";
    }
    for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        // A press may have closed the window that the release went to.
        if (QWindow* const window = windowWithKeyboard()) {
            QKeyEvent event(type, key, modifiers, text);
            QCoreApplication::sendEvent(window, &event);
        }
    }
    return "";
}

std::string type(const QString& text) {
    std::string fault;
    for (auto character = text.begin(); fault.empty() && character != text.end(); ++character) {
        fault = press(character->toUpper().unicode(), Qt::NoModifier, QString(*character));
    }
    return fault;
}

std::string pressKey(const std::string& name, const QString& with) {
    static const std::map<std::string, std::pair<int, const char*>> named = {
        {"Tab", {Qt::Key_Tab, "\t"}}, {"Return", {Qt::Key_Return, "\r"}}, {"Escape", {Qt::Key_Escape, "\033"}},
        {"Up", {Qt::Key_Up, ""}},     {"Down", {Qt::Key_Down, ""}},       {"Backspace", {Qt::Key_Backspace, "\b"}}};
    static const std::map<QString, Qt::KeyboardModifier> known = {
        {"alt", Qt::AltModifier}, {"ctrl", Qt::ControlModifier}, {"shift", Qt::ShiftModifier}};
    Qt::KeyboardModifiers modifiers;
    for (const QString& modifier : with.split(u'+', Qt::SkipEmptyParts)) {
        const auto place = known.find(modifier);
        if (place == known.end()) {
            return "there is no modifier \"" + modifier.toStdString() + "\"";
        }
        modifiers |= place->second;
    }
    if (const auto key = named.find(name); key != named.end()) {
        const bool isBackward = key->second.first == Qt::Key_Tab && modifiers.testFlag(Qt::ShiftModifier);
        return press(isBackward ? Qt::Key_Backtab : key->second.first, modifiers,
                     QString::fromLatin1(key->second.second));
    }
    const QString text = QString::fromStdString(name);
    if (text.size() != 1) {
        return "there is no key \"" + name + "\"";
    }
    return press(text.at(0).toUpper().unicode(), modifiers, text);
}

std::string takePicture(const std::string& file) {
    QWidget* const shown = QApplication::activeWindow();
    return shown && shown->grab().save(QString::fromStdString(file)) ? "" : "the picture cannot be written";
}

} // namespace

Player::Player(const std::string& file) : m_file(file) {
    std::ifstream stream(file);
    std::string text;
    for (std::size_t line = 1; std::getline(stream, text); ++line) {
        if (text.find_first_not_of(" \t\r") == std::string::npos || text.front() == '#') {
            continue;
        }
        Ref<NSError> ignored;
        const id root = NSJSONSerialization::objectWithText(text, 0, &ignored);
        auto* const what = cast<NSDictionary>(root);
        if (!what) {
            m_fault = file + ", line " + std::to_string(line) + ": no object";
            m_actions.clear();
            return;
        }
        m_actions.push_back({line, Ref<NSDictionary>(what)});
    }
    if (m_actions.empty()) {
        m_fault = file + ": nothing to play";
    }
}

void Player::start(std::function<void()> onEnd) {
    m_onEnd = std::move(onEnd);
    scheduleStep();
}

void Player::scheduleStep() {
    // A new one each time: a timer does not fire again while a menu stays open that its last step has opened.
    QTimer::singleShot(10, &m_context, [this] {
        if (m_isOver) {
            return;
        }
        scheduleStep();
        if (!step() && !std::exchange(m_isOver, true)) {
            m_onEnd();
        }
    });
}

std::string Player::fault() const {
    const bool isPlayed = !m_fault.empty() || m_next == m_actions.size();
    return isPlayed ? m_fault : m_file + ", line " + std::to_string(m_actions[m_next].line) + ": not played";
}

std::string Player::play(NSDictionary* what) {
    for (const std::string_view key : {"click", "expect", "keyboard", "absent"}) {
        auto* const name = cast<NSString>(what->peek(NSString::fromUtf8(key)));
        if (!name) {
            continue;
        }
        const Ref<NSView> view = viewNamed(name);
        std::string fault;
        if (key == "absent") {
            fault = view ? "it is there" : "";
        } else if (!view) {
            fault = "there is no such view";
        } else if (key == "keyboard") {
            fault = hasKeyboard(view) ? "" : "it does not have the keyboard";
        } else {
            fault = key == "click" ? click(view, what) : check(view, what);
        }
        return fault.empty() ? "" : '"' + name->utf8() + "\": " + fault;
    }
    if (what->peek("choose"_ns)) {
        const std::string fault = choose(textOf(what, "choose"));
        return fault.empty() ? "" : '"' + textOf(what, "choose") + "\": " + fault;
    }
    if (what->peek("type"_ns)) {
        return type(QString::fromStdString(textOf(what, "type")));
    }
    if (what->peek("key"_ns)) {
        return pressKey(textOf(what, "key"), QString::fromStdString(textOf(what, "with")));
    }
    if (what->peek("picture"_ns)) {
        return takePicture(textOf(what, "picture"));
    }
    return what->peek("wait"_ns) ? "" : "it says nothing to do";
}

bool Player::step() {
    const auto now = Clock::now();
    if (now < m_due || m_next == m_actions.size()) {
        return m_next < m_actions.size();
    }
    const Action& action = m_actions[m_next];
    if (m_deadline == Clock::time_point()) {
        auto* const own = action.what->peek("within"_ns);
        m_deadline = now + inSeconds(own ? numberOf(own) : patience);
    }
    m_due = now + inSeconds(numberOf(action.what->peek("wait"_ns)));
    // Counted before it is played: a menu that it opens plays the next ones meanwhile.
    const std::size_t place = m_next++;
    const auto deadline = std::exchange(m_deadline, {});
    handKeyboardOn();
    const std::string fault = play(action.what);
    if (!fault.empty() && now < deadline) {
        m_next = place;
        m_deadline = deadline;
    } else if (!fault.empty()) {
        m_fault = m_file + ", line " + std::to_string(action.line) + ": " + fault;
        m_next = m_actions.size();
    }
    return m_next < m_actions.size();
}

} // namespace actions
