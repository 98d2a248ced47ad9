#include <zrbasic/platform/foundation/key_value_coding.h>

#include <zrbasic/platform/foundation/date.h>
#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>

#include <gtest/gtest.h>

#include <functional>

namespace {

using namespace zr;

class CodedInner : public NSObject {
    ZR_OBJECT(CodedInner, NSObject)

  public:
    ZR_PROPERTY(Ref<NSString>, city, setCity)
};

class Coded : public NSObject {
    ZR_OBJECT(Coded, NSObject)

  public:
    ZR_PROPERTY(Copied<NSString>, name, setName)
    ZR_PROPERTY(Ref<NSNumber>, price, setPrice)
    ZR_PROPERTY(Weak<NSObject>, owner, setOwner)
    ZR_PROPERTY(Ref<CodedInner>, inner, setInner)
    ZR_PROPERTY(double, change, setChange)
    ZR_PROPERTY(float, ratio, setRatio)
    ZR_PROPERTY(NSInteger, count, setCount)
    ZR_PROPERTY(NSUInteger, total, setTotal)
    ZR_PROPERTY(int, level, setLevel)
    ZR_PROPERTY(unsigned, flags, setFlags)
    ZR_PROPERTY(short, small, setSmall)
    ZR_PROPERTY(unsigned char, tiny, setTiny)
    ZR_PROPERTY(bool, isHidden, setHidden)
    ZR_PROPERTY(std::function<int()>, callback, setCallback)
    ZR_READONLY(Ref<NSString>, code)
    ZR_READONLY(double, rate)

    Ref<NSString> getGreeting() { return "hello"_ns; }
    ZR_METHOD(getGreeting, "getGreeting")
    void reset() { setChange(0); }
    ZR_METHOD(reset, "reset")
    void setDoubled(int value) { setLevel(2 * value); }
    ZR_METHOD(setDoubled, "setDoubled:")
    void setQuietly(NSObject* value) { setName(cast<NSString>(value)); }
    ZR_METHOD(setQuietly, "_setQuiet:")
    id setChained(NSObject* value) {
        setOwner(value);
        return id(this);
    }
    ZR_METHOD(setChained, "setChained:")
};

class Lenient : public Coded {
    ZR_OBJECT(Lenient, Coded)

  public:
    std::string log;

    id readUnknown(NSString* key) { return key; }
    ZR_METHOD(readUnknown, "valueForUndefinedKey:")
    void writeUnknown(NSObject* value, NSString* key) { log += key->utf8() + '=' + value->description()->utf8() + ' '; }
    ZR_METHOD(writeUnknown, "setValue:forUndefinedKey:")
    void writeNil(NSString* key) { log += "nil:" + key->utf8() + ' '; }
    ZR_METHOD(writeNil, "setNilValueForKey:")
};

class Closed : public NSObject {
    ZR_OBJECT(Closed, NSObject)

  public:
    ZR_READONLY(Ref<NSString>, secret)
    static bool variables() { return false; }
    ZR_CLASS_METHOD(variables, "accessInstanceVariablesDirectly")
};

class OwnReader : public NSObject {
    ZR_OBJECT(OwnReader, NSObject)

  public:
    ZR_PROPERTY(Ref<NSString>, name, setName)
    id read(NSString* key) { return NSString::stringWithFormat("read %@"_ns, key); }
    ZR_METHOD(read, "valueForKey:")
};

class Changing : public NSObject {
    ZR_OBJECT(Changing, NSObject)

