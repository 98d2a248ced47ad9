#include <zrbasic/platform/foundation/url.h>

#include "checks.h"
#include "url_vectors.h"

#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>

#include <gtest/gtest.h>

#include <cctype>

namespace zr {

namespace {

using test::raised;
using test::raisedName;

Ref<NSURL> url(std::string_view text) {
    return NSURL::URLWithString(NSString::fromUtf8(text));
}

Ref<NSURL> url(std::string_view text, NSURL* base) {
    return NSURL::URLWithString_relativeToURL(NSString::fromUtf8(text), base);
}

/// A part as text: "-" when it is null.
std::string shown(NSObject* part) {
    return part ? part->description()->utf8() : "-";
}

std::string resolved(std::string_view text, std::string_view base) {
    return url(text, url(base))->absoluteString()->utf8();
}

TEST(URLCharacters, areThoseOfUrlsAndNoOthers) {
    for (int c = 0; c < 0x180; ++c) {
        SCOPED_TRACE(c);
        const auto unit = static_cast<char16_t>(c);
        const bool isLetterOrDigit = c < 0x80 && std::isalnum(c) != 0;
        const bool isAllowed =
            isLetterOrDigit ||
            (c != 0 && c < 0x80 &&
             std::string_view("!$&'()*+,-./:;=?@_~[]#").find(static_cast<char>(c)) != std::string_view::npos);
        const Ref<NSString> text = NSString::fromUtf16(std::u16string{u'x', unit, u'y'});
        EXPECT_EQ(NSURL::URLWithString(text) != nullptr, isAllowed);
    }
}

TEST(URLCharacters, thatAreNotAllowedGiveNull) {
    for (const std::string_view text : {"http://a/b c",  " http://a",    "http://a\n",   "http://a/é", "http://a/|",
                                        "http://a/{x}",  "<a>",          "\"a\"",        "a^b",        "a\\b",
                                        "a`b",           "http://a/%zz", "http://a/%4",  "http://a/%", "%",
                                        "100%",          "%%41",         "http://a#b#c", "##",         "http://a/#%zz",
                                        "http://例.com/"}) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(url(text));
    }
}

TEST(URLCharacters, mayStandInAnyOrder) {
    for (const std::string_view text : {"", "u", "#f", "?q", "?", "//h/p", "http:", "http://", "mailto:a@b", "a:b:c",
                                        "1http://a", "http://a:x/", "http://a/?a[]=1", "[", "]"}) {
        SCOPED_TRACE(text);
        const Ref<NSURL> made = url(text);
        ASSERT_TRUE(made);
        EXPECT_EQ(made->absoluteString()->utf8(), text);
        EXPECT_EQ(made->relativeString()->utf8(), text);
    }
}

TEST(URLCharacters, ofHostileTextsGiveNull) {
    using namespace std::string_literals;
    for (const std::u16string& text :
         {u"http://a/\0"s, std::u16string{u'a', char16_t(0xD83D)}, std::u16string{char16_t(0xDE00)}, u"a\x7F"s,
          u"http://a/\u202E"s, u"http://\uFF41/"s, u"\uFEFFhttp://a"s, u"http://a/%\uFF11\uFF11"s}) {
        EXPECT_FALSE(NSURL::URLWithString(NSString::fromUtf16(text)));
    }
}

TEST(URLCreation, raisesForNullAndOnlyForThat) {
    const auto make = [] { static_cast<void>(NSURL::URLWithString(nullptr)); };
    EXPECT_EQ(raised(make),
              "NSInvalidArgumentException: *** -[NSURL initWithString:relativeToURL:]: nil string parameter");
    EXPECT_EQ(raisedName([] { static_cast<void>(NSURL::URLWithString_relativeToURL(nullptr, url("http://h"))); }),
              NSInvalidArgumentException);
    // An argument of another kind arrives as null.
    EXPECT_EQ(raisedName([] { send<id>(NSURL::classObject(), "URLWithString:"_sel, NSNull::null()); }),
              NSInvalidArgumentException);
    EXPECT_EQ(raisedName([] { send<id>(NSURL::classObject(), "URLWithString:"_sel, box(1)); }),
              NSInvalidArgumentException);
    EXPECT_EQ(url("x", nullptr)->absoluteString()->utf8(), "x");
}

TEST(URLCreation, keepsItsTextWhenTheStringChanges) {
    const Ref<NSMutableString> text = NSMutableString::stringWithString("http://h/a"_ns);
    const Ref<NSURL> made = NSURL::URLWithString(text);
    text->appendString("bc"_ns);
    EXPECT_EQ(made->absoluteString()->utf8(), "http://h/a");
    EXPECT_EQ(make<NSURL>(&NSURL::initWithString, "x"_ns)->absoluteString()->utf8(), "x");
    EXPECT_FALSE(make<NSURL>(&NSURL::initWithString, "x y"_ns));
    EXPECT_EQ(make<NSURL>()->absoluteString()->utf8(), "");
}

TEST(URLCreation, takesALongText) {
    std::string text = "http://h/p?";
    for (int i = 0; text.size() < 1'000'000; ++i) {
        text += "name" + std::to_string(i) + "=%41&";
    }
    const Ref<NSURL> made = url(text + "#end");
    EXPECT_EQ(made->query()->utf8(), text.substr(11));
    EXPECT_EQ(made->fragment()->utf8(), "end");
    EXPECT_EQ(made->host()->utf8(), "h");
    EXPECT_FALSE(url(text + " "));
}

struct ResolvedRow {
    const char* name;
    const char* text;
    const char* base;
    const char* result;
};

TEST(URLResolution, goesBySegments) {
    const ResolvedRow rows[] = {
        {"a leaf takes the leaf's place", "x?y", "http://h/a/b?q#f", "http://h/a/x?y"},
        {"an empty text is the whole base", "", "http://h/a/b?q#f", "http://h/a/b?q#f"},
        {"a query replaces query and fragment", "?n", "http://h/a/b?q#f", "http://h/a/b?n"},
        {"an empty query too", "?", "http://h/a/b?q#f", "http://h/a/b?"},
        {"a fragment replaces the fragment", "#n", "http://h/a/b?q#f", "http://h/a/b?q#n"},
        {"an empty fragment too", "#", "http://h/a/b?q#f", "http://h/a/b?q#"},
        {"a path from the root", "/p", "http://h/a/b?q#f", "http://h/p"},
        {"another host", "//o/p", "http://h/a/b?q#f", "http://o/p"},
        {"another scheme", "http://z", "http://h/a/b?q#f", "http://z"},
        {"the same scheme counts as another", "http:x", "http://h/a/b", "http:x"},
        {"one step up", "../c", "http://h/a/b/d", "http://h/a/c"},
        {"up to the folder", "..", "http://h/a/b/d", "http://h/a/"},
        {"the folder itself", ".", "http://h/a/b/d", "http://h/a/b/"},
        {"up and down again", "../x/../y/./z", "http://h/a/b/d", "http://h/a/y/z"},
        {"a folder's name stays one", "x/", "http://h/a/b", "http://h/a/x/"},
        {"a base without a path", "x", "http://h", "http://h/x"},
        {"a base without a path, query only", "?n", "http://h", "http://h?n"},
        {"the base's own steps", "x", "http://h/a/../b/./c", "http://h/b/x"},
        {"dots that are no steps", ".../.x/x..", "http://h/a", "http://h/.../.x/x.."},
        {"escaped dots are no steps", "%2e%2e/x", "http://h/a/b", "http://h/a/%2e%2e/x"},
        {"empty segments", "x//y", "http://h/a/b", "http://h/a/x//y"},
        {"slashes in queries do not count", "x", "http://h/a/b?/c/d", "http://h/a/x"},
        {"a query with dots", "x?../y", "http://h/a/b", "http://h/a/x?../y"},
        {"a base without scheme", "x", "a/b", "a/x"},
        {"a base without scheme, up", "../x", "a/b", "x"},
        {"a base without a folder", "x", "b", "x"},
        {"a base of a folder only", "..", "a/b", ""},
        {"a host for a base without one", "//o", "a/b", "//o"},
        {"user and port stay", "x", "http://u:p@h:80/a", "http://u:p@h:80/x"},
        {"letter case stays", "X", "HTTP://H/a", "HTTP://H/X"},
        {"an opaque base", "x", "mailto:a@b", "mailto:x"},
    };
    for (const ResolvedRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(resolved(row.text, row.base), row.result);
    }
}

TEST(URLResolution, keepsStepsBeyondTheRoot) {
    EXPECT_EQ(resolved("../../../c", "http://h/a/b"), "http://h/../../c");
    EXPECT_EQ(resolved("../../x", "http://h/a"), "http://h/../../x");
    EXPECT_EQ(resolved("..", "http://h/a"), "http://h/..");
    EXPECT_EQ(resolved("../x", "http://h"), "http://h/../x");
    EXPECT_EQ(resolved("../../x", "a/b"), "../x");
    EXPECT_EQ(resolved("../x/..", "http://h/a"), "http://h/../");
}

TEST(URLResolution, leavesAPathFromTheRootAsItIsWritten) {
    EXPECT_EQ(resolved("/x/../y", "http://h/a/b"), "http://h/x/../y");
    EXPECT_EQ(resolved("//o/x/./y", "http://h/a/b"), "http://o/x/./y");
}

TEST(URLResolution, neverMakesAHostOfAPath) {
    EXPECT_EQ(resolved("..//evil/x", "file:/a/b"), "file:/.//evil/x");
    EXPECT_FALSE(url("..//evil/x", url("file:/a/b"))->host());
    EXPECT_EQ(resolved("..//x", "http://h/a/b"), "http://h//x");
}

TEST(URLResolution, agreesWithAnIndependentImplementation) {
    int rows = 0;
    for (const std::vector<std::string>& row : test::urlVectors("join")) {
        SCOPED_TRACE(row[0] + " " + row[1]);
        EXPECT_EQ(resolved(row[1], row[0]), row[2]);
        ++rows;
    }
    EXPECT_EQ(rows, 500);
}

TEST(URLResolution, isDoneOnceForABaseThatIsRelativeItself) {
    const Ref<NSURL> base = url("b/c", url("http://h/a/"));
    const Ref<NSURL> made = url("d", base);
    EXPECT_EQ(made->absoluteString()->utf8(), "http://h/a/b/d");
    EXPECT_EQ(made->relativeString()->utf8(), "d");
    EXPECT_EQ(made->baseURL()->absoluteString()->utf8(), "http://h/a/b/c");
    EXPECT_FALSE(made->baseURL()->baseURL());
    EXPECT_EQ(made->absoluteURL()->absoluteString()->utf8(), "http://h/a/b/d");
    EXPECT_FALSE(made->absoluteURL()->baseURL());
}

TEST(URLResolution, dropsTheBaseOfATextWithAScheme) {
    const Ref<NSURL> made = url("http://z/y", url("http://h/a"));
    EXPECT_FALSE(made->baseURL());
    EXPECT_EQ(made->absoluteURL(), made);
    EXPECT_EQ(url("x")->absoluteURL()->absoluteString()->utf8(), "x");
    EXPECT_TRUE(made->isEqual(url("http://z/y")));
}

TEST(URLResolution, takesALongWayUp) {
    std::string ups;
    for (int i = 0; i < 300'000; ++i) {
        ups += "../";
    }
    const Ref<NSURL> made = url(ups + "x", url("http://h/a/b/c"));
    EXPECT_EQ(made->absoluteString()->length(), ups.size() - 6 + 10);
    std::string downs(500'000, '/');
    EXPECT_EQ(resolved("x" + downs, "http://h/a"), "http://h/x" + downs);
}

struct PartsRow {
    const char* text;
    const char* scheme;
    const char* user;
    const char* password;
    const char* host;
    const char* port;
    const char* path;
    const char* query;
    const char* fragment;
};

TEST(URLParts, areReadFromAnyText) {
    const PartsRow rows[] = {
        {"http://u:p@h:80/a/b?q=1#f", "http", "u", "p", "h", "80", "/a/b", "q=1", "f"},
        {"HTTP://H", "HTTP", "-", "-", "H", "-", "", "-", "-"},
        {"", "-", "-", "-", "-", "-", "", "-", "-"},
        {"a/b", "-", "-", "-", "-", "-", "a/b", "-", "-"},
        {"1http://a", "-", "-", "-", "-", "-", "1http://a", "-", "-"},
        {"//h/p", "-", "-", "-", "h", "-", "/p", "-", "-"},
        {"http://h/?", "http", "-", "-", "h", "-", "/", "", "-"},
        {"http://h/#", "http", "-", "-", "h", "-", "/", "-", ""},
        {"http://h?q?r#f?/", "http", "-", "-", "h", "-", "", "q?r", "f?/"},
        {"http://h#f", "http", "-", "-", "h", "-", "", "-", "f"},
        {"http://h/a%20b/?x=%20#%20", "http", "-", "-", "h", "-", "/a b", "x=%20", "%20"},
        {"http://h//", "http", "-", "-", "h", "-", "/", "-", "-"},
        {"http://[::1]:8080/", "http", "-", "-", "::1", "8080", "/", "-", "-"},
        {"http://a:x/", "http", "-", "-", "a", "-", "/", "-", "-"},
        {"http://a:/", "http", "-", "-", "a", "-", "/", "-", "-"},
        {"http://a:9223372036854775807/", "http", "-", "-", "a", "9223372036854775807", "/", "-", "-"},
        {"http://a:9223372036854775808/", "http", "-", "-", "a", "-", "/", "-", "-"},
        {"http://u%40:p%40@h%41/", "http", "u@", "p%40", "hA", "-", "/", "-", "-"},
        {"http://a@b@c/", "http", "a@b", "-", "c", "-", "/", "-", "-"},
        {"http://u:@h", "http", "u", "", "h", "-", "", "-", "-"},
        {"http:///p", "http", "-", "-", "-", "-", "/p", "-", "-"},
        {"file:/a/b", "file", "-", "-", "-", "-", "/a/b", "-", "-"},
        {"http://h/%FF", "http", "-", "-", "h", "-", "-", "-", "-"},
        {"http://%C3/", "http", "-", "-", "-", "-", "/", "-", "-"},
        {"?a[]=1", "-", "-", "-", "-", "-", "", "a[]=1", "-"},
    };
    for (const PartsRow& row : rows) {
        SCOPED_TRACE(row.text);
        const Ref<NSURL> made = url(row.text);
        ASSERT_TRUE(made);
        EXPECT_EQ(shown(made->scheme()), row.scheme);
        EXPECT_EQ(shown(made->user()), row.user);
        EXPECT_EQ(shown(made->password()), row.password);
        EXPECT_EQ(shown(made->host()), row.host);
        EXPECT_EQ(shown(made->port()), row.port);
        EXPECT_EQ(shown(made->path()), row.path);
        EXPECT_EQ(shown(made->query()), row.query);
        EXPECT_EQ(shown(made->fragment()), row.fragment);
    }
}

TEST(URLParts, ofAnOpaqueUrlAreSchemeAndFragmentOnly) {
    const Ref<NSURL> mail = url("mailto:a@b?subject=x#f");
    EXPECT_EQ(shown(mail->scheme()), "mailto");
    EXPECT_FALSE(mail->path());
    EXPECT_FALSE(mail->query());
    EXPECT_FALSE(mail->lastPathComponent());
    EXPECT_FALSE(mail->pathExtension());
    EXPECT_EQ(shown(mail->fragment()), "f");
    EXPECT_FALSE(url("http:")->path());
}

TEST(URLParts, areThoseOfTheResolvedUrl) {
    const Ref<NSURL> made = url("x%20y.tar.gz?n", url("http://u@h:1/a/b?q#f"));
    EXPECT_EQ(shown(made->host()), "h");
    EXPECT_EQ(shown(made->port()), "1");
    EXPECT_EQ(shown(made->path()), "/a/x y.tar.gz");
    EXPECT_EQ(shown(made->query()), "n");
    EXPECT_EQ(shown(made->fragment()), "-");
    EXPECT_EQ(shown(made->lastPathComponent()), "x y.tar.gz");
    EXPECT_EQ(shown(made->pathExtension()), "gz");
    EXPECT_EQ(shown(url("http://h/a/")->lastPathComponent()), "a");
    EXPECT_EQ(shown(url("http://h")->pathExtension()), "");
}

TEST(URLValues, areEqualByTextAndBase) {
    const Ref<NSURL> plain = url("http://h/a");
    EXPECT_TRUE(plain->isEqual(url("http://h/a")));
    EXPECT_EQ(plain->hash(), url("http://h/a")->hash());
    EXPECT_FALSE(plain->isEqual(url("http://h/A")));
    EXPECT_FALSE(plain->isEqual(nullptr));
    EXPECT_FALSE(plain->isEqual("http://h/a"_ns));
    EXPECT_FALSE(plain->isEqual(NSNull::null()));
    EXPECT_TRUE(url("a", url("http://h/"))->isEqual(url("a", url("http://h/"))));
    EXPECT_FALSE(url("a", url("http://h/"))->isEqual(url("a", url("http://h/b"))));
    EXPECT_FALSE(url("a", url("http://h/"))->isEqual(url("a")));
}

TEST(URLValues, thatMerelyResolveToTheSameAreNotEqual) {
    const Ref<NSURL> relative = url("a", url("http://h/"));
    EXPECT_EQ(relative->absoluteString()->utf8(), "http://h/a");
    EXPECT_FALSE(relative->isEqual(url("http://h/a")));
    EXPECT_FALSE(url("http://h/a")->isEqual(relative));
    EXPECT_TRUE(relative->absoluteURL()->isEqual(url("http://h/a")));
}

TEST(URLValues, describeThemselvesWithTheirBase) {
    EXPECT_EQ(url("http://h/%20")->description()->utf8(), "http://h/%20");
    EXPECT_EQ(url("a", url("http://h/b"))->description()->utf8(), "a -- http://h/b");
    const Ref<NSURL> made = url("x");
    EXPECT_EQ(made->copy().get(), made.get());
}

TEST(URLMessages, areAnsweredUnderTheirNames) {
    const id made =
        send<id>(NSURL::classObject(), "URLWithString:relativeToURL:"_sel, "x?q#f"_ns, url("http://u:p@h:8/a/b"));
    EXPECT_EQ(send<Ref<NSString>>(made, "absoluteString"_sel)->utf8(), "http://u:p@h:8/a/x?q#f");
    EXPECT_EQ(send<Ref<NSString>>(made, "relativeString"_sel)->utf8(), "x?q#f");
    EXPECT_EQ(send<Ref<NSURL>>(made, "baseURL"_sel)->absoluteString()->utf8(), "http://u:p@h:8/a/b");
    for (const auto& [name, value] : {std::pair{"scheme", "http"},
                                      {"user", "u"},
                                      {"password", "p"},
                                      {"host", "h"},
                                      {"port", "8"},
                                      {"path", "/a/x"},
                                      {"query", "q"},
                                      {"fragment", "f"},
                                      {"lastPathComponent", "x"},
                                      {"pathExtension", ""},
                                      {"absoluteURL", "http://u:p@h:8/a/x?q#f"}}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(shown(send<id>(made, sel_registerName(name))), value);
    }
    EXPECT_FALSE(send<id>(nullptr, "absoluteString"_sel));
}

} // namespace

} // namespace zr
