#include <zrbasic/platform/foundation/url_components.h>

#include "checks.h"
#include "url_vectors.h"

#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/url.h>

#include <gtest/gtest.h>

#include <limits>

namespace zr {

namespace {

using test::raised;
using test::raisedName;

Ref<NSURLComponents> parsed(std::string_view text) {
    return NSURLComponents::componentsWithString(NSString::fromUtf8(text));
}

/// A part as text: "-" when it is null.
std::string shown(NSObject* part) {
    return part ? part->description()->utf8() : "-";
}

TEST(URLComponentsParsing, refusesWhatIsNoStrictUrl) {
    for (const std::string_view text : {"http://a/?a[]=1",
                                        "http://a/[",
                                        "http://a/#]",
                                        "a[b",
                                        "http://a:x/",
                                        "http://a:80x/",
                                        "1http://a",
                                        ":a",
                                        "a%zz",
                                        "http://a/%",
                                        "http://a/%4",
                                        "http://a/b c",
                                        "http://a/é",
                                        "http://a#b#c",
                                        "http://a/|",
                                        "http://[::1",
                                        "http://::1]/",
                                        "http://[1:2]/",
                                        "http://a@b@c/",
                                        "http://a:1:2/",
                                        "http://[::1]x/",
                                        "http://a?b^c",
                                        "http://a#b`c",
                                        "http://a?%4g"}) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(parsed(text));
    }
}

TEST(URLComponentsParsing, acceptsEveryStrictUrlAndGivesItsTextBack) {
    for (const std::string_view text : {"",
                                        "u",
                                        "#f",
                                        "?q",
                                        "?",
                                        "#",
                                        "?#",
                                        "//h/p",
                                        "http:",
                                        "http://",
                                        "http:///",
                                        "file:////x",
                                        "mailto:a@b?s=x",
                                        "a:b:c",
                                        "./a:b",
                                        "http://a:/",
                                        "http://a:080/",
                                        "//:p@h",
                                        "//@h",
                                        "//u:@h",
                                        "http://[::1]:80/x",
                                        "http://[v1.a]/",
                                        "http://%41%2F/",
                                        "HTTP://H/%7e?%7E#%7e",
                                        "http://h/a//b/../c",
                                        "http://h?a=b=c&&=",
                                        "http://h:99999999999999999999/"}) {
        SCOPED_TRACE(text);
        const Ref<NSURLComponents> components = parsed(text);
        ASSERT_TRUE(components);
        EXPECT_EQ(shown(components->string()), text);
        EXPECT_EQ(shown(components->URL()), text);
    }
}

TEST(URLComponentsParsing, raisesForNull) {
    EXPECT_EQ(raised([] { static_cast<void>(NSURLComponents::componentsWithString(nullptr)); }),
              "NSInvalidArgumentException: *** -[NSURLComponents initWithString:]: nil string parameter");
    EXPECT_EQ(raisedName(
                  [] { static_cast<void>(NSURLComponents::componentsWithURL_resolvingAgainstBaseURL(nullptr, true)); }),
              NSInvalidArgumentException);
    EXPECT_EQ(raisedName([] { send<id>(NSURLComponents::classObject(), "componentsWithString:"_sel, NSNull::null()); }),
              NSInvalidArgumentException);
    EXPECT_EQ(raisedName([] {
                  send<id>(NSURLComponents::classObject(), "componentsWithURL:resolvingAgainstBaseURL:"_sel, "x"_ns,
                           false);
              }),
              NSInvalidArgumentException);
}

TEST(URLComponentsParsing, refusesHostileTexts) {
    using namespace std::string_literals;
    for (const std::u16string& text : {u"http://a/\0"s, std::u16string{u'a', char16_t(0xD83D)}, u"http://a/?\0"s,
                                       u"http://a/#\u0141"s, u"a\x7F"s, u"http://a/%\uFF11\uFF11"s}) {
        EXPECT_FALSE(NSURLComponents::componentsWithString(NSString::fromUtf16(text)));
    }
}

TEST(URLComponentsParsing, takesLongTexts) {
    for (const std::string_view start : {"http://h/", "http://h/?", "http://h/#", "http://", "http://u", "a:", ""}) {
        for (const std::string_view filling : {"a", "/", "%41", "a=1&"}) {
            SCOPED_TRACE(std::string(start) + ' ' + std::string(filling));
            std::string text(start);
            while (text.size() < 1'000'000) {
                text += filling;
            }
            const Ref<NSURLComponents> components = parsed(text);
            ASSERT_TRUE(components);
            EXPECT_EQ(components->string()->length(), text.size());
            EXPECT_FALSE(parsed(text + "\\"));
        }
    }
}

TEST(URLComponentsParsing, resolvesARelativeUrlWhenTold) {
    const Ref<NSURL> base = NSURL::URLWithString("http://h/a/b?q"_ns);
    const Ref<NSURL> relative = NSURL::URLWithString_relativeToURL("../c?n#f"_ns, base);
    const auto whole = NSURLComponents::componentsWithURL_resolvingAgainstBaseURL(relative, true);
    EXPECT_EQ(shown(whole->host()), "h");
    EXPECT_EQ(shown(whole->string()), "http://h/c?n#f");
    const auto alone = NSURLComponents::componentsWithURL_resolvingAgainstBaseURL(relative, false);
    EXPECT_FALSE(alone->host());
    EXPECT_EQ(shown(alone->string()), "../c?n#f");
    EXPECT_EQ(shown(alone->URLRelativeToURL(base)->absoluteString()), "http://h/c?n#f");
    EXPECT_FALSE(NSURLComponents::componentsWithURL_resolvingAgainstBaseURL(
        NSURL::URLWithString_relativeToURL("?a[]=1"_ns, base), true));
}

TEST(URLComponentsParts, areDecodedAndEncoded) {
    const Ref<NSURLComponents> c = parsed("http://u%40:p%3A@h%41:80/a%2Fb?x=%26&y#f%20");
    EXPECT_EQ(shown(c->scheme()), "http");
    EXPECT_EQ(shown(c->user()), "u@");
    EXPECT_EQ(shown(c->percentEncodedUser()), "u%40");
    EXPECT_EQ(shown(c->password()), "p:");
    EXPECT_EQ(shown(c->percentEncodedPassword()), "p%3A");
    EXPECT_EQ(shown(c->host()), "hA");
    EXPECT_EQ(shown(c->percentEncodedHost()), "h%41");
    EXPECT_EQ(shown(c->port()), "80");
    EXPECT_EQ(shown(c->path()), "/a/b");
    EXPECT_EQ(shown(c->percentEncodedPath()), "/a%2Fb");
    EXPECT_EQ(shown(c->query()), "x=&&y");
    EXPECT_EQ(shown(c->percentEncodedQuery()), "x=%26&y");
    EXPECT_EQ(shown(c->fragment()), "f ");
    EXPECT_EQ(shown(c->percentEncodedFragment()), "f%20");
}

TEST(URLComponentsParts, thatAreMissingAreNullExceptThePath) {
    for (const Ref<NSURLComponents>& c : {parsed(""), make<NSURLComponents>(), NSURLComponents::components()}) {
        for (const char* const name : {"scheme", "user", "password", "host", "port", "query", "fragment",
                                       "percentEncodedUser", "percentEncodedPassword", "percentEncodedHost",
                                       "percentEncodedQuery", "percentEncodedFragment", "queryItems"}) {
            SCOPED_TRACE(name);
            EXPECT_FALSE(send<id>(c, sel_registerName(name)));
        }
        EXPECT_EQ(shown(c->path()), "");
        EXPECT_EQ(shown(c->percentEncodedPath()), "");
        EXPECT_EQ(shown(c->string()), "");
    }
}

TEST(URLComponentsParts, thatAreEmptyAreNotMissing) {
    const Ref<NSURLComponents> c = parsed("http://:@:/?#");
    EXPECT_EQ(shown(c->user()), "");
    EXPECT_EQ(shown(c->password()), "");
    EXPECT_EQ(shown(c->host()), "");
    EXPECT_FALSE(c->port());
    EXPECT_EQ(shown(c->query()), "");
    EXPECT_EQ(shown(c->fragment()), "");
    EXPECT_EQ(shown(c->string()), "http://:@:/?#");
}

TEST(URLComponentsParts, thatDoNotDecodeAreNullButKeepTheirEscapes) {
    const Ref<NSURLComponents> c = parsed("http://%FF:%C3@%80/%FF?%FF=%C3%28#%ED%A0%80");
    EXPECT_FALSE(c->user());
    EXPECT_FALSE(c->password());
    EXPECT_FALSE(c->host());
    EXPECT_FALSE(c->path());
    EXPECT_FALSE(c->query());
    EXPECT_FALSE(c->fragment());
    EXPECT_EQ(shown(c->percentEncodedQuery()), "%FF=%C3%28");
    EXPECT_EQ(shown(c->string()), "http://%FF:%C3@%80/%FF?%FF=%C3%28#%ED%A0%80");
}

TEST(URLComponentsParts, keepABracketedHostAsItIs) {
    const Ref<NSURLComponents> c = parsed("http://[::1]:8080/");
    EXPECT_EQ(shown(c->host()), "[::1]");
    EXPECT_EQ(shown(c->port()), "8080");
    EXPECT_FALSE(parsed("http://h:99999999999999999999/")->port());
    c->setHost("[fe80::1]"_ns);
    EXPECT_EQ(shown(c->string()), "http://[fe80::1]:8080/");
    c->setHost("a:[b]/"_ns);
    EXPECT_EQ(shown(c->string()), "http://a%3A%5Bb%5D%2F:8080/");
}

TEST(URLComponentsSetting, escapesWhatThePartCannotHold) {
    std::u16string printable;
    for (char16_t c = 0x20; c < 0x7F; ++c) {
        printable.push_back(c);
    }
    const Ref<NSString> all = NSString::fromUtf16(printable);
    const Ref<NSURLComponents> c = NSURLComponents::components();
    c->setFragment(all);
    EXPECT_EQ(shown(c->percentEncodedFragment()),
              "%20!%22%23$%25&'()*+,-./0123456789:;%3C=%3E?@ABCDEFGHIJKLMNOPQRSTUVWXYZ%5B%5C%5D%5E_%60"
              "abcdefghijklmnopqrstuvwxyz%7B%7C%7D~");
    c->setQuery(all);
    EXPECT_TRUE(c->percentEncodedQuery()->isEqual(c->percentEncodedFragment()));
    c->setPath(all);
    EXPECT_EQ(shown(c->percentEncodedPath()),
              "%20!%22%23$%25&'()*+,-./0123456789:;%3C=%3E%3F@ABCDEFGHIJKLMNOPQRSTUVWXYZ%5B%5C%5D%5E_%60"
              "abcdefghijklmnopqrstuvwxyz%7B%7C%7D~");
    c->setUser(all);
    EXPECT_EQ(shown(c->percentEncodedUser()),
              "%20!%22%23$%25&'()*+,-.%2F0123456789%3A;%3C=%3E%3F%40ABCDEFGHIJKLMNOPQRSTUVWXYZ%5B%5C%5D%5E_%60"
              "abcdefghijklmnopqrstuvwxyz%7B%7C%7D~");
    c->setPassword(all);
    EXPECT_TRUE(c->percentEncodedPassword()->isEqual(c->percentEncodedUser()));
    c->setHost(all);
    EXPECT_TRUE(c->percentEncodedHost()->isEqual(c->percentEncodedUser()));
    for (const Ref<NSString>& back : {c->fragment(), c->query(), c->path(), c->user(), c->password(), c->host()}) {
        EXPECT_TRUE(back->isEqual(all));
    }
}

TEST(URLComponentsSetting, takesDecodedTextAndEscapesThePercentSignAgain) {
    const Ref<NSURLComponents> c = parsed("http://h/");
    c->setFragment("%41"_ns);
    EXPECT_EQ(shown(c->percentEncodedFragment()), "%2541");
    EXPECT_EQ(shown(c->fragment()), "%41");
    c->setQuery(u"é=\U0001F600\u0001"_ns);
    EXPECT_EQ(shown(c->percentEncodedQuery()), "%C3%A9=%F0%9F%98%80%01");
    c->setPath("/a b"_ns);
    EXPECT_EQ(shown(c->URL()), "http://h/a%20b?%C3%A9=%F0%9F%98%80%01#%2541");
}

TEST(URLComponentsSetting, agreesWithAnIndependentImplementation) {
    const Ref<NSURLComponents> c = NSURLComponents::components();
    int rows = 0;
    for (const std::vector<std::string>& row : test::urlVectors("query")) {
        SCOPED_TRACE(row[0]);
        const Ref<NSString> text = test::fromHex(row[0]);
        c->setQuery(text);
        c->setFragment(text);
        EXPECT_EQ(shown(c->percentEncodedQuery()), row[1]);
        EXPECT_EQ(shown(c->percentEncodedFragment()), row[1]);
        EXPECT_TRUE(c->query()->isEqual(text));
        ++rows;
    }
    EXPECT_EQ(rows, 428);
}

TEST(URLComponentsSetting, writesALoneSurrogateAsTheReplacementCharacter) {
    const Ref<NSURLComponents> c = NSURLComponents::components();
    c->setFragment(NSString::fromUtf16(std::u16string{u'a', u' ', char16_t(0xD83D), u'b', u'&'}));
    EXPECT_EQ(shown(c->percentEncodedFragment()), "a%20%EF%BF%BDb&");
    c->setPath(NSString::fromUtf16(std::u16string{char16_t(0xDE00)}));
    EXPECT_EQ(shown(c->percentEncodedPath()), "%EF%BF%BD");
    c->setFragment(NSString::fromUtf16(std::u16string(3, u'\0')));
    EXPECT_EQ(shown(c->percentEncodedFragment()), "%00%00%00");
    EXPECT_EQ(c->fragment()->length(), 3U);
}

TEST(URLComponentsSetting, leavesTheOtherPartsAsTheyWereWritten) {
    const Ref<NSURLComponents> c = parsed("HTTP://%75@H/%7e?%7e#%7e");
    c->setFragment("new"_ns);
    EXPECT_EQ(shown(c->string()), "HTTP://%75@H/%7e?%7e#new");
    c->setQuery(nullptr);
    EXPECT_EQ(shown(c->string()), "HTTP://%75@H/%7e#new");
    c->setFragment(nullptr);
    c->setUser(nullptr);
    EXPECT_EQ(shown(c->string()), "HTTP://H/%7e");
    c->setPath(nullptr);
    c->setScheme(nullptr);
    c->setPort(box(81));
    EXPECT_EQ(shown(c->string()), "//H:81");
    c->setHost(nullptr);
    c->setPort(nullptr);
    EXPECT_EQ(shown(c->string()), "");
}

TEST(URLComponentsSetting, ofEscapedTextTakesOnlyWhatIsEscaped) {
    const Ref<NSURLComponents> c = parsed("http://h/");
    c->setPercentEncodedQuery("a=%20&b"_ns);
    c->setPercentEncodedPath("/%2F"_ns);
    c->setPercentEncodedFragment("%ff"_ns);
    c->setPercentEncodedUser("u%40"_ns);
    c->setPercentEncodedPassword("%3a"_ns);
    c->setPercentEncodedHost("[::1]"_ns);
    EXPECT_EQ(shown(c->URL()), "http://u%40:%3a@[::1]/%2F?a=%20&b#%ff");
    for (const char* const name : {"setPercentEncodedQuery:", "setPercentEncodedPath:", "setPercentEncodedFragment:",
                                   "setPercentEncodedUser:", "setPercentEncodedPassword:", "setPercentEncodedHost:"}) {
        for (const Ref<NSString>& bad : {"a b"_ns, "%"_ns, "%4"_ns, "%zz"_ns, "a#"_ns, u"é"_ns, "[a"_ns}) {
            SCOPED_TRACE(std::string(name) + bad->utf8());
            EXPECT_EQ(raisedName([&] { send(c, sel_registerName(name), bad); }), NSInvalidArgumentException);
        }
    }
    EXPECT_EQ(raisedName([&] { c->setPercentEncodedPath("a?"_ns); }), NSInvalidArgumentException);
    EXPECT_EQ(raisedName([&] { c->setPercentEncodedUser("a:"_ns); }), NSInvalidArgumentException);
    EXPECT_EQ(shown(c->URL()), "http://u%40:%3a@[::1]/%2F?a=%20&b#%ff");
    c->setPercentEncodedQuery(nullptr);
    c->setPercentEncodedPath(nullptr);
    c->setPercentEncodedUser(nullptr);
    c->setPercentEncodedPassword(nullptr);
    EXPECT_EQ(shown(c->URL()), "http://[::1]#%ff");
}

TEST(URLComponentsSetting, ofTheSchemeAndThePortIsChecked) {
    const Ref<NSURLComponents> c = parsed("http://h/");
    for (const Ref<NSString>& bad : {""_ns, "1a"_ns, "a b"_ns, "a:"_ns, "a%41"_ns, u"é"_ns, "-"_ns}) {
        EXPECT_EQ(raisedName([&] { c->setScheme(bad); }), NSInvalidArgumentException);
    }
    c->setScheme("a1+-."_ns);
    EXPECT_EQ(raised([&] { c->setPort(box(-1)); }),
              "NSInvalidArgumentException: *** -[NSURLComponents setPort:]: negative port number");
    c->setPort(box(8080.9));
    EXPECT_EQ(shown(c->string()), "a1+-.://h:8080/");
    c->setPort(box(0));
    EXPECT_EQ(shown(c->port()), "0");
    c->setPort(box(std::numeric_limits<NSInteger>::max()));
    EXPECT_EQ(shown(c->port()), "9223372036854775807");
}

TEST(URLComponentsRebuilding, givesNullForWhatWouldBeReadDifferently) {
    const Ref<NSURLComponents> c = NSURLComponents::components();
    c->setPath("//evil/x"_ns);
    EXPECT_FALSE(c->string());
    EXPECT_FALSE(c->URL());
    EXPECT_FALSE(c->URLRelativeToURL(NSURL::URLWithString("http://h"_ns)));
    c->setHost("h"_ns);
    EXPECT_EQ(shown(c->URL()), "//h//evil/x");
    c->setPath("x"_ns);
    EXPECT_FALSE(c->string());
    c->setPath(""_ns);
    EXPECT_EQ(shown(c->URL()), "//h");
    c->setHost(nullptr);
    c->setPath("x"_ns);
    EXPECT_EQ(shown(c->URL()), "x");
}

TEST(URLComponentsRebuilding, doesNotGuardAColonInTheFirstSegment) {
    const Ref<NSURLComponents> c = NSURLComponents::components();
    c->setPath("a:b"_ns);
    EXPECT_EQ(shown(c->string()), "a:b");
    EXPECT_EQ(shown(c->URL()->scheme()), "a");
    c->setPath("./a:b"_ns);
    EXPECT_FALSE(c->URL()->scheme());
}

TEST(URLComponentsRebuilding, countsUserPasswordAndPortAsAHost) {
    for (int part = 0; part < 3; ++part) {
        SCOPED_TRACE(part);
        const Ref<NSURLComponents> c = NSURLComponents::components();
        c->setPath("x"_ns);
        if (part == 0) {
            c->setUser("u"_ns);
        } else if (part == 1) {
            c->setPassword("p"_ns);
        } else {
            c->setPort(box(1));
        }
        EXPECT_FALSE(c->string());
        c->setPath("/x"_ns);
        EXPECT_EQ(shown(c->string()), part == 0 ? "//u@/x" : part == 1 ? "//:p@/x" : "//:1/x");
    }
}

TEST(URLComponentsValues, areEqualByTheirEscapedParts) {
    EXPECT_TRUE(parsed("http://h/a?b#c")->isEqual(parsed("http://h/a?b#c")));
    EXPECT_EQ(parsed("http://h/a?b#c")->hash(), parsed("http://h/a?b#c")->hash());
    EXPECT_FALSE(parsed("http://h/~")->isEqual(parsed("http://h/%7E")));
    EXPECT_FALSE(parsed("http://h")->isEqual(parsed("http://h?")));
    EXPECT_FALSE(parsed("http://h")->isEqual("http://h"_ns));
    EXPECT_FALSE(parsed("http://h")->isEqual(nullptr));
}

TEST(URLComponentsValues, areCopiedToBeChangedApart) {
    const Ref<NSURLComponents> c = parsed("http://u:p@h:1/a?b#c");
    const Ref<NSURLComponents> twin(cast<NSURLComponents>(id(c->copy())));
    EXPECT_TRUE(twin->isEqual(c));
    twin->setQuery("n"_ns);
    EXPECT_EQ(shown(c->string()), "http://u:p@h:1/a?b#c");
    EXPECT_EQ(shown(twin->string()), "http://u:p@h:1/a?n#c");
    EXPECT_NE(shown(c).find("scheme = http, user = u, password = p, host = h, port = 1, path = /a, query = b, "
                            "fragment = c}"),
              std::string::npos);
    EXPECT_NE(shown(parsed("x")).find("scheme = (null), user = (null)"), std::string::npos);
}

TEST(URLComponentsValues, doNotChangeWithTheStringsThatWereSet) {
    const Ref<NSMutableString> text = NSMutableString::stringWithString("http://h/a"_ns);
    const Ref<NSURLComponents> c = NSURLComponents::componentsWithString(text);
    c->setQuery(text);
    c->setScheme("ftp"_ns);
    text->setString("http://other/long/enough/to/move"_ns);
    EXPECT_EQ(shown(c->string()), "ftp://h/a?http://h/a");
    EXPECT_EQ(shown(c->host()), "h");
}

} // namespace

} // namespace zr
