#include <zrbasic/platform/qt/styled_document_p.h>

#include <zrbasic/platform/appkit/image.h>
#include <zrbasic/platform/appkit/paragraph_style.h>
#include <zrbasic/platform/appkit/text_attachment.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/url.h>
#include <zrbasic/platform/qt/conversions_p.h>
#include <zrbasic/platform/qt/palette_p.h>

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextObjectInterface>

#include <algorithm>

namespace zr::qt {

namespace {

constexpr int attachmentObject = QTextFormat::UserObject + 1;
constexpr int imageProperty = QTextFormat::UserProperty + 1;
constexpr int sizeProperty = QTextFormat::UserProperty + 2;
constexpr int offsetProperty = QTextFormat::UserProperty + 3;

/// Draws images on text lines.
class AttachmentDrawer final : public QObject, public QTextObjectInterface {
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)
  public:
    using QObject::QObject;

    QSizeF intrinsicSize(QTextDocument*, int, const QTextFormat& format) override {
        // Qt lets objects end on the baseline, so one that reaches below it is as high as the rest of it.
        const QSizeF size = format.property(sizeProperty).toSizeF();
        const QPointF offset = format.property(offsetProperty).toPointF();
        return {std::max(0.0, size.width()), std::max(0.0, size.height() + offset.y())};
    }

    void drawObject(QPainter* painter, const QRectF& rect, QTextDocument*, int, const QTextFormat& format) override {
        const auto image = format.property(imageProperty).value<QImage>();
        const QSizeF size = format.property(sizeProperty).toSizeF();
        if (image.isNull() || size.isEmpty()) {
            return;
        }
        const double dx = format.property(offsetProperty).toPointF().x();
        painter->drawImage(QRectF(rect.topLeft() + QPointF(dx, 0), size), image);
    }
};

QTextCharFormat attachmentFormat(QTextCharFormat format, NSTextAttachment& attachment) {
    const Ref<NSTextAttachmentCell> cell = attachment.attachmentCell();
    format.setObjectType(attachmentObject);
    if (!cell) {
        return format;
    }
    const NSSize size = cell->cellSize();
    const NSPoint offset = cell->cellBaselineOffset();
    format.setProperty(sizeProperty, QSizeF(size.width, size.height));
    format.setProperty(offsetProperty, QPointF(offset.x, offset.y));
    const Ref<NSImage> image = cell->image();
    const Ref<NSBitmapImageRep> bitmap = image ? image->bestRepresentation() : nullptr;
    if (bitmap) {
        // A copy: the document may outlive the bitmap.
        format.setProperty(imageProperty, imageOver(*bitmap).copy());
    }
    return format;
}

QString addressOf(NSObject* link) {
    if (const auto* const url = cast<NSURL>(link)) {
        return toQt(url->absoluteString());
    }
    return toQt(cast<NSString>(link));
}

/// The blues that the readers of HTML give to links are meant for paper.
bool isUnreadableLink(const QColor& color) {
    const bool isLinkBlue = color == QColor(0, 0, 0xee) || color == QColor(0, 0, 0xff);
    return isLinkBlue && plainTextColor() != QColor(Qt::black);
}

QTextCharFormat formatOf(NSDictionary& attributes) {
    QTextCharFormat format;
    format.setFont(toQt(cast<NSFont>(attributes.objectForKey(NSFontAttributeName()).get())));
    const auto* const underline = cast<NSNumber>(attributes.objectForKey(NSUnderlineStyleAttributeName()).get());
    format.setFontUnderline(underline && underline->integerValue() != NSUnderlineStyleNone);
    auto* const color = cast<NSColor>(attributes.objectForKey(NSForegroundColorAttributeName()).get());
    format.setForeground(color ? toQt(color) : plainTextColor());
    if (const id link = attributes.objectForKey(NSLinkAttributeName())) {
        format.setAnchor(true);
        format.setAnchorHref(addressOf(link));
        // A link looks like one unless it was told how to look.
        if (!color || isUnreadableLink(toQt(color))) {
            format.setForeground(linkTextColor());
        }
        if (!underline) {
            format.setFontUnderline(true);
        }
    }
    return format;
}

QTextBlockFormat blockFormatOf(NSDictionary* attributes) {
    QTextBlockFormat format;
    const auto* const style =
        attributes ? cast<NSParagraphStyle>(attributes->objectForKey(NSParagraphStyleAttributeName()).get()) : nullptr;
    if (!style) {
        return format;
    }
    switch (style->alignment()) {
        case NSTextAlignmentLeft:
            format.setAlignment(Qt::AlignLeft | Qt::AlignAbsolute);
            break;
        case NSTextAlignmentRight:
            format.setAlignment(Qt::AlignRight | Qt::AlignAbsolute);
            break;
        case NSTextAlignmentCenter:
            format.setAlignment(Qt::AlignHCenter);
            break;
        case NSTextAlignmentJustified:
            format.setAlignment(Qt::AlignJustify);
            break;
        case NSTextAlignmentNatural:
            // Qt goes by the direction of the text itself.
            break;
    }
    if (style->lineSpacing() > 0) {
        format.setLineHeight(style->lineSpacing(), QTextBlockFormat::LineDistanceHeight);
    }
    return format;
}

bool endsParagraph(char16_t unit) {
    return unit == u'\n' || unit == u'\r' || unit == 0x85 || unit == 0x2028 || unit == 0x2029;
}

/// What has a meaning of its own inside of a document of Qt does not come from a text.
char16_t harmless(char16_t unit) {
    const bool isMark = unit == 0xFDD0 || unit == 0xFDD1 || unit == QChar::ObjectReplacementCharacter || unit == 0;
    return isMark ? u'\uFFFD' : unit;
}

class Filler {
  public:
    Filler(QTextDocument& document, NSAttributedString& text) : m_cursor(&document), m_text(text) {}

