#include <zrbasic/platform/foundation/user_defaults.h>

#include "checks.h"
#include "temporary_defaults.h"

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/data.h>
#include <zrbasic/platform/foundation/date.h>
#include <zrbasic/platform/foundation/decimal_number.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>

#include <cmath>
#include <limits>

namespace zr {

namespace {

class UserDefaults : public test::TemporaryDefaults {
  protected:
    [[nodiscard]] std::string found(NSString* key) const {
        const id value = defaults->objectForKey(key);
        return value ? value->description()->utf8() : "nothing";
    }
};

Ref<NSArray> nested(int depth) {
    Ref<NSArray> list = NSArray::array();
    for (int i = 0; i < depth; ++i) {
        list = NSArray::arrayWithObject(list);
    }
    return list;
}

TEST_F(UserDefaults, whatIsNotThereReadsAsZero) {
    const Ref<NSString> keys[] = {"nothing"_ns, ""_ns, nullptr};
    for (const Ref<NSString>& key : keys) {
        EXPECT_FALSE(defaults->objectForKey(key));
        EXPECT_FALSE(defaults->stringForKey(key));
        EXPECT_FALSE(defaults->arrayForKey(key));
        EXPECT_FALSE(defaults->stringArrayForKey(key));
        EXPECT_FALSE(defaults->dictionaryForKey(key));
        EXPECT_FALSE(defaults->dataForKey(key));
        EXPECT_EQ(defaults->integerForKey(key), 0);
        EXPECT_EQ(defaults->floatForKey(key), 0);
        EXPECT_EQ(defaults->doubleForKey(key), 0);
        EXPECT_FALSE(defaults->boolForKey(key));
    }
}

TEST_F(UserDefaults, areSearchedFromArgumentsToRegisteredOnes) {
    const auto key = "zoom"_ns;
    EXPECT_EQ(found(key), "nothing");
    defaults->registerDefaults(dictionary({{key, "registered"_ns}}));
    EXPECT_EQ(found(key), "registered");
    defaults->setPersistentDomain_forName(dictionary({{key, "global"_ns}}), NSGlobalDomain());
    EXPECT_EQ(found(key), "global");
    defaults->setObject_forKey("own"_ns, key);
    EXPECT_EQ(found(key), "own");
    defaults->setVolatileDomain_forName(dictionary({{key, "argument"_ns}}), NSArgumentDomain());
    EXPECT_EQ(found(key), "argument");

    defaults->setObject_forKey("own again"_ns, key);
    EXPECT_EQ(found(key), "argument") << "setting concerns the own domain";
    defaults->removeVolatileDomainForName(NSArgumentDomain());
    EXPECT_EQ(found(key), "own again");
    defaults->removeObjectForKey(key);
    EXPECT_EQ(found(key), "global");
    defaults->removeObjectForKey(key);
    EXPECT_EQ(found(key), "global") << "removing concerns the own domain";
    defaults->removePersistentDomainForName(NSGlobalDomain());
    EXPECT_EQ(found(key), "registered");
}

TEST_F(UserDefaults, registeringAddsAndReplaces) {
    defaults->registerDefaults(dictionary({{"a"_ns, box(1)}, {"b"_ns, box(2)}}));
    make<NSUserDefaults>()->registerDefaults(dictionary({{"b"_ns, box(3)}, {"c"_ns, box(4)}}));
    defaults->registerDefaults(nullptr);
    EXPECT_EQ(defaults->integerForKey("a"_ns), 1);
    EXPECT_EQ(defaults->integerForKey("b"_ns), 3);
    EXPECT_EQ(defaults->integerForKey("c"_ns), 4) << "all objects share them";
    EXPECT_TRUE(defaults->synchronize());
    EXPECT_EQ(files(), "") << "they are not written";
    EXPECT_EQ(test::raisedName([&] {
                  defaults->registerDefaults(dictionary({{"a"_ns, NSNull::null()}}));
              }),
              NSInvalidArgumentException);
    EXPECT_EQ(defaults->integerForKey("a"_ns), 1);
}

TEST_F(UserDefaults, stringsAndNumbersReadAsEachOther) {
    const struct {
        const char* name;
        id value;
        const char* string;
        NSInteger integer;
        double number;
        bool boolean;
    } rows[] = {
        {"number in a string", "12.75 EUR"_ns, "12.75 EUR", 12, 12.75, true},
        {"no number", "none"_ns, "none", 0, 0, false},
        {"yes", "YES"_ns, "YES", 0, 0, true},
        {"empty string", ""_ns, "", 0, 0, false},
        {"integer", box(-7), "-7", -7, -7, true},
        {"boolean", box(true), "1", 1, 1, true},
        {"fraction", box(0.5), "0.5", 0, 0.5, true},
        {"zero", box(0.0), "0", 0, 0, false},
        {"decimal", NSDecimalNumber::decimalNumberWithString("2241.780"_ns), "2241.78", 2241, 2241.78, true},
        {"huge text", "99999999999999999999"_ns, "99999999999999999999", std::numeric_limits<NSInteger>::max(), 1e20,
         true},
        {"date", NSDate::dateWithTimeIntervalSince1970(1), nullptr, 0, 0, false},
        {"data", NSData::fromBytes("1"), nullptr, 0, 0, false},
        {"array", array({"1"_ns}), nullptr, 0, 0, false},
        {"dictionary", dictionary({{"1"_ns, "1"_ns}}), nullptr, 0, 0, false},
    };
    const auto key = "value"_ns;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        defaults->setObject_forKey(row.value, key);
        const Ref<NSString> string = defaults->stringForKey(key);
        ASSERT_EQ(static_cast<bool>(string), row.string != nullptr);
        EXPECT_EQ(string ? string->utf8() : "", row.string ? row.string : "");
        EXPECT_EQ(defaults->integerForKey(key), row.integer);
        EXPECT_EQ(defaults->doubleForKey(key), row.number);
        EXPECT_EQ(defaults->floatForKey(key), static_cast<float>(row.number));
        EXPECT_EQ(defaults->boolForKey(key), row.boolean);
    }
}

TEST_F(UserDefaults, collectionsAndDataAreGivenAsWhatTheyAre) {
    defaults->setObject_forKey(array({"a"_ns, "b"_ns}), "strings"_ns);
    defaults->setObject_forKey(array({"a"_ns, box(1)}), "mixed"_ns);
    defaults->setObject_forKey(NSArray::array(), "empty"_ns);
    defaults->setObject_forKey(dictionary({{"a"_ns, box(1)}}), "dictionary"_ns);
    defaults->setObject_forKey(NSData::fromBytes("bytes"), "data"_ns);
    EXPECT_EQ(defaults->stringArrayForKey("strings"_ns)->count(), 2U);
    EXPECT_FALSE(defaults->stringArrayForKey("mixed"_ns));
    EXPECT_EQ(defaults->arrayForKey("mixed"_ns)->count(), 2U);
    EXPECT_TRUE(defaults->stringArrayForKey("empty"_ns));
    EXPECT_FALSE(defaults->arrayForKey("dictionary"_ns));
    EXPECT_EQ(defaults->dictionaryForKey("dictionary"_ns)->count(), 1U);
    EXPECT_FALSE(defaults->dictionaryForKey("mixed"_ns));
    EXPECT_EQ(defaults->dataForKey("data"_ns)->view(), "bytes");
    EXPECT_FALSE(defaults->dataForKey("strings"_ns));
}

TEST_F(UserDefaults, scalarsKeepTheirTypes) {
    defaults->setInteger_forKey(std::numeric_limits<NSInteger>::min(), "integer"_ns);
    defaults->setFloat_forKey(0.1F, "float"_ns);
    defaults->setDouble_forKey(100, "double"_ns);
    defaults->setBool_forKey(true, "bool"_ns);
    for (int i = 0; i < 2; ++i) {
        SCOPED_TRACE(i == 0 ? "at once" : "read again");
        EXPECT_EQ(defaults->integerForKey("integer"_ns), std::numeric_limits<NSInteger>::min());
        EXPECT_EQ(defaults->floatForKey("float"_ns), 0.1F);
        EXPECT_EQ(found("float"_ns), "0.1");
        EXPECT_EQ(defaults->doubleForKey("double"_ns), 100);
        EXPECT_TRUE(cast<NSNumber>(defaults->objectForKey("double"_ns))->isFractional());
        EXPECT_TRUE(cast<NSNumber>(defaults->objectForKey("bool"_ns))->isBoolean());
        restart();
    }
}

TEST_F(UserDefaults, nullRemoves) {
    defaults->setObject_forKey("value"_ns, "key"_ns);
    EXPECT_TRUE(defaults->synchronize());
    defaults->setObject_forKey(nullptr, "key"_ns);
    EXPECT_EQ(found("key"_ns), "nothing");
    restart();
    EXPECT_EQ(found("key"_ns), "nothing");
    defaults->setObject_forKey(nullptr, "never there"_ns);
    defaults->removeObjectForKey("never there"_ns);
    EXPECT_TRUE(defaults->synchronize());
}

TEST_F(UserDefaults, whatCannotBeStoredRaisesAndChangesNothing) {
    const auto cycle = NSMutableArray::array();
    cycle->addObject(cycle);
    const struct {
        const char* name;
        id value;
    } rows[] = {
        {"null object", NSNull::null()},
        {"plain object", make<NSObject>()},
        {"class", NSString::classObject()},
        {"null object in an array", array({box(1), NSNull::null()})},
        {"deep in a dictionary", dictionary({{"a"_ns, array({dictionary({{"b"_ns, make<NSObject>()}})})}})},
        {"key that is no string", dictionary({{box(1), "one"_ns}})},
        {"array that holds itself", cycle},
        {"too deep", nested(129)},
        {"deep as a well", nested(5000)},
    };
    defaults->setObject_forKey("before"_ns, "key"_ns);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(test::raisedName([&] { defaults->setObject_forKey(row.value, "key"_ns); }),
                  NSInvalidArgumentException);
        EXPECT_EQ(test::raisedName([&] {
                      defaults->setPersistentDomain_forName(dictionary({{"key"_ns, row.value}}), "other"_ns);
                  }),
                  NSInvalidArgumentException);
        EXPECT_EQ(found("key"_ns), "before");
    }
    EXPECT_EQ(test::raised([&] { defaults->setObject_forKey(NSNull::null(), "key"_ns); }),
              "NSInvalidArgumentException: *** -[NSUserDefaults setObject:forKey:]: the value, of class NSNull, cannot "
              "be stored");
    cycle->removeAllObjects();
}

