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

#include <chrono>

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

char16_t functionCharacter(int key) {
    switch (key) {
        case Qt::Key_Up:
            return 0xF700;
        case Qt::Key_Down:
            return 0xF701;
        case Qt::Key_Left:
            return 0xF702;
        case Qt::Key_Right:
            return 0xF703;
        case Qt::Key_Insert:
            return 0xF727;
        case Qt::Key_Delete:
            return 0xF728;
        case Qt::Key_Home:
            return 0xF729;
        case Qt::Key_End:
            return 0xF72B;
        case Qt::Key_PageUp:
            return 0xF72C;
        case Qt::Key_PageDown:
            return 0xF72D;
        case Qt::Key_Backspace:
            return 0x7F;
        case Qt::Key_Backtab:
            return 0x19;
        case Qt::Key_Tab:
            return '\t';
        case Qt::Key_Return:
            return '\r';
        case Qt::Key_Enter:
            return 3;
        case Qt::Key_Escape:
            return 0x1B;
        default:
            return key >= Qt::Key_F1 && key <= Qt::Key_F35 ? char16_t(0xF704 + key - Qt::Key_F1) : 0;
    }
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
    double height = topLevel->height();
    if (dynamic_cast<const HostWidget*>(topLevel)) {
        // The views reckon with the height that was set, of which the pixels are only the nearest whole number.
        if (const Ref<NSWindow> window = windowOf(topLevel)) {
            height = window->contentView()->frame().size.height;
        }
    }
    return {inWindow.x(), height - inWindow.y()};
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
