#pragma once

#include <zrbasic/platform/appkit/application.h>
#include <zrbasic/platform/appkit/canvas.h>
#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/event.h>
#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/attributed_string.h>
#include <zrbasic/platform/foundation/dispatch_queue.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/message.h>

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

namespace zr {

/// Let a failed check show what it got.
inline void PrintTo(const NSPoint& point, std::ostream* out) {
    *out << point.x << ',' << point.y;
}
inline void PrintTo(const NSSize& size, std::ostream* out) {
    *out << size.width << 'x' << size.height;
}
inline void PrintTo(const NSRect& rect, std::ostream* out) {
    *out << rect.size.width << 'x' << rect.size.height << '+' << rect.origin.x << '+' << rect.origin.y;
}

namespace test {

/// What the windows' peers were told, in order.
struct WindowLog {
    std::string told;
    std::vector<NSPoint> points;
    double seconds = 0;
};

/// Writes down what it is told.
class RecordingWindowPeer : public WindowPeer {
  public:
    explicit RecordingWindowPeer(WindowLog& log) : m_log(log) {}

    void windowChanged(WindowChange change) override {
        switch (change) {
            case WindowChange::Frame:
                m_log.told += "frame ";
                break;
            case WindowChange::StyleMask:
                m_log.told += "style ";
                break;
            case WindowChange::Buttons:
                m_log.told += "buttons ";
                break;
            case WindowChange::Behavior:
                m_log.told += "behavior ";
                break;
            default:
                m_log.told += "other ";
        }
    }
    void orderAbove(NSWindow*) override { m_log.told += "above "; }
    void orderBelow(NSWindow*) override { m_log.told += "below "; }
    void orderOut() override { m_log.told += "out "; }
    void takeKeyboard() override { m_log.told += "keyboard "; }
    void playFrameOrigins(std::span<const NSPoint> points, double seconds) override {
        m_log.told += "play ";
        m_log.points.assign(points.begin(), points.end());
        m_log.seconds = seconds;
    }

  private:
    WindowLog& m_log;
};

/// A toolkit with one screen of 1440 by 900 points, 25 of which the desktop keeps at the bottom, and windows that write
/// down what they are told. It is in use as long as it stands.
class WindowToolkit : public Toolkit {
  public:
    WindowToolkit() : m_before(setCurrentToolkit(this)) {}
    ~WindowToolkit() override { setCurrentToolkit(m_before); }

    std::vector<ScreenState> screens() override { return {{{{0, 0}, {1440, 900}}, {{0, 25}, {1440, 875}}, 1}}; }
    std::unique_ptr<WindowPeer> makeWindowPeer(NSWindow&) override {
        return std::make_unique<RecordingWindowPeer>(log);
    }
    NSInteger askUser(NSAlert& alert) override { return whenAsked ? whenAsked(alert) : -1; }
    /// Every character is 7 by 16 points.
    NSSize naturalSizeOfText(NSAttributedString* text, double) override {
        return {7.0 * static_cast<double>(text->length()), text->length() == 0 ? 0.0 : 16.0};
    }

    WindowLog log;
    std::function<NSInteger(NSAlert&)> whenAsked;

  private:
    Toolkit* m_before;
};

/// What was drawn, a line each.
struct Drawing {
    /// Whether a line begins with that.
    [[nodiscard]] bool has(const std::string& line) const {
        return ("\n" + drawn).find("\n" + line) != std::string::npos;
    }

    std::string drawn;
};

/// Writes down what is drawn: colours as "red/green/blue" in percent.
class RecordingCanvas : public Canvas, public Drawing {
  public:
    void save() override {}
    void restore() override {}
    void clipToRect(NSRect) override {}
    void concat(const NSAffineTransformStruct&) override { drawn += "turn\n"; }
    void fillRect(NSRect rect, NSColor* color, NSCompositingOperation) override { write("rect", rect, color); }
    void fillRoundedRect(NSRect rect, double xRadius, double, NSColor* color) override {
        write("fill r" + number(xRadius), rect, color);
    }
    void strokeRoundedRect(NSRect rect, double radius, double width, NSColor* color) override {
        write("line " + number(width) + " r" + number(radius), rect, color);
    }
    void drawText(NSAttributedString* text, NSRect rect, bool) override {
        write("text " + text->string()->utf8(), rect, nullptr);
    }
    void drawBitmap(NSBitmapImageRep*, NSRect to, NSRect, NSCompositingOperation, double fraction) override {
        write("bitmap " + number(fraction), to, nullptr);
    }

  private:
    static std::string number(double value) {
        std::ostringstream out;
        out << value;
        return out.str();
    }
    void write(const std::string& what, NSRect rect, NSColor* color) {
        std::ostringstream out;
        out << what << ' ';
        PrintTo(rect, &out);
        if (color) {
            const Ref<NSColor> rgb = color->colorUsingColorSpace(NSColorSpace::sRGBColorSpace());
            out << ' ' << static_cast<int>(rgb->redComponent() * 100 + 0.5) << '/'
                << static_cast<int>(rgb->greenComponent() * 100 + 0.5) << '/'
                << static_cast<int>(rgb->blueComponent() * 100 + 0.5);
        }
        drawn += out.str() + "\n";
    }
};

inline Ref<NSEvent> mouseEvent(NSEventType type, NSPoint location) {
    EventFields fields;
    fields.type = type;
    fields.location = location;
    fields.clickCount = 1;
    return NSEvent::eventWithFields(fields);
}

inline Ref<NSEvent> keyEvent(NSString* characters, NSUInteger modifiers = 0, bool isRepeat = false) {
    EventFields fields;
    fields.type = NSEventTypeKeyDown;
    fields.characters = Ref<NSString>(characters);
    fields.modifierFlags = modifiers;
    fields.isRepeat = isRepeat;
    return NSEvent::eventWithFields(fields);
}

inline void later(std::function<void()> work) {
    dispatch_async(dispatch_get_main_queue(), std::move(work));
}

/// A window test leaves no window on the screen.
inline void hideAllWindows() {
    const auto shown = NSApplication::sharedApplication()->orderedWindows();
    for (const id& element : shown->elements()) {
        cast<NSWindow>(element)->orderOut(nullptr);
    }
}

} // namespace test
} // namespace zr