TEST_F(UserDefaults, collectionsMayBe128Deep) {
    defaults->setObject_forKey(nested(128), "arrays"_ns);
    Ref<NSDictionary> entries = NSDictionary::dictionary();
    for (int i = 0; i < 128; ++i) {
        // Half a surrogate pair in the key makes the longer form necessary.
        entries = dictionary({{NSString::fromUtf16(u"\xD800"), entries}});
    }
    defaults->setObject_forKey(entries, "dictionaries"_ns);
    restart();
    EXPECT_TRUE(nested(128)->isEqual(defaults->objectForKey("arrays"_ns)));
    EXPECT_TRUE(entries->isEqual(defaults->objectForKey("dictionaries"_ns)));
    EXPECT_EQ(files(), "com.example.desk.json");
}

TEST_F(UserDefaults, theNullKeyRaises) {
    const auto raises = [&](auto&& action) {
        return test::raisedName([&] { action(); }) == NSInvalidArgumentException;
    };
    EXPECT_TRUE(raises([&] { defaults->setObject_forKey("value"_ns, nullptr); }));
    EXPECT_TRUE(raises([&] { defaults->setObject_forKey(nullptr, nullptr); }));
    EXPECT_TRUE(raises([&] { defaults->setInteger_forKey(1, nullptr); }));
    EXPECT_TRUE(raises([&] { defaults->setBool_forKey(true, nullptr); }));
    EXPECT_TRUE(raises([&] { defaults->removeObjectForKey(nullptr); }));
    EXPECT_TRUE(raises([&] { defaults->setPersistentDomain_forName(nullptr, nullptr); }));
    EXPECT_TRUE(raises([&] { defaults->removePersistentDomainForName(nullptr); }));
    EXPECT_TRUE(raises([&] { defaults->setVolatileDomain_forName(nullptr, nullptr); }));
    EXPECT_TRUE(raises([&] { defaults->removeVolatileDomainForName(nullptr); }));
    EXPECT_FALSE(defaults->persistentDomainForName(nullptr));
    EXPECT_FALSE(defaults->volatileDomainForName(nullptr));
}

