#include <zrbasic/platform/foundation/pattern_guard_p.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace zr::detail {
namespace {

// Each set costs the engine up to a tenth of a millisecond of compiling, and one made of properties ten times that.
constexpr std::size_t largestSetCount = 2000;
constexpr std::size_t setsPerProperty = 4;

// Below this, reading the content of a group again and again is cheap enough to go uncounted.
constexpr std::size_t shortGroupLength = 64;

// Matches nothing, sixteen times; the engine counts every round as work.
constexpr std::u16string_view countedNothing = u"(?:){16}";

bool isDigit(char16_t unit) {
    return unit >= u'0' && unit <= u'9';
}

// What the engine skips between items where comments are allowed.
bool isPatternSpace(char16_t unit) {
    return (unit >= 0x9 && unit <= 0xD) || unit == 0x20 || unit == 0x85 || unit == 0x200E || unit == 0x200F ||
           unit == 0x2028 || unit == 0x2029;
}

bool endsLine(char16_t unit) {
    return unit == 0xA || unit == 0xD || unit == 0x85 || unit == 0x2028;
}

struct Token {
    enum Kind { End, Syntax, Escape, Literal };
    Kind kind = End;
    char16_t unit = 0;
    std::size_t begin = 0;

    bool is(char16_t syntax) const { return kind == Syntax && unit == syntax; }
};

// Splits a pattern the way the engine does: quoting and comments work everywhere, inside sets too.
class Lexer {
  public:
    Lexer(std::u16string_view text, bool allowsComments) : comments(allowsComments), m_text(text) {}

    Token next() {
        for (;;) {
            if (position >= m_text.size())
                return {Token::End, 0, m_text.size()};
            const std::size_t begin = position;
            const char16_t unit = m_text[position++];
            if (m_isQuoting) {
                if (unit == u'\\' && peek() == u'E') {
                    ++position;
                    m_isQuoting = false;
                    continue;
                }
                return {Token::Literal, unit, begin};
            }
            if (unit == u'\\') {
                const char16_t escaped = peek();
                if (position < m_text.size())
                    ++position;
                if (escaped == u'Q') {
                    m_isQuoting = true;
                    continue;
                }
                return {Token::Escape, escaped, begin};
            }
            if (comments && isPatternSpace(unit))
                continue;
            if (comments && unit == u'#' && !isInsideParenthesisComment) {
                while (position < m_text.size() && !endsLine(m_text[position]))
                    ++position;
                continue;
            }
            return {Token::Syntax, unit, begin};
        }
    }

    char16_t peek() const { return position < m_text.size() ? m_text[position] : u'\0'; }

    void skipBehind(char16_t unit) {
        while (position < m_text.size() && m_text[position++] != unit) {
        }
    }

    std::size_t position = 0;
    bool comments;
    bool isInsideParenthesisComment = false;

  private:
    std::u16string_view m_text;
    bool m_isQuoting = false;
};

class Guard {
  public:
    Guard(std::u16string_view pattern, bool comments) : m_pattern(pattern), m_lexer(pattern, comments) {}

    GuardedPattern run() {
        for (Token token = m_lexer.next(); token.kind != Token::End && !m_isBroken; token = m_lexer.next())
            take(token);
        GuardedPattern result;
        result.isTooCostly = m_setCount > largestSetCount;
        result.isRewritten = !m_edits.empty() && !m_isBroken;
        result.text = result.isRewritten ? edited() : std::u16string(m_pattern);
        return result;
    }

  private:
    enum class Item { None, Solid, MayBeEmpty };

    struct Group {
        bool commentsOutside = false;
        bool hidesWork = false;
        bool hasLoop = false;
        std::size_t contentBegin = 0;
    };

    struct Edit {
        std::size_t begin;
        std::size_t end;
        std::u16string_view text;
    };

    void take(const Token& token) {
        if (token.kind == Token::Literal) {
            m_item = Item::Solid;
        } else if (token.kind == Token::Escape) {
            takeEscape(token);
        } else {
            takeSyntax(token);
        }
    }

    void takeEscape(const Token& token) {
        m_item = Item::Solid;
        if (isDigit(token.unit) && token.unit != u'0') {
            while (isDigit(m_lexer.peek()))
                ++m_lexer.position;
            takeReference(token.begin);
        } else if (token.unit == u'k' && m_lexer.peek() == u'<') {
            m_lexer.skipBehind(u'>');
            takeReference(token.begin);
        } else if (m_lexer.peek() == u'{' &&
                   (token.unit == u'p' || token.unit == u'P' || token.unit == u'N' || token.unit == u'x')) {
            countSetNamed(token.unit);
            m_lexer.skipBehind(u'}');
        }
    }

    void takeReference(std::size_t begin) {
        m_item = Item::MayBeEmpty;
        markLoop();
        m_edits.push_back({begin, begin, countedNothing});
    }

    void takeSyntax(const Token& token) {
        switch (token.unit) {
            case u'(':
                takeOpening();
                break;
            case u')':
                takeClosing(token.begin);
                break;
            case u'[':
                takeSet();
                break;
            case u'{':
                m_lexer.skipBehind(u'}');
                takeQuantifier(token, {});
                break;
            case u'*':
                takeQuantifier(token, u"{0,}?");
                break;
            case u'+':
                takeQuantifier(token, u"{1,}?");
                break;
            case u'?':
                takeQuantifier(token, {});
                break;
            case u'|':
                m_item = Item::None;
                break;
            case u'^':
            case u'$':
                m_item = Item::MayBeEmpty;
                break;
            default:
                m_item = Item::Solid;
        }
    }

