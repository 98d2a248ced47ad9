#pragma once

#include "toolkit_testing.h"

#include <zrbasic/platform/appkit/view.h>
#include <zrbasic/platform/appkit/window.h>
#include <zrbasic/platform/foundation/string.h>

#include <memory>
#include <span>
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

/// What peers were told, in order, a line each.
struct PeerLog {
    std::string told;
    /// What windows were asked to play.
    std::vector<NSPoint> playedOrigins;
    double playedSeconds = 0;
};

/// Shared, as an object and with it its peer may outlive the toolkit.
using SharedPeerLog = std::shared_ptr<PeerLog>;

/// Writes under a name, or without one where that is empty.
class PeerPen {
  public:
    PeerPen(SharedPeerLog log, const std::string& name) : m_log(std::move(log)), m_prefix(name) {
        if (!m_prefix.empty()) {
            m_prefix += ' ';
        }
    }
    [[nodiscard]] PeerLog& log() const { return *m_log; }
    void write(const std::string& what) const { m_log->told += m_prefix + what + '\n'; }

  private:
    SharedPeerLog m_log;
    std::string m_prefix;
};

class RecordingViewPeer : public ViewPeer {
  public:
    RecordingViewPeer(SharedPeerLog log, NSView& view)
        : m_pen(std::move(log), view.identifier() ? view.identifier()->utf8() : "") {}
    ~RecordingViewPeer() override { m_pen.write("gone"); }
    void viewChanged(ViewChange change) override { m_pen.write(nameOf(change)); }
    void takeKeyboard() override { m_pen.write("keyboard"); }

  private:
    PeerPen m_pen;
};

class RecordingWindowPeer : public WindowPeer {
  public:
    RecordingWindowPeer(SharedPeerLog log, NSWindow& window) : m_pen(std::move(log), window.title()->utf8()) {}
    ~RecordingWindowPeer() override { m_pen.write("gone"); }
    void windowChanged(WindowChange change) override { m_pen.write(nameOf(change)); }
    void orderAbove(NSWindow* relative) override { m_pen.write("above " + titleOf(relative)); }
    void orderBelow(NSWindow* relative) override { m_pen.write("below " + titleOf(relative)); }
    void orderOut() override { m_pen.write("out"); }
    void takeKeyboard() override { m_pen.write("keyboard"); }
    void playFrameOrigins(std::span<const NSPoint> points, double seconds) override {
        m_pen.write("plays");
        m_pen.log().playedOrigins.assign(points.begin(), points.end());
        m_pen.log().playedSeconds = seconds;
    }

  private:
    static std::string titleOf(NSWindow* window) { return window ? window->title()->utf8() : "all"; }

    PeerPen m_pen;
};

/// Makes peers that write down what they are told, each under the name that its object has by then: a view's identifier
/// or a window's title.
class RecordingToolkit : public ToolkitInUse {
  public:
    std::unique_ptr<ViewPeer> makeViewPeer(NSView& view) override {
        return std::make_unique<RecordingViewPeer>(m_log, view);
    }
    std::unique_ptr<WindowPeer> makeWindowPeer(NSWindow& window) override {
        return std::make_unique<RecordingWindowPeer>(m_log, window);
    }

    /// What was written down so far, which is then forgotten.
    std::string taken() { return std::exchange(m_log->told, {}); }

    [[nodiscard]] const std::vector<NSPoint>& playedOrigins() const { return m_log->playedOrigins; }
    [[nodiscard]] double playedSeconds() const { return m_log->playedSeconds; }

  private:
    SharedPeerLog m_log = std::make_shared<PeerLog>();
};

} // namespace zr::test
