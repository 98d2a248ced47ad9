#include <zrbasic/collections/dictionary_writing.h>

#include "../foundation/checks.h"
#include "../foundation/listing.h"

#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>

#include <gtest/gtest.h>

namespace zr {

namespace {

using test::listing;
using test::raisedName;

/// A mutable dictionary with the entry a=1.
Ref<NSMutableDictionary> one() {
    return NSMutableDictionary::fromEntries({{"a"_ns, box(1)}});
}

const id null(NSNull::null());

TEST(DictionaryWrites, onlyStorableObjectsAreStored) {
    const Ref<NSMutableDictionary> entries = one();
    zr_setObject_forKey(entries, box(2), "a"_ns);
    zr_setObject_forKey(entries, "x"_ns, "b"_ns);
    EXPECT_EQ(listing(entries), "a=2 b=x");
    zr_setObject_forKey(entries, nullptr, "a"_ns);
    zr_setObject_forKey(entries, NSNull::null(), "a"_ns);
    zr_setObject_forKey(entries, NSNull::null(), "c"_ns);
    zr_setObject_forKey(entries, box(3), nullptr);
    EXPECT_EQ(listing(entries), "a=2 b=x");
}

TEST(DictionaryWrites, theDefaultStepsInWhenItIsStorable) {
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::dictionary();
    zr_setObject_forKey_withDefaultObject(entries, null, "k"_ns, "x"_ns);
    EXPECT_EQ(listing(entries), "k=x");
    zr_setObject_forKey_withDefaultObject(entries, null, "k"_ns, null);
    zr_setObject_forKey_withDefaultObject(entries, nullptr, "k"_ns, nullptr);
    zr_setObject_forKey_withDefaultObject(entries, null, "l"_ns, null);
    zr_setObject_forKey_withDefaultObject(entries, box(1), nullptr, box(2));
    EXPECT_EQ(listing(entries), "k=x");
    zr_setObject_forKey_withDefaultObject(entries, nullptr, "k"_ns, "y"_ns);
    zr_setObject_forKey_withDefaultObject(entries, box(1), "l"_ns, "z"_ns);
    EXPECT_EQ(listing(entries), "k=y l=1");
}

TEST(DictionaryWrites, validTextIsTheOnlyValidObject) {
    const struct {
        const char* name;
        id value;
        bool isStored;
    } rows[] = {
        {"text", "x"_ns, true},
        {"text between blanks", "  x "_ns, true},
        {"two blanks", "  "_ns, false},
        {"tab", "\t"_ns, false},
        {"zero width space", u"\u200B"_ns, false},
        {"empty", ""_ns, false},
        {"a lone line break is not trimmed", "\n"_ns, true},
        {"number", box(5), false},
        {"array", array({"x"_ns}), false},
        {"dictionary", one(), false},
        {"null object", null, false},
        {"null", nullptr, false},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Ref<NSMutableDictionary> entries = one();
        zr_setValidObject_forKey(entries, row.value, "a"_ns);
        EXPECT_EQ(entries->objectForKey("a"_ns).get() == row.value.get(), row.isStored);
        EXPECT_EQ(entries->count(), 1U);
        zr_setValidObject_forKey(entries, row.value, nullptr);
        EXPECT_EQ(entries->count(), 1U);
    }
}

TEST(DictionaryWrites, plainValuesBecomeNumbers) {
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::dictionary();
    zr_setBool_forKey(entries, true, "b"_ns);
    zr_setInteger_forKey(entries, -3, "i"_ns);
    zr_setDouble_forKey(entries, 1.5, "d"_ns);
    EXPECT_EQ(listing(entries), "b=1 i=-3 d=1.5");
    EXPECT_TRUE(cast<NSNumber>(entries->objectForKey("b"_ns))->isBoolean());
    zr_setBool_forKey(entries, true, nullptr);
    zr_setInteger_forKey(entries, 1, nullptr);
    zr_setDouble_forKey(entries, 1.0, nullptr);
    EXPECT_EQ(entries->count(), 3U);
    send<void>(entries, "zr_setDouble:forKey:"_sel, 2.5, "d"_ns);
    send<void>(entries, "zr_setBool:forKey:"_sel, false, "b"_ns);
    EXPECT_EQ(listing(entries), "b=0 i=-3 d=2.5");
}

TEST(DictionaryWrites, removingGivesBackWhatWasStored) {
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::fromEntries({{"a"_ns, "x"_ns}, {"n"_ns, null}});
    EXPECT_EQ(zr_removeObjectForKey(entries, "a"_ns).get(), ("x"_ns).get());
    EXPECT_FALSE(zr_removeObjectForKey(entries, "a"_ns));
    EXPECT_FALSE(zr_removeObjectForKey(entries, nullptr));
    EXPECT_EQ(zr_removeObjectForKey(entries, "n"_ns).get(), NSNull::null());
    EXPECT_EQ(entries->count(), 0U);
}

TEST(DictionaryComplement, fillsGapsAndANullObjectIsNone) {
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::fromEntries({{"a"_ns, null}});
    complementFrom(entries, dictionary({{"a"_ns, box(1)}, {"b"_ns, box(2)}}));
    EXPECT_EQ(listing(entries), "a=<null> b=2");
    complementFrom(entries, dictionary({{"b"_ns, box(9)}, {"c"_ns, null}, {"d"_ns, box(4)}}));
    EXPECT_EQ(listing(entries), "a=<null> b=2 d=4");
    complementFrom(entries, nullptr);
    complementFrom(entries, entries);
    EXPECT_EQ(listing(entries), "a=<null> b=2 d=4");
}

TEST(DictionaryMerge, storableValuesReplaceAndNullObjectsDoNot) {
    const Ref<NSMutableDictionary> entries = one();
    mergeValuesFrom(entries, dictionary({{"a"_ns, null}, {"b"_ns, box(2)}}));
    EXPECT_EQ(listing(entries), "a=1 b=2");
    mergeValuesFrom(entries, dictionary({{"a"_ns, "x"_ns}, {"c"_ns, null}}));
    EXPECT_EQ(listing(entries), "a=x b=2");
    mergeValuesFrom(entries, nullptr);
    mergeValuesFrom(entries, entries);
    EXPECT_EQ(listing(entries), "a=x b=2");
}

TEST(DictionaryMerge, listedKeysInTheirOrder) {
    const Ref<NSDictionary> source = dictionary({{"x"_ns, box(7)}, {"y"_ns, box(8)}, {"z"_ns, null}, {"q"_ns, box(9)}});
    const Ref<NSMutableDictionary> entries = one();
    mergeValuesFrom_withKeys(entries, source, array({"y"_ns, "x"_ns, "z"_ns, "missing"_ns, NSNull::null()}));
    EXPECT_EQ(listing(entries), "a=1 y=8 x=7");
    mergeValuesFrom_withKeys(entries, nullptr, array({"x"_ns}));
    mergeValuesFrom_withKeys(entries, source, nullptr);
    mergeValuesFrom_withKeys(entries, source, array({}));
    EXPECT_EQ(listing(entries), "a=1 y=8 x=7");
    mergeValuesFrom_withKeys(entries, entries, array({"a"_ns, "y"_ns}));
    EXPECT_EQ(listing(entries), "a=1 y=8 x=7");
}

TEST(DictionaryMerge, keyMapsLeadFromSourceToDestination) {
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::dictionary();
    mergeValuesFrom_withKeyMaps(entries, dictionary({{"src"_ns, box(5)}}), dictionary({{"src"_ns, "dst"_ns}}));
    EXPECT_EQ(listing(entries), "dst=5");
    mergeValuesFrom_withKeyMaps(entries, dictionary({{"src"_ns, null}}),
                                dictionary({{"src"_ns, "dst"_ns}, {"missing"_ns, "other"_ns}}));
    EXPECT_EQ(listing(entries), "dst=5");
    mergeValuesFrom_withKeyMaps(entries, nullptr, dictionary({{"src"_ns, "dst"_ns}}));
    mergeValuesFrom_withKeyMaps(entries, dictionary({{"src"_ns, box(6)}}), nullptr);
    EXPECT_EQ(listing(entries), "dst=5");
}

TEST(DictionaryMerge, ofTwoSourcesForOneDestinationTheLaterStorableOneStays) {
    const Ref<NSDictionary> source = dictionary({{"c"_ns, null}, {"b"_ns, box(2)}, {"a"_ns, box(1)}});
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::dictionary();
    mergeValuesFrom_withKeyMaps(entries, source, dictionary({{"a"_ns, "k"_ns}, {"b"_ns, "k"_ns}, {"c"_ns, "k"_ns}}));
    EXPECT_EQ(listing(entries), "k=2");
    mergeValuesFrom_withKeyMaps(entries, source, dictionary({{"b"_ns, "k"_ns}, {"a"_ns, "k"_ns}}));
    EXPECT_EQ(listing(entries), "k=1");
}

TEST(DictionaryRename, movesAStorableValue) {
    const Ref<NSMutableDictionary> entries = NSMutableDictionary::fromEntries({{"a"_ns, box(1)}, {"b"_ns, box(2)}});
    renameKey_to(entries, "a"_ns, "c"_ns);
    EXPECT_EQ(listing(entries), "b=2 c=1");
    renameKey_to(entries, "c"_ns, "b"_ns);
    EXPECT_EQ(listing(entries), "b=1");
    renameKey_to(entries, "missing"_ns, "b"_ns);
    renameKey_to(entries, nullptr, "b"_ns);
    EXPECT_EQ(listing(entries), "b=1");
}

TEST(DictionaryRename, toItselfRemoves) {
    const Ref<NSMutableDictionary> entries = one();
    renameKey_to(entries, "a"_ns, "a"_ns);
    EXPECT_EQ(entries->count(), 0U);
}

TEST(DictionaryRename, aNullNewKeyOrANullObjectDropsTheEntry) {
    const Ref<NSMutableDictionary> entries =
        NSMutableDictionary::fromEntries({{"a"_ns, box(1)}, {"n"_ns, null}, {"old"_ns, box(3)}});
    renameKey_to(entries, "a"_ns, nullptr);
    EXPECT_EQ(listing(entries), "n=<null> old=3");
    renameKey_to(entries, "n"_ns, "old"_ns);
    EXPECT_EQ(listing(entries), "old=3");
}

TEST(DictionaryPart, holdsTheStorableListedKeys) {
    const Ref<NSDictionary> source = dictionary({{"a"_ns, box(1)}, {"b"_ns, null}, {"c"_ns, box(3)}});
    EXPECT_EQ(listing(dictionaryFrom_withKeys(source, array({"c"_ns, "b"_ns, "a"_ns, "z"_ns}))), "c=3 a=1");
    EXPECT_EQ(dictionaryFrom_withKeys(nullptr, array({"a"_ns}))->count(), 0U);
    EXPECT_EQ(dictionaryFrom_withKeys(source, nullptr)->count(), 0U);
    const id made =
        send<id>(NSMutableDictionary::classObject(), "dictionaryFrom:withKeys:"_sel, source, array({"a"_ns}));
    EXPECT_EQ(listing(Ref<NSDictionary>(cast<NSMutableDictionary>(made))), "a=1");
    EXPECT_NE(dictionaryFrom_withKeys(source, array({})).get(), dictionaryFrom_withKeys(source, array({})).get());
}

TEST(DictionaryWrites, nullReceiversDoNothing) {
    zr_setObject_forKey(nullptr, box(1), "a"_ns);
    zr_setObject_forKey_withDefaultObject(nullptr, box(1), "a"_ns, box(2));
    zr_setValidObject_forKey(nullptr, "x"_ns, "a"_ns);
    zr_setBool_forKey(nullptr, true, "a"_ns);
    zr_setInteger_forKey(nullptr, 1, "a"_ns);
    zr_setDouble_forKey(nullptr, 1.0, "a"_ns);
    EXPECT_FALSE(zr_removeObjectForKey(nullptr, "a"_ns));
    complementFrom(nullptr, one());
    mergeValuesFrom(nullptr, one());
    mergeValuesFrom_withKeys(nullptr, one(), array({"a"_ns}));
    mergeValuesFrom_withKeyMaps(nullptr, one(), dictionary({{"a"_ns, "b"_ns}}));
    renameKey_to(nullptr, "a"_ns, "b"_ns);
}

TEST(DictionaryWrites, areMessagesOfMutableDictionariesOnly) {
    const Ref<NSMutableDictionary> entries = one();
    send<void>(entries, "zr_setObject:forKey:"_sel, box(2), "b"_ns);
    send<void>(entries, "zr_setValidObject:forKey:"_sel, " "_ns, "c"_ns);
    send<void>(entries, "renameKey:to:"_sel, "a"_ns, "z"_ns);
    send<void>(entries, "mergeValuesFrom:withKeyMaps:"_sel, dictionary({{"s"_ns, box(3)}}),
               dictionary({{"s"_ns, "t"_ns}}));
    send<void>(entries, "complementFrom:"_sel, dictionary({{"u"_ns, box(4)}}));
    EXPECT_EQ(listing(entries), "b=2 z=1 t=3 u=4");
    EXPECT_TRUE(send<id>(entries, "zr_removeObjectForKey:"_sel, "t"_ns));
    EXPECT_FALSE(dictionary({})->respondsToSelector("zr_setObject:forKey:"_sel));
    // An argument of another kind counts as null.
    send<void>(entries, "mergeValuesFrom:"_sel, array({"x"_ns}));
    send<void>(entries, "mergeValuesFrom:withKeys:"_sel, one(), "a"_ns);
    EXPECT_EQ(listing(entries), "b=2 z=1 u=4");
}

TEST(DictionaryWrites, aKeyThatCannotBeCopiedRaises) {
    const Ref<NSMutableDictionary> entries = one();
    const Ref<NSObject> odd = make<NSObject>();
    EXPECT_EQ(raisedName([&] { zr_setObject_forKey(entries, box(1), odd); }), NSInvalidArgumentException);
    // Nothing to store, nothing to copy.
    EXPECT_EQ(raisedName([&] { zr_setObject_forKey(entries, nullptr, odd); }), "");
    EXPECT_EQ(listing(entries), "a=1");
}

} // namespace

} // namespace zr
