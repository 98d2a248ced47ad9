#pragma once

#include <zrbasic/platform/appkit/toolkit.h>

#include <QRectF>

#include <memory>
#include <vector>

class QPainter;

namespace zr::qt {

class TextParagraph;

/// As the toolkit says; 0 for null and empty texts. A width that leaves no room, or is not a number, puts every
/// character on a line of its own.
[[nodiscard]] double heightOf(NSAttributedString* text, double width, double lineFragmentPadding);
/// In whole points, rounded up, so that a text put into its natural size never breaks.
[[nodiscard]] NSSize naturalSizeOf(NSAttributedString* text, double lineFragmentPadding);
/// Of the system font of 13 points for null.
[[nodiscard]] FontMetrics metricsOf(NSFont* font);

/// A styled text laid out for a width: paragraphs below each other, each broken, aligned and spaced by the style of its
/// first character. Needs an application object of Qt; main thread only.
class TextLayout {
  public:
    enum class Lines {
        /// As the paragraphs' styles say.
        Styled,
        /// All on one line, on which letters stand where a line editor of Qt has them.
        Single,
        /// Broken at the ends of paragraphs only.
        Unbroken,
    };

    TextLayout(NSAttributedString* text, double width, Lines lines);
    ~TextLayout();
    TextLayout(const TextLayout&) = delete;
    TextLayout& operator=(const TextLayout&) = delete;

    [[nodiscard]] double height() const { return m_height; }
    /// That of the longest line.
    [[nodiscard]] double textWidth() const { return m_textWidth; }
    /// With the upper left corner at the painter's origin and the painter's pen where the text has no colour. Lines that
    /// `part` does not touch may be left out.
    void draw(QPainter& painter, const QRectF& part) const;

  private:
    struct Placed {
        double top = 0;
        std::unique_ptr<TextParagraph> paragraph;
    };

    std::vector<Placed> m_paragraphs;
    double m_height = 0;
    double m_textWidth = 0;
};

} // namespace zr::qt
