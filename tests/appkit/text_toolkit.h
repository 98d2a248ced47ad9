#pragma once

#include <zrbasic/platform/appkit/peer.h>
#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/appkit/view.h>
#include <zrbasic/platform/foundation/attributed_string.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/url.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zr::test {

/// Writes down what the view tells.
class LoggingPeer : public ViewPeer {
  public:
    explicit LoggingPeer(std::string& log) : m_log(log) {}

    void viewChanged(ViewChange change) override {
        switch (change) {
            case ViewChange::Content:
                m_log += "content ";
                break;
            case ViewChange::Selection:
                m_log += "selection ";
                break;
            case ViewChange::Layout:
                m_log += "layout ";
                break;
            default:
                break;
        }
    }
    void takeKeyboard() override { m_log += "keyboard "; }

  private:
    std::string& m_log;
};

/// Letters are 6 points wide and lines 10 points high; addresses are written down instead of opened.
class TextToolkit : public Toolkit {
  public:
    TextToolkit() { m_before = setCurrentToolkit(this); }
    ~TextToolkit() override { setCurrentToolkit(m_before); }

    NSSize naturalSizeOfText(NSAttributedString* text, double lineFragmentPadding) override {
        ++measurements;
        const std::vector<double> widths = lineWidths(text);
        return {*std::max_element(widths.begin(), widths.end()) + 2 * lineFragmentPadding,
                10.0 * static_cast<double>(widths.size())};
    }
    double heightOfText(NSAttributedString* text, double width, double lineFragmentPadding) override {
        ++measurements;
        double lines = 0;
        for (const double lineWidth : lineWidths(text)) {
            lines += std::max(1.0, std::ceil(lineWidth / std::max(6.0, width - 2 * lineFragmentPadding)));
        }
        return 10 * lines;
    }
    FontMetrics metricsOfFont(NSFont*) override { return metrics; }
    Ref<NSAttributedString> attributedStringFromHTML(NSString* html) override {
        lastHTML = html->utf8();
        const auto text = "read: "_ns->stringByAppendingString(html);
        return readsNothing ? make<NSAttributedString>()
                            : make<NSAttributedString>(&NSAttributedString::initWithString, text);
    }
    bool openURL(NSURL* url) override {
        opened += url->absoluteString()->utf8() + ' ';
        return true;
    }
    std::unique_ptr<ViewPeer> makeViewPeer(NSView&) override { return std::make_unique<LoggingPeer>(peerLog); }

    /// What the peers were told since this was last asked for.
    std::string told() { return std::exchange(peerLog, ""); }

    int measurements = 0;
    FontMetrics metrics{8, -2, 1};
    bool readsNothing = false;
    std::string lastHTML;
    std::string opened;
    std::string peerLog;

  private:
    static std::vector<double> lineWidths(NSAttributedString* text) {
        std::vector<double> widths{0};
        for (const char16_t unit : text->view()) {
            if (unit == u'\n') {
                widths.push_back(0);
            } else {
                widths.back() += 6;
            }
        }
        return widths;
    }

    Toolkit* m_before;
};

} // namespace zr::test
