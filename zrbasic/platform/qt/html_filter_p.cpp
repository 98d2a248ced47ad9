#include <zrbasic/platform/qt/html_filter_p.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace zr::qt {
namespace {

/// Elements inside of each other; Qt walks up all of them for each new one.
constexpr std::size_t deepest = 64;
/// Code units of style sheets, each rule of which is tried on each element.
constexpr qsizetype longestStyleSheet = 4096;
/// Code units of one tag, attributes included.
constexpr qsizetype longestTag = 8192;

bool isOneOf(QStringView name, const auto& names) {
    return std::any_of(std::begin(names), std::end(names),
                       [&](const char* candidate) { return name == QLatin1String(candidate); });
}

/// Without an end of their own, so nothing lies in them.
constexpr std::array voidElements = {"area",  "base", "br",   "col",   "embed",  "hr",    "img",
                                     "input", "link", "meta", "param", "source", "track", "wbr"};
/// Left out, with what is in them up to their end.
constexpr std::array hiddenElements = {"script", "title", "textarea", "select", "svg", "iframe", "object"};
/// Left out; what is in them stays.
constexpr std::array droppedElements = {"img",   "link", "base",  "embed", "source",
                                        "input", "meta", "param", "area",  "track"};
constexpr std::array tableElements = {"table", "caption", "thead", "tbody", "tfoot", "tr", "td", "th"};
/// On lines of their own, like tables.
constexpr std::array blockElements = {"address", "blockquote", "center", "dd", "div", "dl", "dt", "h1",  "h2", "h3",
                                      "h4",      "h5",         "h6",     "hr", "li",  "ol", "p",  "pre", "ul"};
/// Ended by their next sibling where they have no end of their own.
constexpr std::array siblings = {"p", "li", "dt", "dd"};

class Filter {
  public:
    explicit Filter(QStringView html) : m_html(html) { m_result.reserve(html.size()); }

    QString run() {
        while (m_place < m_html.size()) {
            const qsizetype mark = m_html.indexOf(u'<', m_place);
            if (mark < 0) {
                break;
            }
            takeText(mark);
            readTag(mark);
        }
        takeText(m_html.size());
        return std::move(m_result);
    }

  private:
    void takeText(qsizetype end) {
        addText(m_html.mid(m_place, end - m_place));
        m_place = end;
    }

    void addText(QStringView text) {
        if (!text.trimmed().isEmpty()) {
            beginLine();
            m_isInLine = true;
        } else if (!m_isInLine && std::find(m_open.begin(), m_open.end(), QLatin1String("pre")) == m_open.end()) {
            // Blanks between blocks would hang on to the one before.
            return;
        }
        m_result += text;
    }

    /// Qt would go on in the line of a block that has ended, unless what follows is a block, too.
    void beginLine() {
        if (m_isBehindBlock) {
            m_result += QStringLiteral("<div>");
            m_isBehindBlock = false;
            m_hasOwnBlock = true;
            m_ownDepth = m_open.size();
        }
    }

    void endOwnBlock() {
        if (m_hasOwnBlock) {
            m_result += QStringLiteral("</div>");
            m_hasOwnBlock = false;
        }
    }

    void readTag(qsizetype start) {
        const QStringView rest = m_html.mid(start);
        if (rest.startsWith(u"<!--")) {
            const qsizetype end = m_html.indexOf(u"-->", start + 4);
            m_place = end < 0 ? m_html.size() : end + 3;
            return;
        }
        const bool isEnd = rest.size() > 1 && rest[1] == u'/';
        const qsizetype nameStart = start + (isEnd ? 2 : 1);
        qsizetype nameEnd = nameStart;
        while (nameEnd < m_html.size() && (m_html[nameEnd].isLetterOrNumber() || m_html[nameEnd] == u':')) {
            ++nameEnd;
        }
        if (nameEnd == nameStart || !m_html[nameStart].isLetter()) {
            if (rest.size() > 1 && (rest[1] == u'!' || rest[1] == u'?' || isEnd)) {
                m_place = endOfTag(nameStart);
            } else {
                // Just a sign.
                addText(u"&lt;");
                m_place = start + 1;
            }
            return;
        }
        const QString name = m_html.mid(nameStart, nameEnd - nameStart).toString().toLower();
        const qsizetype end = endOfTag(nameEnd);
        m_place = end;
        if (isOneOf(name, droppedElements)) {
            return;
        }
        const bool isHidden = isOneOf(name, hiddenElements);
        if (isHidden || name == QLatin1String("style")) {
            if (!isEnd) {
                skipElement(name, !isHidden);
            }
            return;
        }
        const QString written = isOneOf(name, tableElements) ? QStringLiteral("div") : name;
        isEnd ? close(name, written) : open(name, written, m_html.mid(nameEnd, end - nameEnd));
    }

