#include <zrbasic/platform/qt/html_reader_p.h>

#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/font.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/appkit/text_storage.h>
#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/foundation/data.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/url.h>

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace zr {
namespace {

Ref<NSAttributedString> read(std::string_view html) {
    return qt::readHTML(NSString::fromUtf8(html));
}

std::string textOf(std::string_view html) {
    return read(html)->string()->utf8();
}

/// The attribute at the first place of `part`.
id attribute(std::string_view html, std::string_view part, NSString* name) {
    const auto text = read(html);
    const NSRange range = text->string()->rangeOfString(NSString::fromUtf8(part));
    if (range.location == static_cast<NSUInteger>(NSNotFound)) {
        ADD_FAILURE() << "no " << part << " in " << text->string()->utf8();
        return nullptr;
    }
    return text->attribute_atIndex_effectiveRange(name, range.location, nullptr);
}

std::string described(const id& object) {
    return object ? object->description()->utf8() : "none";
}

std::string repeated(std::string_view text, int count) {
    std::string all;
    all.reserve(text.size() * std::size_t(count));
    for (int i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

TEST(HtmlReader, plainTextIsTheSystemFontWithoutColour) {
    const auto text = read("Offers &lt; 5 &amp; more&nbsp;");
    EXPECT_EQ(text->string()->utf8(), "Offers < 5 & more\u00A0");
    ASSERT_EQ(text->runs().runs().size(), 1U);
    EXPECT_EQ(described(text->attribute_atIndex_effectiveRange(NSFontAttributeName(), 0, nullptr)),
              ".SystemFont 13 pt");
    EXPECT_EQ(text->attributesAtIndex_effectiveRange(0, nullptr)->count(), 1U);
}

TEST(HtmlReader, readsWeightSlantSizeAndFamily) {
    const char* const html =
        "a<b>b</b><i>c</i><b><i>d</i></b>"
        "<span style='font-size:20px'>e</span><span style='font-family:Courier;font-weight:bold'>f"
        "</span>";
    const auto fontOf = [&](const char* letter) { return described(attribute(html, letter, NSFontAttributeName())); };
    EXPECT_EQ(fontOf("a"), ".SystemFont 13 pt");
    EXPECT_EQ(fontOf("b"), ".SystemFont-Bold 13 pt");
    EXPECT_EQ(fontOf("c"), ".SystemFont-Italic 13 pt");
    EXPECT_EQ(fontOf("d"), ".SystemFont-BoldItalic 13 pt");
    EXPECT_EQ(fontOf("e"), ".SystemFont 20 pt");
    EXPECT_EQ(fontOf("f"), "Courier-Bold 13 pt");
}

TEST(HtmlReader, readsColoursAndUnderlines) {
    const char* const html = "<font color='#ff8000'>a</font><span style='color:red'>b</span><u>c</u>d";
    const auto colorOf = [&](const char* letter) {
        return described(attribute(html, letter, NSForegroundColorAttributeName()));
    };
    EXPECT_EQ(colorOf("a"), described(NSColor::colorWithRed_green_blue_alpha(1, 128 / 255.0, 0, 1)));
    EXPECT_EQ(colorOf("b"), described(NSColor::redColor()));
    EXPECT_EQ(colorOf("c"), "none");
    EXPECT_EQ(described(attribute(html, "c", NSUnderlineStyleAttributeName())), "1");
    EXPECT_EQ(described(attribute(html, "d", NSUnderlineStyleAttributeName())), "none");
}

TEST(HtmlReader, readsLinksAsUrlsWhereTheyParse) {
    const char* const html =
        "see <a href='https://example.com/a?b=c&amp;d=1'>here</a>, <a href='not a url'>there</a> <a name='x'>mark</a>";
    const id url = attribute(html, "here", NSLinkAttributeName());
    ASSERT_TRUE(cast<NSURL>(url));
    EXPECT_EQ(cast<NSURL>(url)->absoluteString()->utf8(), "https://example.com/a?b=c&d=1");
    const id string = attribute(html, "there", NSLinkAttributeName());
    ASSERT_TRUE(cast<NSString>(string));
    EXPECT_EQ(described(string), "not a url");
    EXPECT_EQ(attribute(html, "see", NSLinkAttributeName()), nullptr);
    EXPECT_EQ(attribute(html, "mark", NSLinkAttributeName()), nullptr);
    EXPECT_EQ(described(attribute(html, "here", NSForegroundColorAttributeName())),
              described(NSColor::colorWithRed_green_blue_alpha(0, 0, 0xee / 255.0, 1)));
    EXPECT_EQ(described(attribute(html, "here", NSUnderlineStyleAttributeName())), "1");
    EXPECT_EQ(described(attribute("<a href='u' style='color:lime'>g</a>", "g", NSForegroundColorAttributeName())),
              described(NSColor::greenColor()));
}

TEST(HtmlReader, linesAndParagraphsEndInALineFeed) {
    const struct {
        const char* html;
        const char* text;
    } rows[] = {
        {"a<br>b<br/>c", "a\nb\nc"},
        {"<p>a</p><p>b</p>", "a\nb"},
        {"<p>a<p>b", "a\nb"},
        {"<div>a</div>b<div>c</div>", "a\nb\nc"},
        {"<div>a<div>b</div></div>c", "a\nb\nc"},
        {"<div>a</div><b>b</b>", "a\nb"},
        {"<div>a</div><br>b", "a\n\nb"},
        {"<div></div>a<div>b</div>\n<p>c</p>", "a\nb\nc"},
        {"<p>a</p>b", "a\nb"},
        {"<p>a</p>\n<p>b</p>\n", "a\nb"},
        {"a\nb  c", "a b c"},
        {"<pre>a\n b</pre>", "a\n b"},
        {"<h1>a</h1>b", "a\nb"},
        {"<ul><li>a</li><li>b</li></ul>", "\u2022 a\n\u2022 b"},
        {"<ol><li>a<li>b</ol>", "1. a\n2. b"},
        {"<table><tr><td>a</td><td>b</td></tr><tr><td>c</td></tr></table>", "a\nb\nc"},
        {"a<img src='x.png'>b", "ab"},
        {"a<!-- no --><script>var n = '<b>';</script>b", "ab"},
        {"<html><head><title>no</title><style>b {color: red}</style></head><body>a</body></html>", "a"},
        {"a < b", "a < b"},
        {"5<6", "5<6"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.html);
        EXPECT_EQ(textOf(row.html), row.text);
    }
}

TEST(HtmlReader, styleSheetsCountAsFarAsTheyAreShort) {
    const std::string rule = "b { color: red } ";
    EXPECT_EQ(described(attribute("<style>" + rule + "</style><b>x</b>", "x", NSForegroundColorAttributeName())),
              described(NSColor::redColor()));
    EXPECT_EQ(described(attribute("<style>" + repeated(rule, 1000) + "</style><b>x</b>", "x",
                                  NSForegroundColorAttributeName())),
              "none");
}

TEST(HtmlReader, nothingReadsAsNothing) {
    EXPECT_EQ(qt::readHTML(nullptr)->length(), 0U);
    EXPECT_EQ(textOf(""), "");
    EXPECT_EQ(textOf("   "), "");
    EXPECT_EQ(textOf("<b></b>"), "");
    EXPECT_EQ(currentToolkit().attributedStringFromHTML("<b>x</b>"_ns)->string()->utf8(), "x");
}

TEST(HtmlReader, neverReadsFiles) {
    const QTemporaryDir folder;
    QFile sheet(folder.filePath(QStringLiteral("sheet.css")));
    ASSERT_TRUE(sheet.open(QIODevice::WriteOnly));
    sheet.write("b { color: red; }");
    sheet.close();
    const std::string path = sheet.fileName().toStdString();
    for (const std::string& html : {"<link rel='stylesheet' href='" + path + "'><b>x</b>",
                                    "<link rel='stylesheet' type='text/css' href='file://" + path + "'><b>x</b>",
                                    "<style>@import url(\"" + path + "\");</style><b>x</b>",
                                    "<head><style>@import '" + path + "';</style></head><body><b>x</b></body>"}) {
        SCOPED_TRACE(html);
        EXPECT_EQ(described(attribute(html, "x", NSForegroundColorAttributeName())), "none");
    }
}

TEST(HtmlReader, brokenHtmlKeepsItsText) {
    const struct {
        const char* html;
        const char* text;
    } rows[] = {
        {"<b>a<i>b", "ab"},
        {"a</b></i></div>b", "ab"},
        {"<b", ""},
        {"a<b style='x", "a"},
        {"<", "<"},
        {"a<!--", "a"},
        {"<a href=>x</a>", "x"},
        {"&bogus; &#0; &#x110000;x", nullptr},
        {"<></>a", nullptr},
        {"<td>a</td></tr>b", nullptr},
        {"<b><p>a</b>b</p>", nullptr},
        {"<script>a", ""},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.html);
        const std::string text = textOf(row.html);
        if (row.text) {
            EXPECT_EQ(text, row.text);
        } else {
            EXPECT_NE(text.find_first_of("abx"), std::string::npos) << text;
        }
    }
    std::string halves = "<b>x</b>";
    halves += '\0';
    halves += "\xED\xA0\x80y";
    EXPECT_NE(textOf(halves).find('y'), std::string::npos);
}

TEST(HtmlReader, deepNestingIsReadInReasonableTime) {
    for (const char* const name : {"b", "div", "table", "ul", "blockquote", "span", "a href='u'", "font size=7", "p",
                                   "li", "td", "table><tr><td", "ol><li", "pre"}) {
        SCOPED_TRACE(name);
        const std::string text = textOf(repeated(std::string("<") + name + ">", 10000) + "deep");
        EXPECT_NE(text.find("deep"), std::string::npos);
        EXPECT_LT(text.size(), 40000U);
    }
    EXPECT_EQ(textOf(repeated("<b>", 10000) + "x" + repeated("</b>", 10000) + "y"), "xy");
    EXPECT_EQ(
        described(attribute(repeated("<b>", 10000) + "x" + repeated("</b>", 10000) + "y", "y", NSFontAttributeName())),
        ".SystemFont 13 pt")
        << "ends are counted with the beginnings that were left out";
}

TEST(HtmlReader, longTextsAreReadInReasonableTime) {
    const std::string offers = repeated("<p>offer <b>1</b> of <a href='https://example.com'>many</a></p>", 16000);
    ASSERT_GT(offers.size(), 900000U);
    EXPECT_EQ(textOf(offers).size(), 16000 * std::string("offer 1 of many\n").size() - 1);
    const std::string plain(1 << 20, 'x');
    EXPECT_EQ(textOf(plain), plain);
    EXPECT_EQ(textOf(repeated("<", 100000)), repeated("<", 100000));
    EXPECT_EQ(textOf(repeated("&amp;", 100000)), repeated("&", 100000));
    EXPECT_EQ(textOf("<b " + repeated("a='b' ", 200000) + ">x</b>"), "x");
    EXPECT_EQ(textOf(repeated("<br>", 20000)).find_first_not_of('\n'), std::string::npos);
}

TEST(HtmlReader, tablesCannotBeMadeToGrow) {
    const std::string row = "<table><tr><td colspan=2000000000 rowspan=2000000000>x</td></tr></table>";
    EXPECT_EQ(textOf(row), "x");
    EXPECT_EQ(textOf(repeated(row, 500)).size(), 999U);
    EXPECT_EQ(textOf("<ol start=2147483647><li>a<li>b</ol>").back(), 'b');
}

TEST(HtmlReader, readsTextStorages) {
    const auto data = NSData::dataWithBytes_length("<b>\xC3\xA9</b>", 9);
    const auto storage = make<NSTextStorage>(&NSTextStorage::initWithHTML_documentAttributes, data, nullptr);
    EXPECT_EQ(storage->string()->utf8(), "é");
    EXPECT_EQ(described(storage->attribute_atIndex_effectiveRange(NSFontAttributeName(), 0, nullptr)),
              ".SystemFont-Bold 13 pt");
}

} // namespace
} // namespace zr