TEST_F(UserDefaults, valuesAreCopiedWhenTheyComeIn) {
    const auto text = NSMutableString::stringWithString("before"_ns);
    const auto inner = NSMutableArray::arrayWithObject(text);
    const auto outer = NSMutableDictionary::dictionaryWithObject_forKey(inner, "inner"_ns);
    const auto key = NSMutableString::stringWithString("key"_ns);
    defaults->setObject_forKey(outer, key);
    text->setString("after"_ns);
    inner->addObject(box(1));
    outer->removeAllObjects();
    key->setString("other"_ns);
    const auto expected = dictionary({{"inner"_ns, array({"before"_ns})}});
    const Ref<NSDictionary> stored = defaults->dictionaryForKey("key"_ns);
    EXPECT_TRUE(expected->isEqual(stored));
    EXPECT_FALSE(cast<NSMutableDictionary>(stored));
    EXPECT_FALSE(cast<NSMutableArray>(stored->peek("inner"_ns)));
    EXPECT_FALSE(cast<NSMutableString>(cast<NSArray>(stored->peek("inner"_ns))->firstObject()));
    EXPECT_EQ(defaults->objectForKey("key"_ns), defaults->objectForKey("key"_ns)) << "reading copies nothing";
}

TEST_F(UserDefaults, keysMayBeAnyText) {
    const Ref<NSString> keys[] = {
        ""_ns,
        "a/../b"_ns,
        "dictionary"_ns,
        "version"_ns,
        "\"\\\n"_ns,
        NSString::fromUtf16(std::u16string(u"nul\0nul", 7)),
        NSString::fromUtf16(std::u16string(u"nul\0", 4)),
        u"\u4EF7 \U0001F600"_ns,
        NSString::fromUtf16(u"half \xD83D"),
        NSString::fromUtf16(u"half \xD83E"),
        NSString::fromUtf16(std::u16string(1000000, u'k')),
        u"\u00E9"_ns,
        u"e\u0301"_ns,
    };
    for (const Ref<NSString>& key : keys) {
        defaults->setObject_forKey(key, key);
    }
    for (int i = 0; i < 2; ++i) {
        for (const Ref<NSString>& key : keys) {
            EXPECT_TRUE(key->isEqual(defaults->objectForKey(key))) << key->utf8().substr(0, 20);
        }
        EXPECT_EQ(defaults->persistentDomainForName("com.example.desk"_ns)->count(), std::size(keys));
        restart();
    }
}

