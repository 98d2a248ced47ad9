#include <zrbasic/platform/qt/event_translation_p.h>

#include <zrbasic/platform/appkit/tracking_area.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/qt/conversions_p.h>
#include <zrbasic/platform/qt/window_peer_p.h>

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleHints>
#include <QWheelEvent>
#include <QWidget>

#include <algorithm>
#include <chrono>
#include <iterator>

namespace zr::qt {
namespace {

/// Counts clicks: Qt knows of double ones only.
class ClickCounter {
  public:
    NSInteger countOf(const QMouseEvent& event) {
        const bool isPress = event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick;
        if (event.type() == QEvent::MouseButtonRelease) {
            m_isDown = false;
        }
        // The same press comes by more than once when a widget hands it on.
        const bool isKnown = m_isDown && event.timestamp() == m_timestamp && event.button() == m_button;
        if (isPress && !isKnown) {
            m_isDown = true;
            const QStyleHints* const hints = QGuiApplication::styleHints();
            const QPointF way = event.globalPosition() - m_position;
            const bool isNear = std::max(std::abs(way.x()), std::abs(way.y())) <= hints->mouseDoubleClickDistance();
            const bool isSoon = event.timestamp() - m_timestamp <= quint64(hints->mouseDoubleClickInterval());
            m_count = event.button() == m_button && isNear && isSoon ? m_count + 1 : 1;
            if (event.type() == QEvent::MouseButtonDblClick && m_count < 2) {
                m_count = 2;
            }
            m_timestamp = event.timestamp();
            m_button = event.button();
            m_position = event.globalPosition();
        }
        return m_count;
    }

