#include <zrbasic/platform/qt/text_paragraph_p.h>

#include <zrbasic/platform/qt/attachment_layout_p.h>

#include <QFontMetrics>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>
#include <cmath>

namespace zr::qt {
namespace {

/// Qt counts lines in 64ths of a pixel, in 32 bits; above this it takes a width for boundless.
constexpr double widestLine = 1 << 22;

bool wraps(NSLineBreakMode mode) {
    return mode == NSLineBreakByWordWrapping || mode == NSLineBreakByCharWrapping;
}

bool isShortened(NSLineBreakMode mode) {
    return mode == NSLineBreakByTruncatingHead || mode == NSLineBreakByTruncatingMiddle ||
           mode == NSLineBreakByTruncatingTail;
}

QTextOption::WrapMode wrapModeOf(const ParagraphText& text, TextParagraph::Breaking breaking) {
    if (breaking != TextParagraph::Breaking::Styled || !wraps(text.lineBreakMode)) {
        return QTextOption::NoWrap;
    }
    return text.lineBreakMode == NSLineBreakByCharWrapping ? QTextOption::WrapAnywhere
                                                           : QTextOption::WrapAtWordBoundaryOrAnywhere;
}

NSTextAlignment alignmentOf(const ParagraphText& text) {
    if (text.alignment != NSTextAlignmentNatural) {
        return text.alignment;
    }
    return text.text.isRightToLeft() ? NSTextAlignmentRight : NSTextAlignmentLeft;
}

bool needsFormat(const TextLook& look) {
    return look.color.isValid() || look.isUnderlined;
}

QTextCharFormat formatOf(const TextLook& look) {
    QTextCharFormat format;
    format.setFont(look.font);
    if (look.color.isValid()) {
        format.setForeground(look.color);
    }
    if (look.isUnderlined) {
        format.setFontUnderline(true);
    }
    return format;
}

/// Of the fonts that are asked for: substitutes for missing letters must not move the line.
int ascentOf(const ParagraphText& text) {
    int ascent = 0;
    for (const ParagraphText::Run& run : text.runs) {
        ascent = std::max(ascent, QFontMetrics(run.look->font).ascent());
    }
    return ascent;
}

/// Where a line editor of that width begins its text. It keeps room for its insertion point behind the text.
double editorStart(NSTextAlignment alignment, double textWidth, double width) {
    const int used = int(std::lround(textWidth)) + 1;
    const int room = int(width);
    if (used > room) {
        return 0;
    }
    switch (alignment) {
        case NSTextAlignmentRight:
            return std::max(0, room - used - 1);
        case NSTextAlignmentCenter:
            return -((used - room) / 2);
        default:
            return 0;
    }
}

/// The text before `before` and from `after` on, and "…" between them.
ParagraphText cut(const ParagraphText& whole, int before, int after) {
    ParagraphText part = whole;
    part.text = whole.text.left(before) + QChar(0x2026) + whole.text.mid(after);
    part.runs.clear();
    for (const ParagraphText::Run& run : whole.runs) {
        const int start = run.start;
        const int end = run.start + run.length;
        const int shift = before + 1 - after;
        if (start < before) {
            part.runs.push_back({start, std::min(end, before) - start, run.look});
        }
        if (end > after) {
            part.runs.push_back({std::max(start, after) + shift, end - std::max(start, after), run.look});
        }
    }
    // The mark looks like what stands before it or, at the beginning, behind it.
    const auto second = std::find_if(part.runs.begin(), part.runs.end(),
                                     [&](const ParagraphText::Run& run) { return run.start > before; });
    if (second != part.runs.begin()) {
        ++std::prev(second)->length;
    } else if (second != part.runs.end()) {
        --second->start;
        ++second->length;
    } else {
        part.runs.push_back({0, 1, whole.runs.front().look});
    }
    return part;
}

ParagraphText part(const ParagraphText& whole, int start, int length) {
    ParagraphText some = whole;
    some.text = whole.text.mid(start, length);
    some.runs.clear();
    for (const ParagraphText::Run& run : whole.runs) {
        const int from = std::max(run.start, start);
        const int to = std::min(run.start + run.length, start + length);
        if (from < to) {
            some.runs.push_back({from - start, to - from, run.look});
        }
    }
    return some;
}

double widthOf(const ParagraphText& text) {
    return TextParagraph(text, 0, TextParagraph::Breaking::None).textWidth();
}

} // namespace

TextParagraph::TextParagraph(const ParagraphText& text, double width, Breaking breaking) {
    const double room = std::isnan(width) ? 0 : std::clamp(width, 0.0, widestLine);
    setText(text, breaking == Breaking::Single);
    layOut(text, room, breaking);
    if (breaking != Breaking::None && isShortened(text.lineBreakMode) && textWidth() > room) {
        const ParagraphText shorter = shortened(text, room);
        setText(shorter, breaking == Breaking::Single);
        layOut(shorter, room, breaking);
    }
}

TextParagraph::~TextParagraph() = default;

QTextLayout& TextParagraph::layout() const {
    return m_document ? *m_document->firstBlock().layout() : const_cast<QTextLayout&>(m_plain);
}

void TextParagraph::setText(const ParagraphText& text, bool keepsBlanks) {
    m_document.reset();
    m_plain.clearLayout();
    const QFont& font = text.runs.front().look->font;
    std::vector<PlacedCell> cells;
    for (const ParagraphText::Run& run : text.runs) {
        for (int i = run.start; run.look->cell && i < run.start + run.length; ++i) {
            if (text.text[i] == QChar(NSAttachmentCharacter)) {
                cells.push_back({i, run.look->cell});
            }
        }
    }
    if (cells.empty()) {
        m_plain.setFont(font);
        m_plain.setText(text.text);
    } else {
        m_document = documentWithCells(text.text, font, std::move(cells));
    }
    if (text.runs.size() > 1 || needsFormat(*text.runs.front().look)) {
        QList<QTextLayout::FormatRange> formats;
        for (const ParagraphText::Run& run : text.runs) {
            formats.push_back({run.start, run.length, formatOf(*run.look)});
        }
        layout().setFormats(formats);
    } else {
        layout().setFormats({});
    }
    QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
    option.setTextDirection(Qt::LayoutDirectionAuto);
    if (keepsBlanks) {
        option.setFlags(QTextOption::IncludeTrailingSpaces);
    }
    layout().setTextOption(option);
}

double TextParagraph::lineStart(const ParagraphText& text, const QTextLine& line, double width) const {
    const double left = width - line.naturalTextWidth();
    switch (alignmentOf(text)) {
        case NSTextAlignmentRight:
            // What is too long shows its beginning.
            return text.text.isRightToLeft() ? left : std::max(0.0, left);
        case NSTextAlignmentCenter:
            return std::max(0.0, left / 2);
        default:
            return 0;
    }
}

TextParagraph::Extent TextParagraph::extentOf(const ParagraphText& text, const QTextLine& line) const {
    const int end = line.textStart() + line.textLength();
    if (m_document && end < text.text.size() && text.text[end] == QChar(NSAttachmentCharacter)) {
        // Qt makes room for a picture on the line before it, too, when it finds that it goes to the next one.
        const TextParagraph alone(part(text, line.textStart(), line.textLength()), 0, Breaking::None);
        const QTextLine same = alone.layout().lineAt(0);
        return {same.ascent(), same.height()};
    }
    return {line.ascent(), line.height()};
}

void TextParagraph::layOut(const ParagraphText& text, double width, Breaking breaking) {
    QTextLayout& layout = this->layout();
    QTextOption option = layout.textOption();
    option.setWrapMode(wrapModeOf(text, breaking));
    if (text.alignment == NSTextAlignmentJustified && breaking == Breaking::Styled) {
        option.setAlignment(Qt::AlignJustify);
    }
    layout.setTextOption(option);
    m_height = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLeadingIncluded(true);
        line.setLineWidth(breaking == Breaking::None ? widestLine : width);
        if (m_height > 0) {
            m_height += text.lineSpacing;
        }
        const Extent extent = extentOf(text, line);
        const double top = m_height + extent.ascent - line.ascent();
        switch (breaking) {
            case Breaking::Styled:
                line.setPosition({lineStart(text, line, width), top});
                break;
            case Breaking::Single:
                line.setPosition({editorStart(alignmentOf(text), line.naturalTextWidth(), width),
                                  double(ascentOf(text) - std::lround(line.ascent()))});
                break;
            case Breaking::None:
                line.setPosition({0, top});
                break;
        }
        m_height += extent.height;
    }
    layout.endLayout();
}