    void open(const QString& name, const QString& written, QStringView attributes) {
        const bool isVoid = isOneOf(name, voidElements);
        if (!isVoid && isOneOf(name, siblings) && !m_open.empty() && m_open.back() == name) {
            close(name, written);
        }
        if (isBlock(name)) {
            if (m_open.size() <= m_ownDepth) {
                endOwnBlock();
            }
            m_isBehindBlock = false;
            m_isInLine = false;
        } else {
            beginLine();
        }
        if (!isVoid) {
            if (m_open.size() >= deepest) {
                ++m_left;
                return;
            }
            m_open.push_back(name);
        }
        m_result += u'<' + written;
        if (attributes.size() <= longestTag) {
            m_result += attributes;
        }
        if (!m_result.endsWith(u'>')) {
            m_result += u'>';
        }
    }

    void close(const QString& name, const QString& written) {
        if (m_left > 0) {
            // Its beginning was left out, or that of one in it.
            --m_left;
            return;
        }
        const auto found = std::find(m_open.rbegin(), m_open.rend(), name);
        if (found == m_open.rend()) {
            return;
        }
        m_open.erase(std::prev(found.base()), m_open.end());
        if (m_open.size() < m_ownDepth) {
            endOwnBlock();
        }
        m_result += QLatin1String("</") + written + u'>';
        if (isBlock(name)) {
            m_isBehindBlock = written == QLatin1String("div");
            m_isInLine = false;
        }
    }

    static bool isBlock(const QString& name) { return isOneOf(name, blockElements) || isOneOf(name, tableElements); }

    /// One past the ">" of the tag, which does not count inside of quotes.
    qsizetype endOfTag(qsizetype place) const {
        QChar quote;
        for (; place < m_html.size(); ++place) {
            const QChar unit = m_html[place];
            if (!quote.isNull()) {
                quote = unit == quote ? QChar() : quote;
            } else if (unit == u'"' || unit == u'\'') {
                quote = unit;
            } else if (unit == u'>') {
                return place + 1;
            }
        }
        return place;
    }

    void skipElement(const QString& name, bool isStyle) {
        const QString ending = QLatin1String("</") + name;
        const qsizetype end = m_html.indexOf(ending, m_place, Qt::CaseInsensitive);
        const qsizetype stop = end < 0 ? m_html.size() : end;
        const QStringView content = m_html.mid(m_place, stop - m_place);
        if (isStyle && m_styleLength + content.size() <= longestStyleSheet) {
            m_styleLength += content.size();
            m_result += QStringLiteral("<style>%1</style>").arg(content);
        }
        m_place = end < 0 ? m_html.size() : endOfTag(end);
    }

    QStringView m_html;
    qsizetype m_place = 0;
    QString m_result;
    /// Those that are open, the outermost first.
    std::vector<QString> m_open;
    /// Open ones that were left out.
    std::size_t m_left = 0;
    qsizetype m_styleLength = 0;
    /// Whether the line has text so far.
    bool m_isInLine = false;
    /// Whether a block has just ended.
    bool m_isBehindBlock = false;
    /// Whether a block is open that the HTML does not have, and how many elements that has were open around it.
    bool m_hasOwnBlock = false;
    std::size_t m_ownDepth = 0;
};

} // namespace

QString safeHTML(QStringView html) {
    return Filter(html).run();
}

} // namespace zr::qt