TEST_F(UserDefaults, suitesAreDomainsOfTheirOwn) {
    const auto suite = make<NSUserDefaults>(&NSUserDefaults::initWithSuiteName, "com.example.shared"_ns);
    const auto sameSuite = make<NSUserDefaults>(&NSUserDefaults::initWithSuiteName, "com.example.shared"_ns);
    suite->setObject_forKey("shared"_ns, "key"_ns);
    EXPECT_EQ(found("key"_ns), "nothing");
    EXPECT_EQ(sameSuite->stringForKey("key"_ns)->utf8(), "shared");
    defaults->setObject_forKey("own"_ns, "only here"_ns);
    EXPECT_FALSE(suite->objectForKey("only here"_ns));
    defaults->registerDefaults(dictionary({{"registered"_ns, box(1)}}));
    EXPECT_EQ(suite->integerForKey("registered"_ns), 1);
    defaults->setPersistentDomain_forName(dictionary({{"everywhere"_ns, box(2)}}), NSGlobalDomain());
    EXPECT_EQ(suite->integerForKey("everywhere"_ns), 2);
    restart();
    EXPECT_EQ(files(), "NSGlobalDomain.json com.example.desk.json com.example.shared.json");
    EXPECT_EQ(suite->stringForKey("key"_ns)->utf8(), "shared");
}

TEST_F(UserDefaults, aSuiteNeedsAName) {
    const auto withName = [](NSString* name) { return make<NSUserDefaults>(&NSUserDefaults::initWithSuiteName, name); };
    EXPECT_FALSE(withName(""_ns));
    EXPECT_FALSE(withName(NSGlobalDomain()));
    withName(nullptr)->setObject_forKey(box(1), "key"_ns);
    make<NSUserDefaults>()->setObject_forKey(box(2), "other"_ns);
    withName("com.example.desk"_ns)->setObject_forKey(box(3), "third"_ns);
    EXPECT_EQ(defaults->integerForKey("key"_ns), 1) << "null is the application's own";
    EXPECT_EQ(defaults->integerForKey("other"_ns), 2);
    EXPECT_EQ(defaults->integerForKey("third"_ns), 3);
    const auto mutableName = NSMutableString::stringWithString("com.example.a"_ns);
    const auto suite = withName(mutableName);
    mutableName->setString("com.example.b"_ns);
    suite->setObject_forKey(box(4), "key"_ns);
    EXPECT_EQ(defaults->persistentDomainForName("com.example.a"_ns)->count(), 1U);
}

