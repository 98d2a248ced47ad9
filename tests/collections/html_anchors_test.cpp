#include <zrbasic/collections/html_anchors_p.h>

#include <zrbasic/platform/foundation/pattern_p.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <chrono>
#include <ostream>
#include <string>

namespace zr::detail {

void PrintTo(const HtmlAnchor& anchor, std::ostream* out) {
    *out << anchor.whole.location << '+' << anchor.whole.length << " href " << anchor.href.location << '+'
         << anchor.href.length << " text " << anchor.text.location << '+' << anchor.text.length;
}

namespace {

std::vector<HtmlAnchor> anchorsByEngine(std::u16string_view text) {
    const PatternMatches matches = allMatches(compiledPattern(htmlAnchorPattern, patternCaseInsensitive), text);
    std::vector<HtmlAnchor> anchors;
    for (std::size_t match = 0; match < matches.count(); ++match) {
        anchors.push_back({matches.range(match), matches.range(match, 1), matches.range(match, 2)});
    }
    return anchors;
}

std::u16string repeated(std::u16string_view unit, std::size_t count) {
    std::u16string text;
    text.reserve(unit.size() * count);
    for (std::size_t index = 0; index < count; ++index) {
        text += unit;
    }
    return text;
}

TEST(HtmlAnchors, areWhatThePatternSays) {
    const struct {
        const char* what;
        std::u16string_view text;
        std::size_t count;
    } rows[] = {
        {"nothing", u"", 0},
        {"plain", uR"(<a href="u">t</a>)", 1},
        {"single quotes", u"<a href='u'>t</a>", 1},
        {"quotes that do not agree", uR"(<a href="u'>t</a>)", 1},
        {"upper case", u"<A HREF='u'>t</A>", 1},
        {"empty target and text", u"<a href=''></a>", 1},
        {"many blanks, line ends among them", u"<a \t\r\n\u00A0\u3000\u2028href='u'>t</a>", 1},
        {"no blank", u"<ahref='u'>t</a>", 0},
        {"blanks around the sign", u"<a href = 'u'>t</a>", 0},
        {"another attribute before", u"<a class='c' href='u'>t</a>", 0},
        {"another attribute behind", u"<a href='u' target='v'>t</a>", 1},
        {"a blank before the bracket", u"<a href='u' >t</a>", 0},
        {"without quotes", u"<a href=u>t</a>", 0},
        {"without an end", u"<a href='u'>t", 0},
        {"a line end in the text", u"<a href='u'>t\n</a>", 0},
        {"a line end in the target", u"<a href='u\u0085'>t</a>", 0},
        {"a line end behind", u"<a href='u'>t</a>\n", 1},
        {"an end on the next line, an anchor before it", u"<a href='u'>t\n<a href='v'>w</a>", 1},
        {"two", u"<a href='u'>t</a>-<a href='v'>w</a>", 2},
        {"two side by side", u"<a href='u'>t</a><a href='v'>w</a>", 2},
        {"one inside the other", u"<a href='u'>t<a href='v'>w</a></a>", 1},
        {"a head inside the target", u"<a href='<a href='u'>t</a>", 1},
        {"tags inside the text", u"<a href='u'><b>t</b></a>", 1},
        {"a bracket in the target", u"<a href='u>'v'>t</a>", 1},
        {"the end right behind the head", u"<a href='</a>'>t</a>", 1},
        {"the end only before the head's end", u"<a href='</a>'>t", 0},
        {"a space in the closing tag", u"<a href='u'>t</a >", 0},
        {"the end of the text in each place", u"<a", 0},
        {"behind the blank", u"<a ", 0},
        {"behind href", u"<a href", 0},
        {"behind the sign", u"<a href=", 0},
        {"behind the quote", u"<a href='", 0},
        {"behind the second quote", u"<a href=''", 0},
        {"behind the bracket", u"<a href=''>", 0},
        {"inside the closing tag", u"<a href=''></a", 0},
        {"surrogates, whole and halved", u"<a href='\xD83D\xDE00\xD83D'>\xDE00\xD83D\xDE00</a>", 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(htmlAnchors(row.text).size(), row.count);
        EXPECT_EQ(htmlAnchors(row.text), anchorsByEngine(row.text));
    }
}

TEST(HtmlAnchors, takeTheTargetUpToTheQuoteBeforeTheBracket) {
    const std::u16string_view text = u"x<a href='u' target='v'>t</a>";
    const std::vector<HtmlAnchor> anchors = htmlAnchors(text);
    ASSERT_EQ(anchors.size(), 1U);
    EXPECT_EQ(text.substr(anchors[0].href.location, anchors[0].href.length), u"u' target='v");
    EXPECT_EQ(text.substr(anchors[0].text.location, anchors[0].text.length), u"t");
    EXPECT_EQ(anchors[0].whole, (NSRange{1, text.size() - 1}));
}

TEST(HtmlAnchors, readEveryCharacterInEveryPlaceAsTheEngineDoes) {
    // A blank, a letter of another case, a line end: every code unit there is, in all the places where it matters.
    const std::u16string_view frames[] = {
        u"<a?href='u'>t</a>", u"<?\x20href='u'>t</a>", u"<a ?ref='u'>t</a>", u"<a h?ef='u'>t</a>",
        u"<a hr?f='u'>t</a>", u"<a hre?='u'>t</a>",    u"<a href='?'>t</a>", u"<a href='u'>?</a>",
        u"<a href=?u'>t</a>", u"<a href='u?>t</a>",    u"<a href='u'>t</?>", u"?a href='u'>t</a>",
        u"<a href='u'?t</a>", u"<a href?'u'>t</a>",    u"<a href='u'>t?/a>", u"<a?\x20href='u'>t</a>"};
    std::size_t differences = 0;
    for (const std::u16string_view frame : frames) {
        const std::size_t place = frame.find(u'?');
        // All frames of one kind in one text, apart by lines, so that the engine is started only a few times.
        for (unsigned first = 0; first < 0x10000; first += 0x1000) {
            std::u16string text;
            for (unsigned unit = first; unit < first + 0x1000; ++unit) {
                std::u16string line(frame);
                line[place] = static_cast<char16_t>(unit);
                text += line + u'\n';
            }
            differences += htmlAnchors(text) == anchorsByEngine(text) ? 0 : 1;
        }
    }
    EXPECT_EQ(differences, 0U);
}

RC_GTEST_PROP(HtmlAnchors, agreeWithTheEngineOnTextsOfTheirOwnPieces, ()) {
    static const std::u16string pieces[] = {
        u"<a href='", u"<a href=\"", u"'>",     u"\">",    u"</a>", u"</A>", u"<a", u"<A ",   u" href=", u"HREF=",
        u"'",         u"\"",         u">",      u"<",      u"t",    u" ",    u"\n", u"\r",    u"\u0085", u"\u2028",
        u"\u212A",    u"\u017F",     u"\xD83D", u"\xDE00", u"/a>",  u"a",    u"=",  u"\u1E9A"};
    const auto chosen =
        *rc::gen::container<std::vector<std::size_t>>(rc::gen::inRange<std::size_t>(0, sizeof pieces / sizeof *pieces));
    std::u16string text;
    for (const std::size_t piece : chosen) {
        text += pieces[piece];
    }
    RC_ASSERT(htmlAnchors(text) == anchorsByEngine(text));
}

RC_GTEST_PROP(HtmlAnchors, agreeWithTheEngineOnHalfBrokenAnchors, ()) {
    // Most are complete, so that long lists of matches come about as well.
    static const std::u16string whole[] = {u"<a", u" ", u"href=", u"'", u"u", u"'", u">", u"t", u"</a>"};
    static const std::u16string others[] = {u"", u"\n", u"\"", u"'>", u"<a href='", u"</a>", u"x"};
    std::u16string text;
    for (int anchors = *rc::gen::inRange(0, 12); anchors > 0; --anchors) {
        const int broken = *rc::gen::inRange(-6, 9);
        for (int part = 0; part < 9; ++part) {
            text += part == broken ? others[*rc::gen::inRange<std::size_t>(0, 7)] : whole[part];
        }
    }
    RC_ASSERT(htmlAnchors(text) == anchorsByEngine(text));
}

TEST(HtmlAnchors, takeTimeProportionalToTheText) {
    const struct {
        const char* what;
        std::u16string text;
        std::size_t count;
    } rows[] = {
        {"heads without an end", repeated(u"<a href=", 100'000), 0},
        {"heads with an opening quote", repeated(u"<a href='", 100'000), 0},
        {"heads that are complete", repeated(u"<a href='u'>", 100'000), 0},
        {"the same with one end", repeated(u"<a href='u'>", 100'000) + u"</a>", 1},
        {"quotes behind one head", u"<a href=" + repeated(u"'", 1'000'000), 0},
        {"closed quotes behind one head", u"<a href=" + repeated(u"'>", 500'000), 0},
        {"quotes behind many heads, the end on another line",
         repeated(u"<a href='", 1000) + repeated(u"'>", 500'000) + u"\n</a>", 0},
        {"blanks", repeated(u"<a" + std::u16string(1000, u' '), 1000), 0},
        {"ends", repeated(u"</a>", 250'000), 0},
        {"brackets", repeated(u"<", 1'000'000), 0},
        {"anchors", repeated(u"<a href='u'>t</a>", 60'000), 60'000},
        {"lines", repeated(u"<a href='u'>t\n", 70'000), 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const auto start = std::chrono::steady_clock::now();
        EXPECT_EQ(htmlAnchors(row.text).size(), row.count);
        // A million code units take some milliseconds; squared they would take an hour.
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    }
}

} // namespace
} // namespace zr::detail
