#include <zrbasic/platform/qt/html_reader_p.h>

#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/foundation/mutable_attributed_string.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/url.h>
#include <zrbasic/platform/qt/conversions_p.h>
#include <zrbasic/platform/qt/html_filter_p.h>

#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>

#include <utility>

namespace zr::qt {
namespace {

/// Reads nothing but what it is given.
class ClosedDocument final : public QTextDocument {
  protected:
    QVariant loadResource(int, const QUrl&) override { return {}; }
};

/// Qt leaves the entities in an attribute as they are written.
QString withoutEntities(QString text) {
    static constexpr std::pair<const char*, char> entities[] = {{"&lt;", '<'},    {"&gt;", '>'},   {"&quot;", '"'},
                                                                {"&apos;", '\''}, {"&#39;", '\''}, {"&#38;", '&'},
                                                                {"&amp;", '&'}};
    for (const auto& [entity, character] : entities) {
        text.replace(QLatin1String(entity), QString(QLatin1Char(character)));
    }
    return text;
}

id linkTo(const QString& address) {
    const Ref<NSString> text = fromQt(withoutEntities(address));
    const Ref<NSURL> url = NSURL::URLWithString(text);
    return url ? id(url) : id(text);
}

Ref<NSDictionary> attributesOf(const QTextCharFormat& format) {
    const Ref<NSMutableDictionary> attributes = make<NSMutableDictionary>();
    attributes->setObject_forKey(fromQt(format.font()), NSFontAttributeName());
    if (format.hasProperty(QTextFormat::ForegroundBrush)) {
        attributes->setObject_forKey(fromQt(format.foreground().color()), NSForegroundColorAttributeName());
    }
    if (format.fontUnderline()) {
        attributes->setObject_forKey(box(NSInteger{NSUnderlineStyleSingle}), NSUnderlineStyleAttributeName());
    }
    if (format.isAnchor() && !format.anchorHref().isEmpty()) {
        attributes->setObject_forKey(linkTo(format.anchorHref()), NSLinkAttributeName());
    }
    return attributes;
}

/// What stands before an entry of a list.
QString markOf(const QTextBlock& block, const QTextList& list) {
    switch (list.format().style()) {
        case QTextListFormat::ListDisc:
        case QTextListFormat::ListCircle:
        case QTextListFormat::ListSquare:
        case QTextListFormat::ListStyleUndefined:
            return QChar(0x2022) + QStringLiteral(" ");
        default:
            return list.itemText(block) + u' ';
    }
}

void append(NSMutableAttributedString& result, QString text, const QTextCharFormat& format) {
    text.remove(QChar::ObjectReplacementCharacter);
    text.replace(QChar::LineSeparator, u'\n');
    if (!text.isEmpty()) {
        result.append(std::u16string_view(reinterpret_cast<const char16_t*>(text.utf16()), std::size_t(text.size())),
                      attributesOf(format));
    }
}

} // namespace

Ref<NSAttributedString> readHTML(NSString* html) {
    const Ref<NSMutableAttributedString> result = make<NSMutableAttributedString>();
    if (!html || html->length() == 0) {
        return result;
    }
    ClosedDocument document;
    document.setUndoRedoEnabled(false);
    document.setDefaultFont(toQt(static_cast<NSFont*>(nullptr)));
    // The same on every desktop, whatever its palette.
    document.setDefaultStyleSheet(QStringLiteral("a { color: #0000ee; }"));
    document.setHtml(safeHTML(toQt(html)));
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (block != document.begin()) {
            append(*result, QStringLiteral("\n"), block.previous().charFormat());
        }
        if (const QTextList* const list = block.textList()) {
            append(*result, markOf(block, *list), block.charFormat());
        }
        for (auto fragment = block.begin(); !fragment.atEnd(); ++fragment) {
            append(*result, fragment.fragment().text(), fragment.fragment().charFormat());
        }
    }
    return Ref<NSAttributedString>(cast<NSAttributedString>(result->copy()));
}

} // namespace zr::qt