TEST_F(UserDefaults, wholeDomainsAreReplaced) {
    defaults->setObject_forKey(box(1), "a"_ns);
    EXPECT_TRUE(defaults->synchronize());
    defaults->setObject_forKey(box(2), "b"_ns);
    defaults->setPersistentDomain_forName(dictionary({{"c"_ns, box(3)}}), "com.example.desk"_ns);
    EXPECT_TRUE(dictionary({{"c"_ns, box(3)}})->isEqual(defaults->persistentDomainForName("com.example.desk"_ns)));
    restart();
    EXPECT_TRUE(dictionary({{"c"_ns, box(3)}})->isEqual(defaults->persistentDomainForName("com.example.desk"_ns)));
    defaults->removePersistentDomainForName("com.example.desk"_ns);
    restart();
    EXPECT_EQ(defaults->persistentDomainForName("com.example.desk"_ns)->count(), 0U);
    EXPECT_EQ(defaults->persistentDomainForName("com.example.nobody"_ns)->count(), 0U);
}

TEST_F(UserDefaults, volatileDomainsLiveInTheProcess) {
    const auto name = "com.example.volatile"_ns;
    EXPECT_FALSE(defaults->volatileDomainForName(name));
    defaults->setVolatileDomain_forName(dictionary({{"a"_ns, box(1)}}), name);
    EXPECT_TRUE(dictionary({{"a"_ns, box(1)}})->isEqual(make<NSUserDefaults>()->volatileDomainForName(name)));
    EXPECT_EQ(found("a"_ns), "nothing") << "only the two are searched";
    EXPECT_EQ(test::raisedName([&] { defaults->setVolatileDomain_forName(nullptr, name); }), NSInvalidArgumentException)
        << "it exists already";
    EXPECT_EQ(defaults->volatileDomainForName(name)->count(), 1U);
    defaults->removeVolatileDomainForName(name);
    defaults->removeVolatileDomainForName(name);
    EXPECT_FALSE(defaults->volatileDomainForName(name));
    defaults->setVolatileDomain_forName(nullptr, name);
    EXPECT_EQ(defaults->volatileDomainForName(name)->count(), 0U);
    defaults->removeVolatileDomainForName(name);
    EXPECT_TRUE(defaults->synchronize());
    EXPECT_EQ(files(), "");
}

TEST_F(UserDefaults, theRepresentationShowsWhatReadingFinds) {
    EXPECT_EQ(defaults->dictionaryRepresentation()->count(), 0U);
    const auto all = [](const char* value, std::initializer_list<DictionaryEntry> more) {
        const auto values = NSMutableDictionary::fromEntries(more);
        values->setObject_forKey(NSString::fromUtf8(value), "all"_ns);
        return values;
    };
    defaults->registerDefaults(all("registered", {{"r"_ns, box(1)}}));
    defaults->setPersistentDomain_forName(all("global", {{"g"_ns, box(2)}}), NSGlobalDomain());
    defaults->setPersistentDomain_forName(all("own", {{"o"_ns, box(3)}}), "com.example.desk"_ns);
    defaults->setVolatileDomain_forName(all("argument", {{"a"_ns, box(4)}}), NSArgumentDomain());
    const Ref<NSDictionary> shown = defaults->dictionaryRepresentation();
    EXPECT_EQ(shown->count(), 5U);
    for (const id& key : shown) {
        EXPECT_TRUE(shown->peek(key)->isEqual(defaults->objectForKey(cast<NSString>(key))))
            << key->description()->utf8();
    }
    EXPECT_FALSE(cast<NSMutableDictionary>(shown));
}

TEST_F(UserDefaults, answerMessages) {
    const id sent = send<id>(NSUserDefaults::classObject(), "standardUserDefaults"_sel);
    EXPECT_EQ(sent, defaults);
    send<>(sent, "setObject:forKey:"_sel, "text"_ns, "key"_ns);
    EXPECT_EQ(send<Ref<NSString>>(sent, "stringForKey:"_sel, "key"_ns)->utf8(), "text");
    send<>(sent, "setInteger:forKey:"_sel, 7, "key"_ns);
    EXPECT_EQ(send<NSInteger>(sent, "integerForKey:"_sel, "key"_ns), 7);
    EXPECT_TRUE(send<bool>(sent, "synchronize"_sel));
    EXPECT_EQ(files(), "com.example.desk.json");
    // A key of another kind arrives as null.
    EXPECT_FALSE(send<id>(sent, "objectForKey:"_sel, box(1)));
}

} // namespace

} // namespace zr