  private:
    NSInteger m_count = 0;
    bool m_isDown = false;
    quint64 m_timestamp = 0;
    Qt::MouseButton m_button = Qt::NoButton;
    QPointF m_position;
};

double now() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

struct Operations {
    NSEventType downType;
    NSEventType upType;
    NSEventType dragType;
    SEL down;
    SEL up;
    SEL drag;
};

const Operations& operationsOf(Qt::MouseButton button) {
    static const Operations left{NSEventTypeLeftMouseDown, NSEventTypeLeftMouseUp, NSEventTypeLeftMouseDragged,
                                 "mouseDown:"_sel,         "mouseUp:"_sel,         "mouseDragged:"_sel};
    static const Operations right{NSEventTypeRightMouseDown, NSEventTypeRightMouseUp, NSEventTypeRightMouseDragged,
                                  "rightMouseDown:"_sel,     "rightMouseUp:"_sel,     "rightMouseDragged:"_sel};
    static const Operations other{NSEventTypeOtherMouseDown, NSEventTypeOtherMouseUp, NSEventTypeOtherMouseDragged,
                                  "otherMouseDown:"_sel,     "otherMouseUp:"_sel,     "otherMouseDragged:"_sel};
    return button == Qt::LeftButton ? left : button == Qt::RightButton ? right : other;
}

/// 0, 1 and 2 for the left, the right and the middle one, and then as the mouse has them.
NSInteger numberOf(Qt::MouseButton button) {
    NSInteger number = 0;
    for (auto bits = unsigned(button); bits > 1; bits >>= 1) {
        ++number;
    }
    return number;
}

struct FunctionKey {
    int key;
    char16_t character;
};

constexpr FunctionKey functionKeys[] = {
    {Qt::Key_Up, 0xF700},     {Qt::Key_Down, 0xF701},     {Qt::Key_Left, 0xF702},    {Qt::Key_Right, 0xF703},
    {Qt::Key_Insert, 0xF727}, {Qt::Key_Delete, 0xF728},   {Qt::Key_Home, 0xF729},    {Qt::Key_End, 0xF72B},
    {Qt::Key_PageUp, 0xF72C}, {Qt::Key_PageDown, 0xF72D}, {Qt::Key_Backspace, 0x7F}, {Qt::Key_Backtab, 0x19},
    {Qt::Key_Tab, '\t'},      {Qt::Key_Return, '\r'},     {Qt::Key_Enter, 3},        {Qt::Key_Escape, 0x1B},
};

constexpr char16_t firstF = 0xF704;

/// 0 for a key that types a letter or a sign.
char16_t functionCharacter(int key) {
    if (key >= Qt::Key_F1 && key <= Qt::Key_F35) {
        return static_cast<char16_t>(firstF + key - Qt::Key_F1);
    }
    const auto* const found = std::find_if(std::begin(functionKeys), std::end(functionKeys),
                                           [key](const FunctionKey& known) { return known.key == key; });
    return found == std::end(functionKeys) ? u'\0' : found->character;
}

/// As high as the views of the window reckon with.
double heightOf(const QWidget& topLevel) {
    if (dynamic_cast<const HostWidget*>(&topLevel)) {
        // The views reckon with the height that was set, of which the pixels are only the nearest whole number.
        if (const Ref<NSWindow> window = windowOf(&topLevel)) {
            return window->contentView()->frame().size.height;
        }
    }
    return topLevel.height();
}

} // namespace

NSUInteger modifierFlags(Qt::KeyboardModifiers modifiers) {
    NSUInteger flags = 0;
    flags |= modifiers.testFlag(Qt::ShiftModifier) ? NSUInteger{NSEventModifierFlagShift} : 0;
    flags |= modifiers.testFlag(Qt::ControlModifier) ? NSUInteger{NSEventModifierFlagCommand} : 0;
    flags |= modifiers.testFlag(Qt::AltModifier) ? NSUInteger{NSEventModifierFlagOption} : 0;
    flags |= modifiers.testFlag(Qt::MetaModifier) ? NSUInteger{NSEventModifierFlagControl} : 0;
    return flags;
}

Qt::KeyboardModifiers keyboardModifiers(NSUInteger flags) {
    Qt::KeyboardModifiers modifiers;
    modifiers.setFlag(Qt::ShiftModifier, (flags & NSEventModifierFlagShift) != 0);
    modifiers.setFlag(Qt::ControlModifier, (flags & NSEventModifierFlagCommand) != 0);
    modifiers.setFlag(Qt::AltModifier, (flags & NSEventModifierFlagOption) != 0);
    modifiers.setFlag(Qt::MetaModifier, (flags & NSEventModifierFlagControl) != 0);
    return modifiers;
}

int keyOf(char16_t character) {
    constexpr int count = Qt::Key_F35 - Qt::Key_F1 + 1;
    if (character >= firstF && character < firstF + count) {
        return Qt::Key_F1 + character - firstF;
    }
    const auto* const found = std::find_if(std::begin(functionKeys), std::end(functionKeys),
                                           [=](const FunctionKey& key) { return key.character == character; });
    return found == std::end(functionKeys) ? 0 : found->key;
}

Ref<NSString> charactersOf(const QKeyEvent& event) {
    if (event.key() == Qt::Key_Tab && event.modifiers().testFlag(Qt::ShiftModifier)) {
        return fromQt(QString(QChar(functionCharacter(Qt::Key_Backtab))));
    }
    if (const char16_t character = functionCharacter(event.key())) {
        return fromQt(QString(QChar(character)));
    }
    // With the control key Qt's text is a control character.
    const bool isShortcut = (event.modifiers() & (Qt::ControlModifier | Qt::MetaModifier)).toInt() != 0;
    if (isShortcut && event.key() >= Qt::Key_Space && event.key() < Qt::Key_Escape) {
        const QString letter = QString(QChar(char16_t(event.key() & 0xFFFF)));
        return fromQt(event.modifiers().testFlag(Qt::ShiftModifier) ? letter : letter.toLower());
    }
    return fromQt(event.text());
}

bool isModifierKey(const QKeyEvent& event) {
    switch (event.key()) {
        case Qt::Key_Shift:
        case Qt::Key_Control:
        case Qt::Key_Alt:
        case Qt::Key_AltGr:
        case Qt::Key_Meta:
        case Qt::Key_Super_L:
        case Qt::Key_Super_R:
        case Qt::Key_CapsLock:
            return true;
        default:
            return false;
    }
}

NSPoint windowPoint(const QWidget& widget, QPointF point) {
    const QWidget* const topLevel = widget.window();
    const QPointF inWindow = &widget == topLevel ? point : widget.mapTo(topLevel, point);
    return {inWindow.x(), heightOf(*topLevel) - inWindow.y()};
}

QPointF topLevelPoint(const QWidget& topLevel, NSPoint inWindow) {
    return {inWindow.x, heightOf(topLevel) - inWindow.y};
}

TranslatedEvent translated(const QMouseEvent& event, const QWidget& widget) {
    static ClickCounter clicks;
    EventFields fields;
    fields.location = windowPoint(widget, event.position());
    fields.modifierFlags = modifierFlags(event.modifiers());
    fields.timestamp = now();
    fields.clickCount = clicks.countOf(event);
    if (event.type() == QEvent::MouseMove) {
        if (event.buttons() == Qt::NoButton) {
            fields.type = NSEventTypeMouseMoved;
            fields.clickCount = 0;
            return {"mouseMoved:"_sel, NSEvent::eventWithFields(std::move(fields))};
        }
        const Qt::MouseButton button = event.buttons().testFlag(Qt::LeftButton)    ? Qt::LeftButton
                                       : event.buttons().testFlag(Qt::RightButton) ? Qt::RightButton
                                                                                   : Qt::MiddleButton;
        const Operations& operations = operationsOf(button);
        fields.type = operations.dragType;
        fields.buttonNumber = numberOf(button);
        return {operations.drag, NSEvent::eventWithFields(std::move(fields))};
    }
    const Operations& operations = operationsOf(event.button());
    const bool isRelease = event.type() == QEvent::MouseButtonRelease;
    fields.type = isRelease ? operations.upType : operations.downType;
    fields.buttonNumber = numberOf(event.button());
    return {isRelease ? operations.up : operations.down, NSEvent::eventWithFields(std::move(fields))};
}

TranslatedEvent translated(const QWheelEvent& event, const QWidget& widget) {
    EventFields fields;
    fields.type = NSEventTypeScrollWheel;
    fields.location = windowPoint(widget, event.position());
    fields.modifierFlags = modifierFlags(event.modifiers());
    fields.timestamp = now();
    // Eighths of a degree, and fifteen degrees to a notch.
    fields.deltaX = event.angleDelta().x() / 120.0;
    fields.deltaY = event.angleDelta().y() / 120.0;
    return {"scrollWheel:"_sel, NSEvent::eventWithFields(std::move(fields))};
}

TranslatedEvent translated(const QKeyEvent& event, const QWidget& widget) {
    EventFields fields;
    fields.location = windowPoint(widget, QPointF(widget.mapFromGlobal(QCursor::pos())));
    fields.modifierFlags = modifierFlags(event.modifiers());
    fields.timestamp = now();
    fields.isRepeat = event.isAutoRepeat();
    if (isModifierKey(event)) {
        fields.type = NSEventTypeFlagsChanged;
        return {"flagsChanged:"_sel, NSEvent::eventWithFields(std::move(fields))};
    }
    const bool isPress = event.type() != QEvent::KeyRelease;
    fields.type = isPress ? NSEventTypeKeyDown : NSEventTypeKeyUp;
    fields.characters = charactersOf(event);
    return {isPress ? "keyDown:"_sel : "keyUp:"_sel, NSEvent::eventWithFields(std::move(fields))};
}

Ref<NSEvent> trackingEvent(NSEventType type, NSTrackingArea& area, const QWidget& widget, QPointF point) {
    EventFields fields;
    fields.type = type;
    fields.location = windowPoint(widget, point);
    fields.modifierFlags = modifierFlags(QGuiApplication::keyboardModifiers());
    fields.timestamp = now();
    fields.trackingArea = Ref<NSTrackingArea>(&area);
    return NSEvent::eventWithFields(std::move(fields));
}

} // namespace zr::qt
