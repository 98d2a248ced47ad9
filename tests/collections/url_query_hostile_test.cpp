#include <zrbasic/collections/url_query.h>

#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/unicode_p.h>
#include <zrbasic/platform/foundation/url.h>
#include <zrbasic/platform/foundation/url_components.h>
#include <zrbasic/platform/foundation/url_query_item.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace zr {

namespace {

/// Changes the dictionary that it stands in while it is described.
class Meddler : public NSObject {
    ZR_OBJECT(Meddler, NSObject)

  public:
    Ref<NSString> description() const override {
        if (home) {
            home->removeAllObjects();
            home->setObject_forKey("late"_ns, "late"_ns);
        }
        return text;
    }

    NSMutableDictionary* home = nullptr;
    Ref<NSString> text;
};

TEST(HostileQueries, surviveDescriptionsThatChangeTheDictionary) {
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::dictionary();
    const Ref<Meddler> meddler = make<Meddler>();
    meddler->home = entries;
    meddler->text = "x"_ns;
    for (int i = 0; i < 20; ++i) {
        entries->setObject_forKey(i == 10 ? id(meddler) : id(box(i)), NSString::stringWithFormat("k%02d"_ns, i));
    }
    const std::string query = URLQueryString(entries)->utf8();
    EXPECT_NE(query.find("k00=0&"), std::string::npos);
    EXPECT_NE(query.find("k10=x"), std::string::npos);
    EXPECT_EQ(entries->count(), 1U);
}

TEST(HostileQueries, writeAMissingDescriptionAsNull) {
    const Ref<NSDictionary> entries = dictionary({{"a"_ns, make<Meddler>()}});
    EXPECT_EQ(URLQueryString(entries)->utf8(), "a=(null)");
    const Ref<NSURL> made = appendQueryItemsFromDictionary(NSURL::URLWithString("?"_ns), entries);
    EXPECT_EQ(made->absoluteString()->utf8(), "?a=(null)");
}

TEST(HostileQueries, doNotChangeWithAMutableDescription) {
    const Ref<Meddler> meddler = make<Meddler>();
    const Ref<NSMutableString> text = NSMutableString::stringWithString("b"_ns);
    meddler->text = text;
    const Ref<NSString> query = URLQueryString(dictionary({{"a"_ns, meddler}}));
    text->appendString("c"_ns);
    EXPECT_EQ(query->utf8(), "a=b");
}

TEST(HostileQueries, mayBeLong) {
    std::string text = "http://h/?random=1&first=%41";
    int pieces = 2;
    for (; text.size() < 1'000'000; ++pieces) {
        text += "&name" + std::to_string(pieces) + "=%20value=";
    }
    const Ref<NSURL> from = NSURL::URLWithString(NSString::fromUtf8(text));
    EXPECT_EQ(queryParams(from)->count(), 2U);
    const Ref<NSURL> appended = appendQueryItemsFromDictionary(from, dictionary({{"last"_ns, "x"_ns}}));
    EXPECT_EQ(appended->absoluteString()->utf8().substr(0, 49), "http://h/?random=1&first=A&name2=%20value%3D&name");
    EXPECT_TRUE(appended->query()->hasSuffix("%3D&last=x"_ns));
    const Ref<NSURL> fresh = resetRandomQueryItem(appended);
    EXPECT_TRUE(fresh->query()->hasPrefix("first=A&name2="_ns));
    EXPECT_TRUE(queryParams(fresh)->objectForKey("random"_ns));
    EXPECT_EQ(queryParams(fresh)->count(), static_cast<NSUInteger>(pieces) + 1);
}

TEST(HostileQueries, mayBeOfManyEqualRandomItems) {
    std::u16string text = u"http://h/?a";
    for (int i = 0; i < 50'000; ++i) {
        text += u"&random=1&random";
    }
    const Ref<NSURL> fresh = resetRandomQueryItem(NSURL::URLWithString(NSString::fromUtf16(text)));
    const auto components = NSURLComponents::componentsWithURL_resolvingAgainstBaseURL(fresh, true);
    const Ref<NSArray> items = components->queryItems();
    EXPECT_EQ(items->count(), 50'002U);
    EXPECT_EQ(cast<NSURLQueryItem>(id(items->objectAtIndex(1)))->value(), nullptr);
    EXPECT_TRUE(cast<NSURLQueryItem>(id(items->lastObject()))->value());
}

TEST(HostileQueries, areNotMixedUpByTheNamesReadBefore) {
    // Names that were read may be kept and shared; however many there are, dictionaries must not be mixed up.
    for (int i = 0; i < 1000; ++i) {
        const Ref<NSString> name = NSString::stringWithFormat("name%d"_ns, i);
        const Ref<NSString> content = NSString::stringWithFormat("%@=%d&same=%d"_ns, name, i, -i);
        const Ref<NSDictionary> params = getParamsFromUrlContent(NSURL::URLWithString(""_ns), content);
        ASSERT_EQ(params->count(), 2U);
        EXPECT_EQ(cast<NSString>(params->peek(name))->integerValue(), i);
        EXPECT_EQ(cast<NSString>(params->peek("same"_ns))->integerValue(), -i);
    }
}

TEST(HostileQueries, mayHaveManyParameters) {
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::dictionary();
    for (int i = 0; i < 50'000; ++i) {
        entries->setObject_forKey(box(i), NSString::stringWithFormat("k%05d"_ns, (i * 7919) % 50'000));
    }
    const Ref<NSURL> from = NSURL::URLWithString("http://h/"_ns);
    const Ref<NSURL> made = resetFragmentWithDictionary(from, entries);
    EXPECT_EQ(fragmentParams(made)->count(), 50'000U);
    EXPECT_TRUE(made->fragment()->hasPrefix("k00000=0&k00001="_ns));
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

Ref<NSString> withoutSeparators(const Ref<NSString>& text) {
    const Ref<NSString> plain = text->stringByReplacingOccurrencesOfString_withString_options_range(
        "&"_ns, "x"_ns, NSLiteralSearch, NSMakeRange(0, text->length()));
    return plain->stringByReplacingOccurrencesOfString_withString_options_range("="_ns, "y"_ns, NSLiteralSearch,
                                                                                NSMakeRange(0, plain->length()));
}

using Texts = std::vector<std::pair<std::vector<std::uint32_t>, std::vector<std::uint32_t>>>;

RC_GTEST_PROP(QueryRoundTrip, aDictionaryComesBackFromTheFragment, (const Texts& texts)) {
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::dictionary();
    entries->setObject_forKey("v"_ns, "n"_ns);
    for (const auto& [name, value] : texts) {
        // With separators in them, texts read back as other parameters.
        entries->setObject_forKey(withoutSeparators(textOf(value)), withoutSeparators(textOf(name)));
    }
    const Ref<NSURL> made = resetFragmentWithDictionary(NSURL::URLWithString("http://h/p?q#old"_ns), entries);
    const Ref<NSMutableDictionary> back = NSMutableDictionary::dictionary();
    for (const id& name : fragmentParams(made)) {
        const Ref<NSString> value(cast<NSString>(fragmentParams(made)->objectForKey(name)));
        back->setObject_forKey(value->stringByRemovingPercentEncoding(),
                               Ref<NSString>(cast<NSString>(name.get()))->stringByRemovingPercentEncoding());
    }
    RC_ASSERT(back->isEqual(entries));
    RC_ASSERT(made->query()->isEqual("q"_ns));
}

RC_GTEST_PROP(QueryRoundTrip, appendingIsWhatTheComponentsItemsGive, (const Texts& old, const Texts& added)) {
    const auto components = NSURLComponents::componentsWithString("http://h/p#f"_ns);
    const Ref<NSMutableArray> items = NSMutableArray::array();
    for (const auto& [name, value] : old) {
        items->addObject(
            NSURLQueryItem::queryItemWithName_value(textOf(name), value.empty() ? nullptr : textOf(value)));
    }
    components->setQueryItems(items);
    const Ref<NSURL> from = components->URL();
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::dictionary();
    entries->setObject_forKey("v"_ns, "n"_ns);
    for (const auto& [name, value] : added) {
        entries->setObject_forKey(textOf(value), textOf(name));
    }
    const Ref<NSMutableArray> all = NSMutableArray::arrayWithArray(components->queryItems());
    for (const id& name : entries) {
        all->addObject(
            NSURLQueryItem::queryItemWithName_value(cast<NSString>(name.get()), cast<NSString>(entries->peek(name))));
    }
    components->setQueryItems(all);
    RC_ASSERT(appendQueryItemsFromDictionary(from, entries)->isEqual(components->URL()));
}

RC_GTEST_PROP(QueryRoundTrip, theQueryTextIsTheComponentsDecodedQuery, (const Texts& texts)) {
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::dictionary();
    for (const auto& [name, value] : texts) {
        entries->setObject_forKey(textOf(value), textOf(name));
    }
    const Ref<NSMutableArray> items = NSMutableArray::array();
    for (const id& name : entries->allKeys()->sortedArrayUsingSelector("compare:"_sel)) {
        items->addObject(
            NSURLQueryItem::queryItemWithName_value(cast<NSString>(name.get()), cast<NSString>(entries->peek(name))));
    }
    const Ref<NSURLComponents> components = NSURLComponents::components();
    components->setQueryItems(items);
    RC_ASSERT(URLQueryString(entries)->isEqual(components->query()));
}

} // namespace

} // namespace zr