    void fill() {
        m_cursor.setBlockFormat(blockFormatAt(0));
        m_text.enumerateAttributesInRange_options_usingBlock(
            {0, m_text.length()}, 0,
            [this](NSDictionary* attributes, NSRange range, bool&) { add(*attributes, range); });
    }

  private:
    void add(NSDictionary& attributes, NSRange range) {
        const QTextCharFormat format = formatOf(attributes);
        auto* const attachment = cast<NSTextAttachment>(attributes.objectForKey(NSAttachmentAttributeName()).get());
        QString piece;
        const auto flush = [&] {
            if (!piece.isEmpty()) {
                m_cursor.insertText(piece, format);
                piece.clear();
            }
        };
        for (NSUInteger index = range.location; index < NSMaxRange(range); ++index) {
            const char16_t unit = m_text.view()[index];
            if (endsParagraph(unit) && !isFirstOfPair(index)) {
                flush();
                m_cursor.insertBlock(blockFormatAt(index + 1), format);
            } else if (unit == NSAttachmentCharacter && attachment) {
                flush();
                m_cursor.insertText(QString(QChar::ObjectReplacementCharacter), attachmentFormat(format, *attachment));
            } else {
                // Qt would take the pair as one; a mark without width keeps all places what they are.
                piece.append(QChar(endsParagraph(unit) ? u'\u200B' : harmless(unit)));
            }
        }
        flush();
    }

    [[nodiscard]] bool isFirstOfPair(NSUInteger index) const {
        const auto units = m_text.view();
        return units[index] == u'\r' && index + 1 < units.size() && units[index + 1] == u'\n';
    }

    [[nodiscard]] QTextBlockFormat blockFormatAt(NSUInteger index) const {
        if (m_text.length() == 0) {
            return {};
        }
        const NSUInteger last = m_text.length() - 1;
        return blockFormatOf(m_text.attributesAtIndex_effectiveRange(std::min(index, last), nullptr));
    }

    QTextCursor m_cursor;
    NSAttributedString& m_text;
};

} // namespace

void fillDocument(QTextDocument& document, NSAttributedString& text, double padding) {
    const bool hadUndo = document.isUndoRedoEnabled();
    document.setUndoRedoEnabled(false);
    document.clear();
    document.setDocumentMargin(0);
    auto* const layout = document.documentLayout();
    if (layout->handlerForObject(attachmentObject) == nullptr) {
        layout->registerHandler(attachmentObject, new AttachmentDrawer(layout));
    }
    Filler(document, text).fill();
    // Lost with the content, so it is set last.
    QTextFrameFormat frame = document.rootFrame()->frameFormat();
    frame.setMargin(0);
    frame.setLeftMargin(padding);
    frame.setRightMargin(padding);
    document.rootFrame()->setFrameFormat(frame);
    document.setUndoRedoEnabled(hadUndo);
}

} // namespace zr::qt

#include "styled_document_p.moc"
