#pragma once

#include <zrbasic/platform/appkit/paragraph_style.h>
#include <zrbasic/platform/appkit/text_attachment.h>

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QString>
#include <QTextLayout>

#include <memory>
#include <vector>

class QPainter;
class QTextDocument;

namespace zr::qt {

/// How a run of text looks, as far as its attributes say.
struct TextLook {
    QFont font;
    /// Invalid for none.
    QColor color;
    bool isUnderlined = false;
    /// Null where there is no attachment.
    Ref<NSTextAttachmentCell> cell;
};

/// The text of a paragraph, without its end. There is always a look, even for no text.
struct ParagraphText {
    struct Run {
        int start = 0;
        int length = 0;
        const TextLook* look = nullptr;
    };

    QString text;
    /// Without gaps; one of no length where there is no text.
    std::vector<Run> runs;
    NSTextAlignment alignment = NSTextAlignmentNatural;
    NSLineBreakMode lineBreakMode = NSLineBreakByWordWrapping;
    double lineSpacing = 0;
};

/// A paragraph laid out in lines. Borrows the looks.
class TextParagraph {
  public:
    enum class Breaking {
        /// By the line-break mode.
        Styled,
        /// One line, shortened by the line-break mode and aligned as by a line editor.
        Single,
        /// One line as long as it likes.
        None,
    };

    TextParagraph(const ParagraphText& text, double width, Breaking breaking);
    ~TextParagraph();
    TextParagraph(const TextParagraph&) = delete;
    TextParagraph& operator=(const TextParagraph&) = delete;

    /// With the spacing between its lines.
    [[nodiscard]] double height() const { return m_height; }
    [[nodiscard]] double textWidth() const;
    void draw(QPainter& painter, double top, const QRectF& part) const;

  private:
    struct Extent {
        double ascent = 0;
        double height = 0;
    };

    void setText(const ParagraphText& text, bool keepsBlanks);
    void layOut(const ParagraphText& text, double width, Breaking breaking);
    [[nodiscard]] double lineStart(const ParagraphText& text, const QTextLine& line, double width) const;
    [[nodiscard]] Extent extentOf(const ParagraphText& text, const QTextLine& line) const;
    [[nodiscard]] QTextLayout& layout() const;

    QTextLayout m_plain;
    /// What attachments take to have room on the line; null without any.
    std::unique_ptr<QTextDocument> m_document;
    double m_height = 0;
};

/// The paragraph with "…" in place of what has to go to make it no wider than `width`, at the end, in the middle or at
/// the beginning; as it is when it is short enough. Never without the "…", however small the width.
[[nodiscard]] ParagraphText shortened(const ParagraphText& text, double width);

} // namespace zr::qt
