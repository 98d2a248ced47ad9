#include <zrbasic/collections/url_query.h>

#include "../foundation/listing.h"

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/decimal_number.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/url.h>
#include <zrbasic/platform/foundation/url_request.h>

#include <gtest/gtest.h>

#include <set>

namespace zr {

namespace {

using test::listing;

Ref<NSURL> url(std::string_view text) {
    return NSURL::URLWithString(NSString::fromUtf8(text));
}

/// "-" when it is null.
std::string shown(NSObject* object) {
    return object ? object->description()->utf8() : "-";
}

std::string queryOf(NSDictionary* entries) {
    return shown(URLQueryString(entries));
}

/// The entries that are read from a text, sorted; "-" for null.
std::string paramsOf(NSString* content) {
    const Ref<NSMutableDictionary> params = getParamsFromUrlContent(url(""), content);
    return params ? queryOf(params) : "-";
}

/// The URL with "N" in place of its last random number, which must be one.
std::string withoutNumber(const Ref<NSURL>& made) {
    std::string text = shown(made->absoluteString());
    const std::size_t start = text.rfind("random=") + 7;
    const std::size_t end = std::min(text.find('#', start), text.size());
    const std::string digits = text.substr(start, end - start);
    EXPECT_EQ(digits, std::to_string(std::stoull(digits)));
    EXPECT_LE(std::stoull(digits), 0xFFFFFFFFULL);
    return text.replace(start, end - start, "N");
}

TEST(URLQueryStrings, areSortedUpperCaseFirst) {
    EXPECT_EQ(queryOf(dictionary({{"b"_ns, box(2)}, {"a"_ns, box(1)}, {"C"_ns, box(3)}})), "C=3&a=1&b=2");
    EXPECT_EQ(queryOf(dictionary({{"10"_ns, "x"_ns}, {"9"_ns, "y"_ns}, {""_ns, "z"_ns}})), "=z&10=x&9=y");
    EXPECT_EQ(queryOf(dictionary({{"f"_ns, "1"_ns}, {u"é"_ns, "2"_ns}, {"e"_ns, "3"_ns}})), "e=3&\xC3\xA9=2&f=1");
    // By code point, where the units stand the other way round.
    EXPECT_EQ(queryOf(dictionary({{u"\U0001F600"_ns, "1"_ns}, {u"\uFF5E"_ns, "2"_ns}})),
              "\xEF\xBD\x9E=2&\xF0\x9F\x98\x80=1");
}

TEST(URLQueryStrings, writeObjectsOfAnyKind) {
    EXPECT_EQ(queryOf(dictionary({{"a"_ns, box(true)},
                                  {"b"_ns, box(false)},
                                  {"c"_ns, box(1.5)},
                                  {"d"_ns, NSNull::null()},
                                  {"e"_ns, NSDecimalNumber::decimalNumberWithString("0.010"_ns)},
                                  {"f"_ns, array({})},
                                  {box(7), "g"_ns},
                                  {NSNull::null(), ""_ns}})),
              "7=g&<null>=&a=1&b=0&c=1.5&d=<null>&e=0.01&f=(\n)");
}

TEST(URLQueryStrings, passOverEntriesThatWereRemoved) {
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::dictionary();
    for (const Ref<NSString>& name : {"a"_ns, "b"_ns, "c"_ns}) {
        entries->setObject_forKey("1"_ns, name);
    }
    entries->removeObjectForKey("b"_ns);
    EXPECT_EQ(queryOf(entries), "a=1&c=1");
    EXPECT_EQ(shown(appendQueryItemsFromDictionary(url("?"), entries)), "?a=1&c=1");
    entries->removeAllObjects();
    EXPECT_EQ(queryOf(entries), "");
}

TEST(URLQueryStrings, escapeNothing) {
    EXPECT_EQ(queryOf(dictionary({{"q"_ns, "a b&c=d%20"_ns}})), "q=a b&c=d%20");
    EXPECT_EQ(queryOf(dictionary({{"a&"_ns, u"é+#"_ns}, {"="_ns, "\n"_ns}})), "==\n&a&=\xC3\xA9+#");
}

TEST(URLQueryStrings, areEmptyForNoEntriesAndNullForNoDictionary) {
    EXPECT_EQ(queryOf(NSDictionary::dictionary()), "");
    EXPECT_EQ(queryOf(NSMutableDictionary::dictionary()), "");
    EXPECT_FALSE(URLQueryString(nullptr));
    EXPECT_FALSE(send<id>(NSNull::null(), "URLQueryString"_sel));
}

TEST(URLQueryStrings, keepTheLaterOfKeysThatAreWrittenAlike) {
    EXPECT_EQ(queryOf(dictionary({{"1"_ns, "a"_ns}, {box(1), "b"_ns}})), "1=b");
    EXPECT_EQ(queryOf(dictionary({{box(1), "b"_ns}, {"1"_ns, "a"_ns}, {"0"_ns, "z"_ns}})), "0=z&1=a");
    // Canonically equivalent names sort as the same, but are two.
    EXPECT_EQ(queryOf(dictionary({{u"e\u0301"_ns, "1"_ns}, {u"é"_ns, "2"_ns}})), "e\xCC\x81=1&\xC3\xA9=2");
    EXPECT_EQ(queryOf(dictionary({{u"é"_ns, "2"_ns}, {u"e\u0301"_ns, "1"_ns}})), "\xC3\xA9=2&e\xCC\x81=1");
}

TEST(URLQueryStrings, holdTheReplacementCharacterForALoneSurrogate) {
    const Ref<NSString> broken = NSString::fromUtf16(std::u16string{u'a', char16_t(0xD83D)});
    EXPECT_EQ(URLQueryString(dictionary({{broken, "1"_ns}}))->view(), u"a\uFFFD=1");
    EXPECT_EQ(URLQueryString(dictionary({{"a"_ns, u"\U0001F600"_ns}}))->view(), u"a=\U0001F600");
    const Ref<NSString> zero = NSString::fromUtf16(std::u16string(1, u'\0'));
    EXPECT_EQ(URLQueryString(dictionary({{"a"_ns, zero}}))->view(), std::u16string(u"a=") + u'\0');
}

TEST(AppendingQueryItems, keepsThoseThatAreThere) {
    const auto append = [](std::string_view text, NSDictionary* entries) {
        return shown(appendQueryItemsFromDictionary(url(text), entries));
    };
    const Ref<NSDictionary> x = dictionary({{"x"_ns, box(1)}});
    EXPECT_EQ(append("http://h/p?x=0", x), "http://h/p?x=0&x=1");
    EXPECT_EQ(append("http://h/p", x), "http://h/p?x=1");
    EXPECT_EQ(append("http://h/p?", x), "http://h/p?x=1");
    EXPECT_EQ(append("http://h/p#f", x), "http://h/p?x=1#f");
    EXPECT_EQ(append("http://h?a&a=&=&#", x), "http://h?a&a=&=&&x=1#");
    EXPECT_EQ(append("", x), "?x=1");
    EXPECT_EQ(append("mailto:a@b?s=1", x), "mailto:a@b?s=1&x=1");
    EXPECT_EQ(append("HTTP://%75@H:80/%7e#%7e", x), "HTTP://%75@H:80/%7e?x=1#%7e");
}

TEST(AppendingQueryItems, goesInTheDictionarysOrderAndEscapes) {
    const Ref<NSDictionary> entries = dictionary(
        {{"z"_ns, "a b&c=d"_ns}, {"a"_ns, box(true)}, {box(7), NSNull::null()}, {u"é"_ns, "%41+#"_ns}, {""_ns, ""_ns}});
    EXPECT_EQ(shown(appendQueryItemsFromDictionary(url("http://h/"), entries)),
              "http://h/?z=a%20b%26c%3Dd&a=1&7=%3Cnull%3E&%C3%A9=%2541+%23&=");
}

TEST(AppendingQueryItems, doesNotMergeKeysThatAreWrittenAlike) {
    const Ref<NSDictionary> entries = dictionary({{"1"_ns, "a"_ns}, {box(1), "b"_ns}});
    EXPECT_EQ(shown(appendQueryItemsFromDictionary(url("?x"), entries)), "?x&1=a&1=b");
}

TEST(AppendingQueryItems, writesTheWholeQueryInOneWay) {
    const Ref<NSDictionary> x = dictionary({{"x"_ns, "1"_ns}});
    const auto append = [&](std::string_view text) { return shown(appendQueryItemsFromDictionary(url(text), x)); };
    EXPECT_EQ(append("?a=%41&b=c=d"), "?a=A&b=c%3Dd&x=1");
    EXPECT_EQ(append("?%c3%a9=%C3%A9&a%2fb=%2F"), "?%C3%A9=%C3%A9&a/b=/&x=1");
    EXPECT_EQ(append("?a=%20%26%3D&%25=%7f"), "?a=%20%26%3D&%25=%7F&x=1");
    // What does not decode is lost: a value altogether, a name but for its place.
    EXPECT_EQ(append("?a=%FF&%FF=b&%FF"), "?a&=b&&x=1");
}

TEST(AppendingQueryItems, resolvesTheUrlFirst) {
    const Ref<NSURL> relative = NSURL::URLWithString_relativeToURL("../c?n"_ns, url("http://h/a/b?q"));
    const Ref<NSURL> made = appendQueryItemsFromDictionary(relative, dictionary({{"x"_ns, "1"_ns}}));
    EXPECT_EQ(shown(made->absoluteString()), "http://h/c?n&x=1");
    EXPECT_FALSE(made->baseURL());
    EXPECT_EQ(shown(relative->relativeString()), "../c?n");
}

TEST(AppendingQueryItems, givesTheReceiverForNothingToAppend) {
    const Ref<NSURL> odd = url("http://a/?a[]=1");
    EXPECT_EQ(appendQueryItemsFromDictionary(odd, nullptr), odd);
    EXPECT_EQ(appendQueryItemsFromDictionary(odd, NSDictionary::dictionary()), odd);
    EXPECT_EQ(send<Ref<NSURL>>(odd, "appendQueryItemsFromDictionary:"_sel, NSNull::null()), odd);
    EXPECT_EQ(send<Ref<NSURL>>(odd, "appendQueryItemsFromDictionary:"_sel, "x=1"_ns), odd);
    EXPECT_FALSE(appendQueryItemsFromDictionary(odd, dictionary({{"x"_ns, "1"_ns}})));
    EXPECT_FALSE(appendQueryItemsFromDictionary(nullptr, nullptr));
    EXPECT_FALSE(appendQueryItemsFromDictionary(nullptr, dictionary({{"x"_ns, "1"_ns}})));
}

TEST(ResettingTheFragment, replacesItAndNothingElse) {
    const Ref<NSDictionary> entries = dictionary({{"b"_ns, "x y"_ns}, {"a"_ns, "%=&/é"_ns}});
    EXPECT_EQ(shown(resetFragmentWithDictionary(url("HTTP://H/%7e?%7e=a=b&%ff#old"), entries)),
              "HTTP://H/%7e?%7e=a=b&%ff#a=%25=&/%C3%A9&b=x%20y");
    EXPECT_EQ(shown(resetFragmentWithDictionary(url("http://h"), entries)), "http://h#a=%25=&/%C3%A9&b=x%20y");
    EXPECT_EQ(shown(resetFragmentWithDictionary(url("?#"), dictionary({{"#"_ns, "?"_ns}}))), "?#%23=?");
    const Ref<NSURL> relative = NSURL::URLWithString_relativeToURL("#x"_ns, url("http://h/a?q"));
    EXPECT_EQ(shown(resetFragmentWithDictionary(relative, dictionary({{"n"_ns, box(1)}}))), "http://h/a?q#n=1");
}

TEST(ResettingTheFragment, givesTheReceiverForNothingToWrite) {
    const Ref<NSURL> odd = url("http://a:x/#old");
    EXPECT_EQ(resetFragmentWithDictionary(odd, nullptr), odd);
    EXPECT_EQ(resetFragmentWithDictionary(odd, NSDictionary::dictionary()), odd);
    EXPECT_EQ(send<Ref<NSURL>>(odd, "resetFragmentWithDictionary:"_sel, box(1)), odd);
    EXPECT_FALSE(resetFragmentWithDictionary(odd, dictionary({{"x"_ns, "1"_ns}})));
    EXPECT_FALSE(resetFragmentWithDictionary(nullptr, nullptr));
    EXPECT_FALSE(resetFragmentWithDictionary(nullptr, dictionary({{"x"_ns, "1"_ns}})));
}

TEST(RefreshingTheRandomItem, putsTheNewOneLast) {
    const std::pair<const char*, const char*> rows[] = {
        {"http://h/?random=5&a=1&random=5&random=6#f", "http://h/?a=1&random=6&random=N#f"},
        {"http://h/?random=6&random=5&random=5", "http://h/?random=5&random=5&random=N"},
        {"http://h/", "http://h/?random=N"},
        {"http://h/?", "http://h/?random=N"},
        {"http://h?a=1", "http://h?a=1&random=N"},
        {"http://h/?random", "http://h/?random=N"},
        {"http://h/?random&random=&random", "http://h/?random=&random=N"},
        {"http://h/?random=&random", "http://h/?random&random=N"},
        {"http://h/?Random=1&RANDOM=1&randoms=1&xrandom=1", "http://h/?Random=1&RANDOM=1&randoms=1&xrandom=1&random=N"},
        {"http://h/?%72andom=%35&random=5&x=random", "http://h/?x=random&random=N"},
        {"http://h/?random=%FF&random&random=%fe&random=1", "http://h/?random=1&random=N"},
        {"http://h/?random=a=b&random=a%3Db", "http://h/?random=N"},
        {"http://h/?&", "http://h/?&&random=N"},
        {"http://h/?%FF=1&a=%41", "http://h/?=1&a=A&random=N"},
        {"#f", "?random=N#f"},
    };
    for (const auto& [before, after] : rows) {
        SCOPED_TRACE(before);
        EXPECT_EQ(withoutNumber(resetRandomQueryItem(url(before))), after);
    }
}

TEST(RefreshingTheRandomItem, givesAnotherNumberEachTime) {
    Ref<NSURL> current = url("http://h/?a=1");
    std::set<std::string> seen;
    for (int i = 0; i < 50; ++i) {
        current = resetRandomQueryItem(current);
        seen.insert(shown(current));
    }
    // Two equal ones among fifty are a matter of one in three million, ten of them of nothing but a fault.
    EXPECT_GT(seen.size(), 40U);
    EXPECT_EQ(withoutNumber(current), "http://h/?a=1&random=N");
}

TEST(RefreshingTheRandomItem, givesNullWithoutComponents) {
    EXPECT_FALSE(resetRandomQueryItem(url("http://a/?a[]=1")));
    EXPECT_FALSE(resetRandomQueryItem(url("http://a:x/")));
    EXPECT_FALSE(resetRandomQueryItem(url("1http://a")));
    EXPECT_FALSE(resetRandomQueryItem(nullptr));
    const Ref<NSURL> relative = NSURL::URLWithString_relativeToURL("x"_ns, url("http://h/a?random=1"));
    EXPECT_EQ(withoutNumber(resetRandomQueryItem(relative)), "http://h/x?random=N");
}

TEST(RefreshingBoth, setsFragmentAndRandomItem) {
    const Ref<NSDictionary> entries = dictionary({{"b"_ns, "2"_ns}, {"a"_ns, "1"_ns}});
    EXPECT_EQ(withoutNumber(resetRandomURLAndFragmentWithDictionary(url("http://h/?random=5&x=1#old"), entries)),
              "http://h/?x=1&random=N#a=1&b=2");
    EXPECT_EQ(withoutNumber(resetRandomURLAndFragmentWithDictionary(url("http://h"), entries)),
              "http://h?random=N#a=1&b=2");
    EXPECT_FALSE(resetRandomURLAndFragmentWithDictionary(url("http://a/?a[]=1"), entries));
    EXPECT_FALSE(resetRandomURLAndFragmentWithDictionary(nullptr, entries));
}

TEST(RefreshingBoth, leavesTheOldRandomItemWhenThereIsNothingToWrite) {
    const Ref<NSURL> old = url("http://h/?random=5");
    EXPECT_EQ(resetRandomURLAndFragmentWithDictionary(old, NSDictionary::dictionary()), old);
    EXPECT_EQ(resetRandomURLAndFragmentWithDictionary(old, nullptr), old);
    EXPECT_EQ(send<Ref<NSURL>>(old, "resetRandomURLAndFragmentWithDictionary:"_sel, NSNull::null()), old);
    EXPECT_FALSE(resetRandomURLAndFragmentWithDictionary(nullptr, nullptr));
}

TEST(ReadingParameters, keepsPiecesWithExactlyOneEqualsSign) {
    EXPECT_EQ(paramsOf("a=1&b&c=2=3&a=4"_ns), "a=4");
    EXPECT_EQ(paramsOf("a="_ns), "a=");
    EXPECT_EQ(paramsOf("=b"_ns), "=b");
    EXPECT_EQ(paramsOf("="_ns), "=");
    EXPECT_EQ(paramsOf("=="_ns), "");
    EXPECT_EQ(paramsOf("a"_ns), "");
    EXPECT_EQ(paramsOf("&&"_ns), "");
    EXPECT_EQ(paramsOf("&a=1&&b=2&"_ns), "a=1&b=2");
    EXPECT_EQ(paramsOf("a=1=&b=2"_ns), "b=2");
    EXPECT_EQ(paramsOf(" a =%20+;x=1"_ns), "");
    EXPECT_EQ(paramsOf(" a =%20+;"_ns), " a =%20+;");
}

TEST(ReadingParameters, givesNullForNoText) {
    EXPECT_EQ(paramsOf(nullptr), "-");
    EXPECT_EQ(paramsOf(""_ns), "-");
    EXPECT_FALSE(getParamsFromUrlContent(nullptr, "a=1"_ns));
    EXPECT_FALSE(send<id>(url("x"), "getParamsFromUrlContent:"_sel, NSNull::null()));
    EXPECT_FALSE(send<id>(url("x"), "getParamsFromUrlContent:"_sel, box(1)));
}

TEST(ReadingParameters, givesADictionaryThatCanBeChanged) {
    const Ref<NSMutableDictionary> params = getParamsFromUrlContent(url("http://other"), "b=2&a=1"_ns);
    EXPECT_EQ(listing(params), "b=2 a=1");
    params->setObject_forKey("3"_ns, "c"_ns);
    EXPECT_EQ(params->count(), 3U);
}

TEST(ReadingParameters, readsAnyText) {
    EXPECT_EQ(paramsOf(u"é=1&名=值"_ns), "\xC3\xA9=1&\xE5\x90\x8D=\xE5\x80\xBC");
    EXPECT_EQ(paramsOf(u"é&名=值=&a=1"_ns), "a=1");
    const Ref<NSString> zeros = NSString::fromUtf16(std::u16string(u"a=\0&b\0=2", 8));
    EXPECT_EQ(getParamsFromUrlContent(url(""), zeros)->count(), 2U);
    const Ref<NSString> broken = NSString::fromUtf16(std::u16string{char16_t(0xD83D), u'=', char16_t(0xDE00)});
    EXPECT_EQ(getParamsFromUrlContent(url(""), broken)->count(), 1U);
}

TEST(ReadingParameters, doesNotSplitAtASeparatorWithACombiningMark) {
    EXPECT_EQ(paramsOf(u"a=1&\u0301b=2"_ns), "");
    EXPECT_EQ(paramsOf(u"a=\u0338b=2"_ns),
              "a=\xCC\xB8"
              "b=2");
    EXPECT_EQ(paramsOf(u"a&=1&b=\u20DD"_ns), "=1");
}

TEST(ReadingParameters, goesByTheUrlsQueryAndFragment) {
    const Ref<NSURL> both = url("http://h/?a=%20&b[]=1#c=%41&d");
    EXPECT_EQ(listing(queryParams(both)), "a=%20 b[]=1");
    EXPECT_EQ(listing(fragmentParams(both)), "c=%41");
    EXPECT_FALSE(queryParams(url("http://h/")));
    EXPECT_FALSE(fragmentParams(url("http://h/")));
    EXPECT_FALSE(queryParams(url("http://h/?#")));
    EXPECT_FALSE(fragmentParams(url("http://h/?#")));
    EXPECT_EQ(queryParams(url("?a"))->count(), 0U);
    EXPECT_FALSE(queryParams(nullptr));
    EXPECT_FALSE(fragmentParams(nullptr));
}

TEST(ReadingParameters, goesByTheResolvedUrl) {
    const Ref<NSURL> base = url("http://h/a?q=1#f=2");
    EXPECT_EQ(listing(queryParams(NSURL::URLWithString_relativeToURL("#x=3"_ns, base))), "q=1");
    EXPECT_EQ(listing(fragmentParams(NSURL::URLWithString_relativeToURL("#x=3"_ns, base))), "x=3");
    EXPECT_FALSE(queryParams(NSURL::URLWithString_relativeToURL("x"_ns, base)));
    EXPECT_FALSE(queryParams(url("mailto:a@b?s=1#f=1")));
    EXPECT_EQ(listing(fragmentParams(url("mailto:a@b?s=1#f=1"))), "f=1");
}

TEST(HeaderFields, areAddedToThoseOfTheRequest) {
    const Ref<NSMutableURLRequest> request = NSMutableURLRequest::requestWithURL(url("http://h"));
    appendHeaderFields(request, dictionary({{"X-A"_ns, "1"_ns}, {"B"_ns, "2"_ns}}));
    EXPECT_EQ(listing(request->allHTTPHeaderFields()), "X-A=1 B=2");
    appendHeaderFields(request, dictionary({{"B"_ns, "3"_ns}, {"c"_ns, "4"_ns}}));
    EXPECT_EQ(listing(request->allHTTPHeaderFields()), "X-A=1 B=3 c=4");
    appendHeaderFields(request, dictionary({{"x-a"_ns, "5"_ns}}));
    EXPECT_EQ(listing(request->allHTTPHeaderFields()), "B=3 c=4 x-a=5");
    appendHeaderFields(request, dictionary({{"D"_ns, box(6)}, {NSNull::null(), "7"_ns}}));
    EXPECT_EQ(listing(request->allHTTPHeaderFields()), "B=3 c=4 x-a=5");
}

TEST(HeaderFields, stayWhenThereIsNothingToAdd) {
    const Ref<NSMutableURLRequest> request = NSMutableURLRequest::requestWithURL(nullptr);
    appendHeaderFields(request, nullptr);
    appendHeaderFields(request, NSDictionary::dictionary());
    send(request, "appendHeaderFields:"_sel, NSNull::null());
    EXPECT_FALSE(request->allHTTPHeaderFields());
    appendHeaderFields(nullptr, dictionary({{"a"_ns, "1"_ns}}));
}

TEST(URLQueryMessages, areAnsweredUnderTheirNames) {
    const Ref<NSDictionary> entries = dictionary({{"a"_ns, "1"_ns}});
    const Ref<NSURL> from = url("http://h/?b=2#c=3");
    EXPECT_EQ(shown(send<id>(entries, "URLQueryString"_sel)), "a=1");
    EXPECT_EQ(shown(send<id>(from, "appendQueryItemsFromDictionary:"_sel, entries)), "http://h/?b=2&a=1#c=3");
    EXPECT_EQ(shown(send<id>(from, "resetFragmentWithDictionary:"_sel, entries)), "http://h/?b=2#a=1");
    EXPECT_EQ(withoutNumber(send<Ref<NSURL>>(from, "resetRandomQueryItem"_sel)), "http://h/?b=2&random=N#c=3");
    EXPECT_EQ(withoutNumber(send<Ref<NSURL>>(from, "resetRandomURLAndFragmentWithDictionary:"_sel, entries)),
              "http://h/?b=2&random=N#a=1");
    EXPECT_EQ(listing(send<Ref<NSDictionary>>(from, "getParamsFromUrlContent:"_sel, "x=y"_ns)), "x=y");
    EXPECT_EQ(listing(send<Ref<NSDictionary>>(from, "queryParams"_sel)), "b=2");
    EXPECT_EQ(listing(send<Ref<NSDictionary>>(from, "fragmentParams"_sel)), "c=3");
    const Ref<NSMutableURLRequest> request = NSMutableURLRequest::requestWithURL(from);
    send(request, "appendHeaderFields:"_sel, entries);
    EXPECT_EQ(listing(request->allHTTPHeaderFields()), "a=1");
}

} // namespace

} // namespace zr
