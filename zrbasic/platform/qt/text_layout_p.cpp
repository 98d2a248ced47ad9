#include <zrbasic/platform/qt/text_layout_p.h>

#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/foundation/attributed_string.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/qt/conversions_p.h>
#include <zrbasic/platform/qt/text_paragraph_p.h>

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>
#include <memory>

namespace zr::qt {
namespace {

using Runs = std::vector<detail::AttributeRun>;

TextLook lookOf(NSDictionary* attributes) {
    TextLook look;
    look.font = toQt(cast<NSFont>(attributes->objectForKey(NSFontAttributeName())));
    look.color = toQt(cast<NSColor>(attributes->objectForKey(NSForegroundColorAttributeName())));
    const auto underline = Ref<NSNumber>(cast<NSNumber>(attributes->objectForKey(NSUnderlineStyleAttributeName())));
    look.isUnderlined = underline && underline->integerValue() != NSUnderlineStyleNone;
    const auto attachment =
        Ref<NSTextAttachment>(cast<NSTextAttachment>(attributes->objectForKey(NSAttachmentAttributeName())));
    look.cell = attachment ? attachment->attachmentCell() : nullptr;
    return look;
}

bool endsParagraph(char16_t unit) {
    return unit == u'\n' || unit == u'\r' || unit == 0x85 || unit == 0x2028 || unit == 0x2029;
}

/// Walks through the paragraphs of a text that is not empty, and keeps their looks.
class Paragraphs {
  public:
    explicit Paragraphs(NSAttributedString& text) : m_text(text.view()), m_runs(text.runs().runs()) {
        m_looks.reserve(m_runs.size());
        for (const detail::AttributeRun& run : m_runs) {
            m_looks.push_back(lookOf(run.attributes));
        }
    }

    /// All of it as one paragraph, with blanks where there are ends, as a line editor shows them.
    ParagraphText whole() const {
        ParagraphText paragraph = between(0, m_text.size(), 0);
        for (QChar& unit : paragraph.text) {
            const char16_t code = unit.unicode();
            if ((code < 0x20 && code != u'\t') || endsParagraph(code)) {
                unit = u' ';
            }
        }
        return paragraph;
    }

    template <class Visit>
    void each(const Visit& visit) const {
        std::size_t run = 0;
        for (std::size_t start = 0; start <= m_text.size();) {
            std::size_t end = start;
            while (end < m_text.size() && !endsParagraph(m_text[end])) {
                ++end;
            }
            while (run + 1 < m_runs.size() && m_runs[run].end <= start) {
                ++run;
            }
            visit(between(start, end, run));
            const bool isPair = end + 1 < m_text.size() && m_text[end] == u'\r' && m_text[end + 1] == u'\n';
            start = end + (isPair ? 2 : 1);
        }
    }

  private:
    /// `run` is the one that `start` lies in, or the last one.
    ParagraphText between(std::size_t start, std::size_t end, std::size_t run) const {
        ParagraphText paragraph;
        paragraph.text = QString::fromUtf16(m_text.data() + start, qsizetype(end - start));
        const auto style = Ref<NSParagraphStyle>(
            cast<NSParagraphStyle>(m_runs[run].attributes->objectForKey(NSParagraphStyleAttributeName())));
        if (style) {
            const double spacing = style->lineSpacing();
            constexpr double most = 1 << 20;
            paragraph.alignment = style->alignment();
            paragraph.lineBreakMode = style->lineBreakMode();
            // Lines never climb over each other.
            paragraph.lineSpacing = std::isnan(spacing) ? 0 : std::clamp(spacing, 0.0, most);
        }
        std::size_t place = start;
        do {
            const std::size_t stop = std::min<std::size_t>(end, m_runs[run].end);
            paragraph.runs.push_back({int(place - start), int(std::max(stop, place) - place), &m_looks[run]});
            place = stop;
            ++run;
        } while (place < end);
        return paragraph;
    }

    std::u16string_view m_text;
    const Runs& m_runs;
    std::vector<TextLook> m_looks;
};

/// 0 for what is not a number, and within what can be counted.
double bounded(double length) {
    constexpr double most = 1 << 24;
    return std::isnan(length) ? 0 : std::clamp(length, -most, most);
}

} // namespace

TextLayout::TextLayout(NSAttributedString* text, double width, Lines lines) {
    if (!text || text->length() == 0) {
        return;
    }
    const Paragraphs paragraphs(*text);
    double spacing = 0;
    const auto add = [&](const ParagraphText& source, TextParagraph::Breaking breaking) {
        if (!m_paragraphs.empty()) {
            m_height += spacing;
        }
        auto paragraph = std::make_unique<TextParagraph>(source, width, breaking);
        m_textWidth = std::max(m_textWidth, paragraph->textWidth());
        const double top = m_height;
        m_height += paragraph->height();
        spacing = source.lineSpacing;
        m_paragraphs.push_back({top, std::move(paragraph)});
    };
    if (lines == Lines::Single) {
        add(paragraphs.whole(), TextParagraph::Breaking::Single);
        return;
    }
    const auto breaking = lines == Lines::Styled ? TextParagraph::Breaking::Styled : TextParagraph::Breaking::None;
    paragraphs.each([&](const ParagraphText& source) { add(source, breaking); });
}

TextLayout::~TextLayout() = default;

void TextLayout::draw(QPainter& painter, const QRectF& part) const {
    for (const auto& [top, paragraph] : m_paragraphs) {
        if (top <= part.bottom() && top + paragraph->height() >= part.top()) {
            paragraph->draw(painter, top, part);
        }
    }
}

double heightOf(NSAttributedString* text, double width, double lineFragmentPadding) {
    return TextLayout(text, bounded(width) - 2 * bounded(lineFragmentPadding), TextLayout::Lines::Styled).height();
}

NSSize naturalSizeOf(NSAttributedString* text, double lineFragmentPadding) {
    if (!text || text->length() == 0) {
        return {};
    }
    const TextLayout layout(text, 0, TextLayout::Lines::Unbroken);
    return {std::max(0.0, std::ceil(layout.textWidth()) + 2 * bounded(lineFragmentPadding)), layout.height()};
}

FontMetrics metricsOf(NSFont* font) {
    const QFontMetricsF metrics(toQt(font));
    return {metrics.ascent(), -metrics.descent(), metrics.leading()};
}

} // namespace zr::qt
