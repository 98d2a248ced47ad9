#include <zrbasic/platform/foundation/url_query_item.h>

#include "checks.h"
#include "url_vectors.h"

#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/unicode_p.h>
#include <zrbasic/platform/foundation/url.h>
#include <zrbasic/platform/foundation/url_components.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace zr {

namespace {

Ref<NSURLQueryItem> item(NSString* name, NSString* value) {
    return NSURLQueryItem::queryItemWithName_value(name, value);
}

/// "[name=value][name]" for the items of a query; "-" for none.
std::string itemsOf(std::string_view query) {
    const Ref<NSURLComponents> components = NSURLComponents::components();
    components->setPercentEncodedQuery(NSString::fromUtf8(query));
    std::string text;
    for (const id& element : components->queryItems()) {
        const auto* const each = cast<NSURLQueryItem>(element);
        text += '[' + each->name()->utf8() + (each->value() ? '=' + each->value()->utf8() : "") + ']';
    }
    return text;
}

std::string queryOf(std::initializer_list<id> items) {
    const Ref<NSURLComponents> components = NSURLComponents::components();
    components->setQueryItems(array(items));
    return components->percentEncodedQuery()->utf8();
}

TEST(URLQueryItem, holdsNameAndValue) {
    const Ref<NSURLQueryItem> both = item("q"_ns, "v"_ns);
    EXPECT_EQ(both->name()->utf8(), "q");
    EXPECT_EQ(both->value()->utf8(), "v");
    EXPECT_FALSE(item("q"_ns, nullptr)->value());
    EXPECT_EQ(item(nullptr, nullptr)->name()->utf8(), "");
    EXPECT_EQ(make<NSURLQueryItem>()->name()->utf8(), "");
    EXPECT_NE(both->description()->utf8().find("{name = q, value = v}"), std::string::npos);
}

TEST(URLQueryItem, keepsItsTextWhenTheStringsChange) {
    const Ref<NSMutableString> text = NSMutableString::stringWithString("a"_ns);
    const Ref<NSURLQueryItem> made = item(text, text);
    text->appendString("b"_ns);
    EXPECT_EQ(made->name()->utf8(), "a");
    EXPECT_EQ(made->value()->utf8(), "a");
    EXPECT_EQ(made->copy().get(), made.get());
}

TEST(URLQueryItem, isEqualByNameAndValue) {
    EXPECT_TRUE(item("a"_ns, "b"_ns)->isEqual(item("a"_ns, "b"_ns)));
    EXPECT_EQ(item("a"_ns, "b"_ns)->hash(), item("a"_ns, "b"_ns)->hash());
    EXPECT_TRUE(item("a"_ns, nullptr)->isEqual(item("a"_ns, nullptr)));
    EXPECT_FALSE(item("a"_ns, nullptr)->isEqual(item("a"_ns, ""_ns)));
    EXPECT_FALSE(item("a"_ns, ""_ns)->isEqual(item("a"_ns, nullptr)));
    EXPECT_FALSE(item("a"_ns, "b"_ns)->isEqual(item("A"_ns, "b"_ns)));
    EXPECT_FALSE(item("a"_ns, "b"_ns)->isEqual("a"_ns));
    EXPECT_FALSE(item("a"_ns, "b"_ns)->isEqual(nullptr));
}

TEST(URLQueryItem, answersMessages) {
    const id made = send<id>(NSURLQueryItem::classObject(), "queryItemWithName:value:"_sel, "n"_ns, box(1));
    EXPECT_EQ(send<Ref<NSString>>(made, "name"_sel)->utf8(), "n");
    // A value of another kind arrives as null.
    EXPECT_FALSE(send<id>(made, "value"_sel));
}

TEST(QueryItemsReading, splitsAtAmpersandsAndFirstEqualsSigns) {
    const std::pair<const char*, const char*> rows[] = {
        {"", ""},
        {"a=1&b=2", "[a=1][b=2]"},
        {"a", "[a]"},
        {"a=", "[a=]"},
        {"=b", "[=b]"},
        {"=", "[=]"},
        {"a=b=c", "[a=b=c]"},
        {"&", "[][]"},
        {"a&&b", "[a][][b]"},
        {"&a=1&", "[][a=1][]"},
        {"a+b=c+d", "[a+b=c+d]"},
        {"a=1;b=2", "[a=1;b=2]"},
        {"%61%3D=%26%20", "[a==& ]"},
        {"a=1&a=1&a=2", "[a=1][a=1][a=2]"},
        {"%FF=1&a=%FF&b=%C3%A9", "[=1][a][b=\xC3\xA9]"},
    };
    for (const auto& [query, items] : rows) {
        SCOPED_TRACE(query);
        EXPECT_EQ(itemsOf(query), items);
    }
}

TEST(QueryItemsReading, tellsNoQueryFromAnEmptyOne) {
    EXPECT_FALSE(NSURLComponents::componentsWithString("http://h/"_ns)->queryItems());
    const Ref<NSArray> none = NSURLComponents::componentsWithString("http://h/?"_ns)->queryItems();
    ASSERT_TRUE(none);
    EXPECT_EQ(none->count(), 0U);
}

TEST(QueryItemsReading, agreesWithAnIndependentImplementation) {
    int rows = 0;
    for (const std::vector<std::string>& row : test::urlVectors("read")) {
        SCOPED_TRACE(row[0]);
        const Ref<NSURLComponents> components = NSURLComponents::components();
        components->setPercentEncodedQuery(NSString::fromUtf8(row[0]));
        std::vector<id> expected;
        for (const auto& [name, value] : test::pairsFromHex(row[1])) {
            expected.push_back(item(name, value));
        }
        EXPECT_TRUE(components->queryItems()->isEqual(NSArray::fromElements(expected)));
        ++rows;
    }
    EXPECT_EQ(rows, 300);
}

TEST(QueryItemsWriting, joinsAndEscapes) {
    EXPECT_EQ(queryOf({item("a"_ns, "1"_ns), item("b"_ns, nullptr), item("c"_ns, ""_ns)}), "a=1&b&c=");
    EXPECT_EQ(queryOf({item("q"_ns, u"a b&c=d%20é"_ns)}), "q=a%20b%26c%3Dd%2520%C3%A9");
    EXPECT_EQ(queryOf({item(""_ns, nullptr), item(""_ns, nullptr)}), "&");
    EXPECT_EQ(queryOf({item(""_ns, nullptr)}), "");
    EXPECT_EQ(queryOf({item("random"_ns, "1"_ns), item("random"_ns, "1"_ns)}), "random=1&random=1");
}

TEST(QueryItemsWriting, escapesEverythingElseThanItsSet) {
    std::u16string printable;
    for (char16_t c = 0x20; c < 0x7F; ++c) {
        printable.push_back(c);
    }
    EXPECT_EQ(queryOf({item(NSString::fromUtf16(printable), nullptr)}),
              "%20!%22%23$%25%26'()*+,-./0123456789:;%3C%3D%3E?@ABCDEFGHIJKLMNOPQRSTUVWXYZ%5B%5C%5D%5E_%60"
              "abcdefghijklmnopqrstuvwxyz%7B%7C%7D~");
    EXPECT_EQ(queryOf({item("a\nb"_ns, "\t"_ns)}), "a%0Ab=%09");
}

TEST(QueryItemsWriting, agreesWithAnIndependentImplementation) {
    int rows = 0;
    for (const std::vector<std::string>& row : test::urlVectors("item")) {
        SCOPED_TRACE(row[0]);
        const Ref<NSString> text = test::fromHex(row[0]);
        EXPECT_EQ(queryOf({item(text, text)}), row[1] + "=" + row[1]);
        ++rows;
    }
    EXPECT_EQ(rows, 428);
    for (const std::vector<std::string>& row : test::urlVectors("items")) {
        SCOPED_TRACE(row[0]);
        const Ref<NSMutableArray> items = NSMutableArray::array();
        for (const auto& [name, value] : test::pairsFromHex(row[0])) {
            items->addObject(item(name, value));
        }
        const Ref<NSURLComponents> components = NSURLComponents::components();
        components->setQueryItems(items);
        EXPECT_EQ(components->percentEncodedQuery()->utf8(), row[1]);
        ++rows;
    }
    EXPECT_EQ(rows, 728);
}

TEST(QueryItemsWriting, givesTheDecodedQueryBack) {
    const Ref<NSURLComponents> components = NSURLComponents::components();
    components->setQueryItems(array({item("q"_ns, u"a b&c=d%20é"_ns)}));
    EXPECT_EQ(components->query()->utf8(), "q=a b&c=d%20\xC3\xA9");
    components->setQueryItems(array({}));
    EXPECT_EQ(components->query()->utf8(), "");
    EXPECT_EQ(components->string()->utf8(), "?");
    components->setQueryItems(nullptr);
    EXPECT_FALSE(components->query());
    EXPECT_EQ(components->string()->utf8(), "");
}

TEST(QueryItemsWriting, leavesOutWhatIsNoItem) {
    EXPECT_EQ(queryOf({"x"_ns, item("a"_ns, "1"_ns), NSNull::null(), box(1), item("b"_ns, "2"_ns)}), "a=1&b=2");
    EXPECT_EQ(queryOf({"x"_ns}), "");
    const Ref<NSURLComponents> components = NSURLComponents::components();
    send(components, "setQueryItems:"_sel, "x"_ns);
    EXPECT_FALSE(components->queryItems());
}

TEST(QueryItemsWriting, writesALoneSurrogateAsTheReplacementCharacter) {
    const Ref<NSString> broken = NSString::fromUtf16(std::u16string{char16_t(0xD83D), u'&'});
    EXPECT_EQ(queryOf({item(broken, broken)}), "%EF%BF%BD%26=%EF%BF%BD%26");
}

Ref<NSString> textOf(const std::vector<std::uint32_t>& codePoints) {
    std::u16string text;
    for (const std::uint32_t c : codePoints) {
        // Mostly signs and letters, where the rules are; surrogates have no UTF-8 form.
        const char32_t point = c % 4 != 0 ? c % 0x80 : c % 0x110000;
        detail::appendCodePoint(text, point >= 0xD800 && point < 0xE000 ? U'x' : point);
    }
    return NSString::fromUtf16(text);
}

RC_GTEST_PROP(QueryItemsRoundTrip, whatWasSetIsReadBack,
              (const std::vector<std::pair<std::vector<std::uint32_t>, std::vector<std::uint32_t>>>& pairs,
               bool hasValues)) {
    const Ref<NSMutableArray> items = NSMutableArray::array();
    for (const auto& [name, value] : pairs) {
        // A lone item without name and value is an empty query, which has no items.
        const Ref<NSString> text = textOf(name);
        items->addObject(item(text->length() == 0 ? "n"_ns : text, hasValues ? textOf(value) : nullptr));
    }
    const Ref<NSURLComponents> components = NSURLComponents::componentsWithString("http://h/p?old#f"_ns);
    components->setQueryItems(items);
    RC_ASSERT(components->queryItems()->isEqual(items));
    const auto again = NSURLComponents::componentsWithURL_resolvingAgainstBaseURL(components->URL(), true);
    RC_ASSERT(again->queryItems()->isEqual(items));
    RC_ASSERT(again->fragment()->isEqual("f"_ns));
}

} // namespace

} // namespace zr