    void takeQuantifier(const Token& token, std::u16string_view countedLazyForm) {
        markLoop();
        const Lexer behindQuantifier = m_lexer;
        const Token suffix = m_lexer.next();
        if (suffix.is(u'?')) {
            if (m_item == Item::MayBeEmpty && !countedLazyForm.empty())
                m_edits.push_back({token.begin, m_lexer.position, countedLazyForm});
        } else if (!suffix.is(u'+')) {
            m_lexer = behindQuantifier;
        }
        m_item = Item::None;
    }

    void takeSet() {
        std::size_t depth = 0;
        Token token{Token::Syntax, u'[', 0};
        do {
            if (token.is(u'[')) {
                ++depth;
                ++m_setCount;
                Lexer behindOpening = m_lexer;
                token = m_lexer.next();
                if (token.is(u'^')) {
                    behindOpening = m_lexer;
                    token = m_lexer.next();
                }
                // A closing bracket in the first place stands for itself.
                if (!token.is(u']'))
                    m_lexer = behindOpening;
            } else if (token.is(u']') && --depth == 0) {
                break;
            } else if (token.kind == Token::Escape) {
                countSetNamed(token.unit);
            }
            token = m_lexer.next();
        } while (token.kind != Token::End);
        m_item = Item::Solid;
    }

    // Escapes that stand for a set: properties and the short names of some.
    void countSetNamed(char16_t escape) {
        if (std::u16string_view(u"pPN").find(escape) != std::u16string_view::npos) {
            m_setCount += setsPerProperty;
        } else if (std::u16string_view(u"wWdDsShHvV").find(escape) != std::u16string_view::npos) {
            ++m_setCount;
        }
    }

    void takeOpening() {
        const Lexer behindParenthesis = m_lexer;
        if (!m_lexer.next().is(u'?')) {
            m_lexer = behindParenthesis;
            open(false, m_lexer.comments);
            return;
        }
        const Token kind = m_lexer.next();
        switch (kind.kind == Token::Syntax ? kind.unit : u'\0') {
            case u'#':
                skipParenthesisComment();
                break;
            case u':':
                open(false, m_lexer.comments);
                break;
            case u'=':
            case u'!':
            case u'>':
                open(true, m_lexer.comments);
                break;
            case u'<':
                if (m_lexer.peek() == u'=' || m_lexer.peek() == u'!') {
                    ++m_lexer.position;
                    open(true, m_lexer.comments);
                } else {
                    m_lexer.skipBehind(u'>');
                    open(false, m_lexer.comments);
                }
                break;
            default:
                takeFlags(kind);
        }
    }

    void skipParenthesisComment() {
        m_lexer.isInsideParenthesisComment = true;
        Token token;
        do {
            token = m_lexer.next();
        } while (token.kind != Token::End && !token.is(u')'));
        m_lexer.isInsideParenthesisComment = false;
    }

    void takeFlags(Token flag) {
        bool comments = m_lexer.comments;
        bool value = true;
        for (; flag.kind == Token::Syntax; flag = m_lexer.next()) {
            if (flag.unit == u'-') {
                value = false;
            } else if (flag.unit == u'x') {
                comments = value;
            } else if (flag.unit == u':') {
                open(false, comments);
                return;
            } else if (flag.unit == u')') {
                m_lexer.comments = comments;
                m_item = Item::None;
                return;
            }
        }
        m_isBroken = true;
    }

    void open(bool hidesWork, bool commentsInside) {
        m_groups.push_back({m_lexer.comments, hidesWork, false, m_lexer.position});
        m_lexer.comments = commentsInside;
        m_item = Item::None;
    }

    void takeClosing(std::size_t position) {
        if (m_groups.empty()) {
            m_isBroken = true;
            return;
        }
        const Group group = m_groups.back();
        m_groups.pop_back();
        m_lexer.comments = group.commentsOutside;
        m_item = Item::MayBeEmpty;
        if (group.hidesWork && (group.hasLoop || position - group.contentBegin > shortGroupLength))
            m_edits.push_back({group.contentBegin, group.contentBegin, countedNothing});
        if (group.hasLoop)
            markLoop();
    }

    void markLoop() {
        if (!m_groups.empty())
            m_groups.back().hasLoop = true;
    }

    std::u16string edited() {
        std::stable_sort(m_edits.begin(), m_edits.end(),
                         [](const Edit& left, const Edit& right) { return left.begin < right.begin; });
        std::u16string text;
        text.reserve(m_pattern.size() + m_edits.size() * countedNothing.size());
        std::size_t done = 0;
        for (const Edit& edit : m_edits) {
            text.append(m_pattern, done, edit.begin - done);
            text.append(edit.text);
            done = edit.end;
        }
        text.append(m_pattern, done);
        return text;
    }

    std::u16string_view m_pattern;
    Lexer m_lexer;
    std::vector<Group> m_groups;
    std::vector<Edit> m_edits;
    std::size_t m_setCount = 0;
    Item m_item = Item::None;
    bool m_isBroken = false;
};

} // namespace

GuardedPattern guardedPattern(std::u16string_view pattern, bool comments) {
    return Guard(pattern, comments).run();
}

} // namespace zr::detail