  public:
    ZR_PROPERTY(Ref<NSString>, name, setName)
};

std::string text(NSObject* object) {
    return object ? object->description()->utf8() : "(null)";
}

/// Name and reason of what `operation` raises, the receiver's address left out; "" when it raises nothing.
template <class Operation>
std::string raised(Operation operation) {
    try {
        operation();
    } catch (const NSException& exception) {
        std::string what = exception.what();
        if (const auto start = what.find(" 0x"); start != std::string::npos) {
            what.erase(start, what.find_first_not_of("0123456789abcdef", start + 3) - start);
        }
        return what;
    }
    return "";
}

TEST(KeyValueReading, boxesNumbersAndGivesObjectsAsTheyAre) {
    const auto coded = make<Coded>();
    const auto name = "BTC"_ns;
    coded->setName(name);
    coded->setChange(1.5);
    coded->setCount(-7);
    coded->setTotal(18446744073709551615U);
    coded->setHidden(true);
    EXPECT_EQ(valueForKey(coded, "name"_ns), name);
    EXPECT_EQ(text(valueForKey(coded, "change"_ns)), "1.5");
    EXPECT_EQ(text(valueForKey(coded, "count"_ns)), "-7");
    EXPECT_EQ(text(valueForKey(coded, "total"_ns)), "18446744073709551615");
    EXPECT_EQ(valueForKey(coded, "hidden"_ns), box(true));
    EXPECT_EQ(valueForKey(coded, "isHidden"_ns), box(true));
    EXPECT_EQ(valueForKey(coded, "price"_ns), nullptr);
}

TEST(KeyValueReading, findsGettersAndVariablesByEveryName) {
    const auto coded = make<Coded>();
    coded->setChange(2.5);
    EXPECT_EQ(text(valueForKey(coded, "greeting"_ns)), "hello");
    EXPECT_EQ(text(valueForKey(coded, "_change"_ns)), "2.5");
    EXPECT_EQ(text(valueForKey(coded, "_hidden"_ns)), "0");
    EXPECT_EQ(text(valueForKey(coded, "class"_ns)), "Coded");
    coded->setCallback([] { return 3; });
    EXPECT_EQ(valueForKey(coded, "callback"_ns), nullptr);
}

TEST(KeyValueReading, raisesForUnknownNullAndEmptyKeys) {
    const auto coded = make<Coded>();
    const std::string complaint =
        "NSUnknownKeyException: [<Coded> valueForUndefinedKey:]: this class is not key value "
        "coding-compliant for the key ";
    EXPECT_EQ(raised([&] { valueForKey(coded, "nope"_ns); }), complaint + "nope.");
    EXPECT_EQ(raised([&] { valueForKey(coded, nullptr); }), complaint + "(null).");
    EXPECT_EQ(raised([&] { valueForKey(coded, ""_ns); }), complaint + ".");
    EXPECT_EQ(raised([&] { valueForKey(coded, "Name"_ns); }), complaint + "Name.");
    EXPECT_EQ(raised([&] { valueForKey(coded, "isEqual:"_ns); }), complaint + "isEqual:.");
    // It gives nothing back, so it is no getter, and reading must not run it.
    coded->setChange(9);
    EXPECT_EQ(raised([&] { valueForKey(coded, "reset"_ns); }), complaint + "reset.");
    EXPECT_EQ(coded->change(), 9);
    EXPECT_EQ(raised([&] { valueForKey(NSNull::null(), "x"_ns); }),
              "NSUnknownKeyException: [<NSNull> valueForUndefinedKey:]: this class is not key value coding-compliant "
              "for the key x.");
}

TEST(KeyValueReading, nullReceiverGivesNullAndDoesNothing) {
    EXPECT_EQ(valueForKey(nullptr, "name"_ns), nullptr);
    EXPECT_EQ(valueForKeyPath(nullptr, "a.b"_ns), nullptr);
    EXPECT_EQ(dictionaryWithValuesForKeys(nullptr, array({})), nullptr);
    EXPECT_EQ(raised([] { setValue_forKey(nullptr, "x"_ns, "name"_ns); }), "");
    EXPECT_EQ(raised([] { setValue_forKeyPath(nullptr, "x"_ns, "a.b"_ns); }), "");
    EXPECT_EQ(raised([] { setValuesForKeysWithDictionary(nullptr, dictionary({})); }), "");
}

TEST(KeyValueWriting, convertsNumbersForEveryScalar) {
    const auto coded = make<Coded>();
    const auto number = box(-1.9);
    for (const auto& key : {"change"_ns, "ratio"_ns, "count"_ns, "total"_ns, "level"_ns, "flags"_ns, "small"_ns,
                            "tiny"_ns, "hidden"_ns}) {
        setValue_forKey(coded, number, key);
    }
    EXPECT_EQ(coded->change(), -1.9);
    EXPECT_EQ(coded->ratio(), -1.9F);
    EXPECT_EQ(coded->count(), -1);
    EXPECT_EQ(coded->level(), -1);
    EXPECT_EQ(coded->small(), -1);
    EXPECT_TRUE(coded->isHidden());
    setValue_forKey(coded, box(NSUInteger{18446744073709551615U}), "total"_ns);
    EXPECT_EQ(coded->total(), 18446744073709551615U);
    setValue_forKey(coded, box(21), "doubled"_ns);
    EXPECT_EQ(coded->level(), 42);
}

TEST(KeyValueWriting, stringsConvertIntoScalarsByTheirLeadingDigits) {
    const auto coded = make<Coded>();
    setValue_forKey(coded, "12.5abc"_ns, "change"_ns);
    setValue_forKey(coded, "12.5"_ns, "ratio"_ns);
    setValue_forKey(coded, "12abc"_ns, "count"_ns);
    setValue_forKey(coded, "-3"_ns, "level"_ns);
    setValue_forKey(coded, "true"_ns, "hidden"_ns);
    EXPECT_EQ(coded->change(), 12.5);
    EXPECT_EQ(coded->ratio(), 12.5F);
    EXPECT_EQ(coded->count(), 12);
    EXPECT_EQ(coded->level(), -3);
    EXPECT_TRUE(coded->isHidden());
}

TEST(KeyValueWriting, aStringIntoAnUnsignedScalarConvertsAsIntoASignedOne) {
    const auto coded = make<Coded>();
    setValue_forKey(coded, "42x"_ns, "total"_ns);
    EXPECT_EQ(coded->total(), 42U);
    setValue_forKey(coded, "-1"_ns, "total"_ns);
    EXPECT_EQ(coded->total(), 18446744073709551615U);
    setValue_forKey(coded, "18446744073709551615"_ns, "total"_ns);
    EXPECT_EQ(coded->total(), 9223372036854775807U) << "saturates like a signed one";
    setValue_forKey(coded, "7"_ns, "flags"_ns);
    EXPECT_EQ(coded->flags(), 7U);
}

TEST(KeyValueWriting, theNullObjectIsZeroForScalarsAndItselfForObjects) {
    const auto coded = make<Coded>();
    coded->setChange(1);
    coded->setCount(1);
    coded->setHidden(true);
    coded->setTotal(5);
    for (const auto& key : {"change"_ns, "count"_ns, "hidden"_ns, "total"_ns, "name"_ns}) {
        setValue_forKey(coded, NSNull::null(), key);
    }
    EXPECT_EQ(coded->change(), 0);
    EXPECT_EQ(coded->count(), 0);
    EXPECT_FALSE(coded->isHidden());
    EXPECT_EQ(coded->total(), 0U);
    EXPECT_EQ(valueForKey(coded, "name"_ns), NSNull::null());
    EXPECT_EQ(coded->name(), nullptr) << "the typed getter never gives an object of another kind";
}

TEST(KeyValueWriting, otherObjectsIntoScalarsRaiseAndChangeNothing) {
    const auto coded = make<Coded>();
    coded->setChange(1.5);
    coded->setCount(2);
    EXPECT_NE(raised([&] { setValue_forKey(coded, array({box(1)}), "change"_ns); }).find(" doubleValue]: unrecognized"),
              std::string::npos);
    EXPECT_NE(raised([&] { setValue_forKey(coded, dictionary({}), "count"_ns); }).find(" longLongValue]: unrecognized"),
              std::string::npos);
    EXPECT_NE(raised([&] { setValue_forKey(coded, NSDate::date(), "hidden"_ns); }).find(" boolValue]: unrecognized"),
              std::string::npos);
    EXPECT_EQ(coded->change(), 1.5);
    EXPECT_EQ(coded->count(), 2);
}

TEST(KeyValueWriting, storesAnyObjectInAnObjectProperty) {
    const auto coded = make<Coded>();
    const auto wrong = array({box(1)});
    setValue_forKey(coded, wrong, "price"_ns);
    EXPECT_EQ(valueForKey(coded, "price"_ns), wrong);
    EXPECT_EQ(coded->price(), nullptr);
    setValue_forKey(coded, nullptr, "price"_ns);
    EXPECT_EQ(valueForKey(coded, "price"_ns), nullptr);
    const auto changing = NSMutableString::fromUtf8("a");
    setValue_forKey(coded, changing->mutableCopy(), "name"_ns);
    EXPECT_EQ(text(coded->name()), "a");
}

TEST(KeyValueWriting, nullIntoANumberRaises) {
    const auto coded = make<Coded>();
    coded->setChange(1.5);
    EXPECT_EQ(raised([&] { setValue_forKey(coded, nullptr, "change"_ns); }),
              "NSInvalidArgumentException: [<Coded> setNilValueForKey]: could not set nil as the value for the key "
              "change.");
    EXPECT_EQ(coded->change(), 1.5);
    EXPECT_NE(raised([&] { setValue_forKey(coded, nullptr, "rate"_ns); }).find("setNilValueForKey"), std::string::npos);
    const auto lenient = make<Lenient>();
    setValue_forKey(lenient, nullptr, "count"_ns);
    EXPECT_EQ(lenient->log, "nil:count ");
}

TEST(KeyValueWriting, writesReadOnlyPropertiesThroughTheirVariables) {
    const auto coded = make<Coded>();
    setValue_forKey(coded, "X1"_ns, "code"_ns);
    setValue_forKey(coded, box(0.25), "rate"_ns);
    EXPECT_EQ(text(coded->code()), "X1");
    EXPECT_EQ(coded->rate(), 0.25);
    setValue_forKey(coded, "BTC"_ns, "_name"_ns);
    EXPECT_EQ(text(coded->name()), "BTC");
    setValue_forKey(coded, "quiet"_ns, "quiet"_ns);
    EXPECT_EQ(text(coded->name()), "quiet");
    setValue_forKey(coded, coded, "chained"_ns);
    EXPECT_EQ(coded->owner(), coded);
    const auto closed = make<Closed>();
    EXPECT_NE(raised([&] { setValue_forKey(closed, "x"_ns, "secret"_ns); }), "");
}

TEST(KeyValueWriting, leavesPropertiesOfOtherTypesAlone) {
    const auto coded = make<Coded>();
    coded->setCallback([] { return 3; });
    setValue_forKey(coded, "x"_ns, "callback"_ns);
    ASSERT_TRUE(coded->callback());
    EXPECT_EQ(coded->callback()(), 3);
    setValue_forKey(coded, nullptr, "callback"_ns);
    EXPECT_FALSE(coded->callback());
}

TEST(KeyValueWriting, raisesForUnknownKeys) {
    const auto coded = make<Coded>();
    EXPECT_EQ(raised([&] { setValue_forKey(coded, "x"_ns, "nope"_ns); }),
              "NSUnknownKeyException: [<Coded> setValue:forUndefinedKey:]: this class is not key value "
              "coding-compliant for the key nope.");
    EXPECT_NE(raised([&] { setValue_forKey(coded, "x"_ns, nullptr); }).find("the key (null)."), std::string::npos);
    EXPECT_NE(raised([&] { setValue_forKey(coded, "x"_ns, ""_ns); }).find("the key ."), std::string::npos);
    EXPECT_NE(raised([&] { setValue_forKey(coded, "x"_ns, u"pri\0ce"_ns); }), "");
    EXPECT_NE(raised([&] { setValue_forKey(coded, "x"_ns, u"\xD800"_ns); }), "");
    EXPECT_NE(raised([&] { setValue_forKey(coded, "x"_ns, NSString::fromUtf8(std::string(100000, 'k'))); }), "");
}

TEST(KeyValueWriting, onlyTheFirstLetterOfAKeyChanges) {
    const auto coded = make<Coded>();
    setValue_forKey(coded, "x"_ns, "Name"_ns);
    EXPECT_EQ(text(coded->name()), "x") << "setName: serves both spellings for writing";
    EXPECT_NE(raised([&] { setValue_forKey(coded, "y"_ns, "nAME"_ns); }), "");
}

TEST(KeyValueCoding, aClassAnswersUnknownKeysItself) {
    const auto lenient = make<Lenient>();
    EXPECT_EQ(text(valueForKey(lenient, "nope"_ns)), "nope");
    setValue_forKey(lenient, box(5), "nope"_ns);
    EXPECT_EQ(lenient->log, "nope=5 ");
    const auto reader = make<OwnReader>();
    reader->setName("x"_ns);
    EXPECT_EQ(text(valueForKey(reader, "name"_ns)), "read name");
    EXPECT_EQ(text(valueForKeyPath(reader, "name"_ns)), "read name");
    EXPECT_EQ(text(send<id>(lenient, "valueForKey:"_sel, "level"_ns)), "0");
}

TEST(KeyValueCoding, noticesMethodsThatAreAddedOrReplacedLater) {
    const auto object = make<Changing>();
    setValue_forKey(object, "a"_ns, "name"_ns);
    EXPECT_EQ(text(valueForKey(object, "name"_ns)), "a");
    class_addMethod(Changing::classObject(), "getName"_sel, imp(+[](NSObject*, SEL) -> id { return "got"_ns; }));
    EXPECT_EQ(text(valueForKey(object, "name"_ns)), "got");
    class_replaceMethod(Changing::classObject(), "setName:"_sel, imp(+[](NSObject*, SEL, NSObject*) {}));
    setValue_forKey(object, "b"_ns, "name"_ns);
    EXPECT_EQ(text(object->name()), "a");
}

TEST(KeyValueCoding, unknownKeysLeaveNoSelectorsBehind) {
    const auto lenient = make<Lenient>();
    for (int i = 0; i < 1000; ++i) {
        const auto key = NSString::fromUtf8("strange" + std::to_string(i));
        static_cast<void>(valueForKey(lenient, key));
        setValue_forKey(lenient, "x"_ns, key);
    }
    EXPECT_FALSE(sel_findName("strange7"));
    EXPECT_FALSE(sel_findName("setStrange999:"));
    EXPECT_TRUE(sel_findName("setName:"));
}

TEST(KeyPath, goesFromObjectToObject) {
    const auto coded = make<Coded>();
    EXPECT_EQ(valueForKeyPath(coded, "inner.city"_ns), nullptr);
    coded->setInner(make<CodedInner>());
    setValue_forKeyPath(coded, "Berlin"_ns, "inner.city"_ns);
    EXPECT_EQ(text(valueForKeyPath(coded, "inner.city"_ns)), "Berlin");
    EXPECT_EQ(text(valueForKeyPath(coded, "inner.city.length"_ns)), "6");
    setValue_forKeyPath(coded, "x"_ns, "name"_ns);
    EXPECT_EQ(text(coded->name()), "x");
    EXPECT_NE(raised([&] { valueForKeyPath(coded, "inner.nope"_ns); }), "");
    EXPECT_NE(raised([&] { valueForKeyPath(coded, nullptr); }), "");
    EXPECT_NE(raised([&] { valueForKeyPath(coded, "inner."_ns); }), "");
    EXPECT_NE(raised([&] { valueForKeyPath(coded, ".inner"_ns); }), "");
    const auto deep = NSString::fromUtf8("inner" + std::string(200000, '.'));
    EXPECT_NE(raised([&] { valueForKeyPath(coded, deep); }), "");
}

TEST(CollectionKeys, aDictionaryReadsAndWritesItsEntries) {
    const auto entries = dictionary({{"count"_ns, "entry"_ns}, {"a.b"_ns, box(1)}});
    EXPECT_EQ(text(valueForKey(entries, "count"_ns)), "entry");
    EXPECT_EQ(text(valueForKey(entries, "@count"_ns)), "2");
    EXPECT_EQ(text(valueForKey(entries, "a.b"_ns)), "1");
    EXPECT_EQ(valueForKey(entries, "nope"_ns), nullptr);
    EXPECT_NE(raised([&] { setValue_forKey(entries, "x"_ns, "y"_ns); }), "");
    const auto changing = NSMutableDictionary::dictionary();
    setValue_forKey(changing, box(3), "x"_ns);
    EXPECT_EQ(text(changing->objectForKey("x"_ns)), "3");
    setValue_forKey(changing, nullptr, "x"_ns);
    EXPECT_EQ(changing->count(), 0U);
    const auto nested = dictionary({{"a"_ns, dictionary({{"b"_ns, box(7)}})}});
    EXPECT_EQ(text(valueForKeyPath(nested, "a.b"_ns)), "7");
}

TEST(CollectionKeys, anArrayAsksItsElements) {
    const auto first = make<Coded>();
    const auto second = make<Coded>();
    first->setName("a"_ns);
    const auto both = array({first, second});
    EXPECT_TRUE(valueForKey(both, "name"_ns)->isEqual(array({"a"_ns, NSNull::null()})));
    setValue_forKey(both, box(5), "level"_ns);
    EXPECT_EQ(first->level(), 5);
    EXPECT_EQ(second->level(), 5);
    EXPECT_EQ(text(valueForKeyPath(both, "@count"_ns)), "2");
}

TEST(KeyValueDictionaries, carryNullAsTheNullObject) {
    const auto coded = make<Coded>();
    coded->setName("a"_ns);
    const auto values = dictionaryWithValuesForKeys(coded, array({"name"_ns, "price"_ns, "level"_ns}));
    EXPECT_TRUE(values->isEqual(dictionary({{"name"_ns, "a"_ns}, {"price"_ns, NSNull::null()}, {"level"_ns, box(0)}})));
    setValuesForKeysWithDictionary(coded, dictionary({{"name"_ns, NSNull::null()}, {"level"_ns, "9"_ns}}));
    EXPECT_EQ(valueForKey(coded, "name"_ns), nullptr);
    EXPECT_EQ(coded->level(), 9);
    EXPECT_NE(raised([&] { setValuesForKeysWithDictionary(coded, dictionary({{box(1), box(2)}})); }), "");
}

} // namespace
