#pragma once

#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/appkit/view.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/string.h>

#include <string>
#include <utility>
#include <vector>

namespace zr::test {

inline const char* nameOf(ViewChange change) {
    switch (change) {
        case ViewChange::Frame:
            return "frame";
        case ViewChange::Subviews:
            return "subviews";
        case ViewChange::Hidden:
            return "hidden";
        case ViewChange::Display:
            return "display";
        case ViewChange::Alpha:
            return "alpha";
        case ViewChange::Layer:
            return "layer";
        case ViewChange::CursorRects:
            return "cursors";
        case ViewChange::TrackingAreas:
            return "tracking";
        case ViewChange::ToolTip:
            return "tip";
        case ViewChange::Layout:
            return "layout";
        case ViewChange::Enabled:
            return "enabled";
        case ViewChange::Content:
            return "content";
        case ViewChange::Selection:
            return "selection";
        case ViewChange::Accessibility:
            return "accessibility";
    }
    return "unknown";
}

inline const char* nameOf(WindowChange change) {
    switch (change) {
        case WindowChange::Frame:
            return "frame";
        case WindowChange::Title:
            return "title";
        case WindowChange::StyleMask:
            return "style";
        case WindowChange::ContentView:
            return "content";
        case WindowChange::FirstResponder:
            return "responder";
        case WindowChange::Buttons:
            return "buttons";
        case WindowChange::Behavior:
            return "behavior";
    }
    return "unknown";
}

/// Makes peers that write down what they are told, each under the name of its object: a view's identifier or a
/// window's title.
class RecordingToolkit : public Toolkit {
  public:
    RecordingToolkit() : m_before(setCurrentToolkit(this)) {}
    ~RecordingToolkit() override { setCurrentToolkit(m_before); }

    std::unique_ptr<ViewPeer> makeViewPeer(NSView& view) override {
        return std::make_unique<RecordingViewPeer>(*this, view);
    }
    std::unique_ptr<WindowPeer> makeWindowPeer(NSWindow& window) override {
        return std::make_unique<RecordingWindowPeer>(*this, window);
    }

    /// What was written down so far, which is then forgotten.
    std::string taken() { return std::exchange(log, {}); }

    std::string log;
    /// What windows were asked to play.
    std::vector<NSPoint> playedOrigins;
    double playedSeconds = 0;

  private:
    class RecordingViewPeer : public ViewPeer {
      public:
        RecordingViewPeer(RecordingToolkit& toolkit, NSView& view)
            : m_toolkit(toolkit), m_name(view.identifier() ? view.identifier()->utf8() : "view") {}
        ~RecordingViewPeer() override { write("gone"); }
        void viewChanged(ViewChange change) override { write(nameOf(change)); }
        void takeKeyboard() override { write("keyboard"); }

      private:
        void write(const char* what) { m_toolkit.log += m_name + ' ' + what + '\n'; }

        RecordingToolkit& m_toolkit;
        std::string m_name;
    };

    class RecordingWindowPeer : public WindowPeer {
      public:
        RecordingWindowPeer(RecordingToolkit& toolkit, NSWindow& window)
            : m_toolkit(toolkit), m_name(window.title()->utf8().empty() ? "window" : window.title()->utf8()) {}
        ~RecordingWindowPeer() override { write("gone"); }
        void windowChanged(WindowChange change) override { write(nameOf(change)); }
        void orderAbove(NSWindow* relative) override { write("above " + titleOf(relative)); }
        void orderBelow(NSWindow* relative) override { write("below " + titleOf(relative)); }
        void orderOut() override { write("out"); }
        void takeKeyboard() override { write("keyboard"); }
        void playFrameOrigins(std::span<const NSPoint> points, double seconds) override {
            write("plays");
            m_toolkit.playedOrigins.assign(points.begin(), points.end());
            m_toolkit.playedSeconds = seconds;
        }

      private:
        static std::string titleOf(NSWindow* window) { return window ? window->title()->utf8() : "all"; }
        void write(const std::string& what) { m_toolkit.log += m_name + ' ' + what + '\n'; }

        RecordingToolkit& m_toolkit;
        std::string m_name;
    };

    Toolkit* m_before;
};

} // namespace zr::test
