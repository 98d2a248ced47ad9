#pragma once

#include "peer_testing.h"

#include <zrbasic/platform/foundation/attributed_string.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace zr::test {

/// A toolkit whose letters are all equally wide, and whose lines are as high as its fonts reach.
class MeasuringToolkit : public RecordingToolkit {
  public:
    explicit MeasuringToolkit(double widthOfLetter = 10, FontMetrics ofFonts = {12, -3, 1})
        : metrics(ofFonts), m_letter(widthOfLetter) {}

    NSSize naturalSizeOfText(NSAttributedString* text, double lineFragmentPadding) override {
        ++measurements;
        if (text->length() == 0) {
            return NSZeroSize;
        }
        const std::vector<double> widths = lineWidths(text);
        return {*std::max_element(widths.begin(), widths.end()) + 2 * lineFragmentPadding,
                lineHeight() * static_cast<double>(widths.size())};
    }
    double heightOfText(NSAttributedString* text, double width, double lineFragmentPadding) override {
        ++measurements;
        double lines = 0;
        for (const double lineWidth : lineWidths(text)) {
            lines += std::max(1.0, std::ceil(lineWidth / std::max(m_letter, width - 2 * lineFragmentPadding)));
        }
        return lineHeight() * lines;
    }
    FontMetrics metricsOfFont(NSFont*) override { return metrics; }

    FontMetrics metrics;
    int measurements = 0;

  private:
    [[nodiscard]] double lineHeight() const { return metrics.ascender - metrics.descender; }
    [[nodiscard]] std::vector<double> lineWidths(NSAttributedString* text) const {
        std::vector<double> widths{0};
        for (const char16_t unit : text->view()) {
            if (unit == u'\n') {
                widths.push_back(0);
            } else {
                widths.back() += m_letter;
            }
        }
        return widths;
    }

    double m_letter;
};

} // namespace zr::test