double TextParagraph::textWidth() const {
    double width = 0;
    const QTextLayout& laidOut = layout();
    for (int i = 0; i < laidOut.lineCount(); ++i) {
        width = std::max(width, laidOut.lineAt(i).naturalTextWidth());
    }
    return width;
}

void TextParagraph::draw(QPainter& painter, double top, const QRectF& part) const {
    layout().draw(&painter, QPointF(0, top), {}, part);
}

ParagraphText shortened(const ParagraphText& text, double width) {
    if (widthOf(text) <= width) {
        return text;
    }
    QTextLayout boundaries(text.text);
    const int length = int(text.text.size());
    // With that many code units left; never between those of one letter.
    const auto withKept = [&](int kept) {
        int before = text.lineBreakMode == NSLineBreakByTruncatingTail     ? kept
                     : text.lineBreakMode == NSLineBreakByTruncatingMiddle ? (kept + 1) / 2
                                                                           : 0;
        int after = length - (kept - before);
        if (!boundaries.isValidCursorPosition(before)) {
            before = boundaries.previousCursorPosition(before);
        }
        if (!boundaries.isValidCursorPosition(after)) {
            after = boundaries.nextCursorPosition(after);
        }
        return cut(text, before, after);
    };
    const auto fits = [&](int kept) { return widthOf(withKept(kept)) <= width; };
    // Up in leaps first: most of a long text cannot be seen, and is not worth measuring.
    int most = 1;
    while (most < length && fits(most)) {
        most *= 2;
    }
    int least = most / 2;
    most = std::min(most, length);
    while (most - least > 1) {
        const int middle = least + (most - least) / 2;
        (fits(middle) ? least : most) = middle;
    }
    return withKept(least);
}

} // namespace zr::qt
