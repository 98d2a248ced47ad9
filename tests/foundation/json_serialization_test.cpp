#include <zrbasic/platform/foundation/json_serialization.h>

#include <zrbasic/platform/foundation/decimal_number.h>
#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>

#include <tests/vectors/vectors.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace zr {

namespace {

id read(std::string_view text, NSUInteger options = NSJSONReadingFragmentsAllowed) {
    return NSJSONSerialization::objectWithText(text, options, nullptr);
}

std::string written(NSObject* object, NSUInteger options = NSJSONWritingFragmentsAllowed) {
    return NSJSONSerialization::textWithObject(object, options, nullptr);
}

/// Reads and writes again: the shortest way to see a whole structure.
std::string echoed(std::string_view text) {
    return written(read(text));
}

/// The byte where reading stopped; -1 for a text that is fine, -2 for an error without a place.
long faultIn(std::string_view text, NSUInteger options = NSJSONReadingFragmentsAllowed) {
    Ref<NSError> error;
    const id object = NSJSONSerialization::objectWithText(text, options, &error);
    EXPECT_NE(object == nullptr, error == nullptr) << text;
    if (!error) {
        return -1;
    }
    EXPECT_EQ(error->domain()->utf8(), "NSCocoaErrorDomain");
    EXPECT_EQ(error->code(), NSPropertyListReadCorruptError);
    auto* const place = cast<NSNumber>(error->userInfo()->peek(NSJSONSerializationErrorIndex()));
    return place ? static_cast<long>(place->integerValue()) : -2;
}

std::string reasonFor(std::string_view text, NSUInteger options = 0) {
    Ref<NSError> error;
    NSJSONSerialization::objectWithText(text, options, &error);
    return error ? error->localizedDescription()->utf8() : "";
}

std::vector<std::vector<std::string>> vectors(const std::string& kind) {
    std::vector<std::vector<std::string>> rows;
    for (auto& [line, row] : test::vectorRows("json", '\t')) {
        if (row.at(0) == kind) {
            row.resize(3);
            rows.push_back(row);
        }
    }
    EXPECT_FALSE(rows.empty()) << kind;
    return rows;
}

std::u16string unitsOf(const std::string& hexadecimal) {
    std::u16string units;
    for (std::size_t i = 0; i + 4 <= hexadecimal.size(); i += 4) {
        units += static_cast<char16_t>(std::stoul(hexadecimal.substr(i, 4), nullptr, 16));
    }
    return units;
}

std::string nested(std::size_t depth) {
    return std::string(depth, '[') + std::string(depth, ']');
}

TEST(JsonReading, stringsAgreeWithAnIndependentImplementation) {
    for (const auto& row : vectors("string")) {
        SCOPED_TRACE(row[1]);
        const Ref<NSString> string(cast<NSString>(read(row[1])));
        ASSERT_TRUE(string);
        EXPECT_TRUE(string->view() == unitsOf(row[2]));
    }
}

TEST(JsonReading, numbersKeepEveryDigit) {
    for (const auto& row : vectors("integer")) {
        SCOPED_TRACE(row[1]);
        const Ref<NSNumber> number(cast<NSNumber>(read(row[1])));
        ASSERT_TRUE(number);
        EXPECT_FALSE(number->isFractional());
        EXPECT_EQ(number->stringValue()->utf8(), row[2]);
    }
    for (const auto& row : vectors("decimal")) {
        SCOPED_TRACE(row[1]);
        const Ref<NSDecimalNumber> number(cast<NSDecimalNumber>(read(row[1])));
        ASSERT_TRUE(number);
        EXPECT_EQ(number->stringValue()->utf8(), row[2]);
    }
}

TEST(JsonReading, numbersThatNoDecimalHoldsAreTheNearestDouble) {
    for (const auto& row : vectors("double")) {
        SCOPED_TRACE(row[1]);
        const Ref<NSNumber> number(cast<NSNumber>(read(row[1])));
        ASSERT_TRUE(number);
        EXPECT_FALSE(cast<NSDecimalNumber>(number));
        EXPECT_EQ(number->doubleValue(), std::strtod(row[2].c_str(), nullptr));
    }
    for (const auto& row : vectors("none")) {
        EXPECT_EQ(faultIn(row[1]), 0) << row[1];
    }
}

TEST(JsonReading, aPriceIsReadAsItIsWritten) {
    const Ref<NSDictionary> quote(cast<NSDictionary>(read(R"({"tick":0.00001000,"price":307.1,"count":7})")));
    ASSERT_TRUE(quote);
    EXPECT_TRUE(cast<NSDecimalNumber>(quote->peek("tick"_ns)));
    EXPECT_EQ(quote->peek("tick"_ns)->description()->utf8(), "0.00001");
    EXPECT_EQ(quote->peek("price"_ns)->description()->utf8(), "307.1");
    EXPECT_FALSE(cast<NSDecimalNumber>(quote->peek("count"_ns)));
}

TEST(JsonReading, everyKindOfValueHasItsClass) {
    const Ref<NSArray> all(cast<NSArray>(read(R"([true, false, null, "a", 1, [], {}])")));
    ASSERT_TRUE(all);
    ASSERT_EQ(all->count(), 7u);
    EXPECT_TRUE(cast<NSNumber>(all->objectAtIndex(0))->isBoolean());
    EXPECT_TRUE(cast<NSNumber>(all->objectAtIndex(0))->boolValue());
    EXPECT_FALSE(cast<NSNumber>(all->objectAtIndex(1))->boolValue());
    EXPECT_TRUE(isNull(all->objectAtIndex(2)));
    EXPECT_TRUE("a"_ns->isEqual(all->objectAtIndex(3)));
    EXPECT_FALSE(cast<NSNumber>(all->objectAtIndex(4))->isBoolean());
    EXPECT_TRUE(all->objectAtIndex(5)->isEqual(NSArray::array()));
    EXPECT_TRUE(all->objectAtIndex(6)->isEqual(NSDictionary::dictionary()));
}

TEST(JsonReading, keysKeepTheirOrderAndTheLastOfEqualKeysWins) {
    EXPECT_EQ(echoed(R"({"z":1,"a":2,"m":3})"), R"({"z":1,"a":2,"m":3})");
    EXPECT_EQ(echoed(R"({"z":1,"a":2,"z":{"b":[]}})"), R"({"z":{"b":[]},"a":2})");
    EXPECT_EQ(echoed(R"({"":1,"\u0061":2,"a":3})"), R"({"":1,"a":3})");
    std::string many = "{";
    for (int i = 0; i < 500; ++i) {
        many += (i ? ",\"k" : "\"k") + std::to_string(i) + "\":" + std::to_string(i);
    }
    many += '}';
    EXPECT_EQ(echoed(many), many);
}

TEST(JsonReading, equalKeysOfManyTextsStayApartFromSimilarOnes) {
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 2000; ++i) {
            const std::string key = "key" + std::to_string(i);
            const std::string text = "{\"" + key + "\":" + std::to_string(i) + '}';
            ASSERT_EQ(echoed(text), text);
        }
    }
    const std::string longKey(300, 'k');
    EXPECT_EQ(echoed("{\"" + longKey + "\":1,\"" + longKey + "l\":2}"),
              "{\"" + longKey + "\":1,\"" + longKey + "l\":2}");
}

TEST(JsonReading, containersAndLeavesAreMutableOnRequest) {
    constexpr std::string_view text = R"({"list":[1],"name":"a","none":{}})";
    const Ref<NSMutableDictionary> all(
        cast<NSMutableDictionary>(read(text, NSJSONReadingMutableContainers | NSJSONReadingMutableLeaves)));
    ASSERT_TRUE(all);
    EXPECT_TRUE(cast<NSMutableArray>(all->peek("list"_ns)));
    EXPECT_TRUE(cast<NSMutableDictionary>(all->peek("none"_ns)));
    EXPECT_TRUE(cast<NSMutableString>(all->peek("name"_ns)));
    all->setObject_forKey("b"_ns, "name"_ns);
    EXPECT_EQ(written(all), R"({"list":[1],"name":"b","none":{}})");

    const id fixed = read(text, 0);
    EXPECT_TRUE(cast<NSDictionary>(fixed));
    EXPECT_FALSE(cast<NSMutableDictionary>(fixed));
    EXPECT_FALSE(cast<NSMutableString>(cast<NSDictionary>(fixed)->peek("name"_ns)));
    EXPECT_FALSE(cast<NSMutableArray>(cast<NSDictionary>(fixed)->peek("list"_ns)));
}

TEST(JsonReading, aValueAloneIsAFragment) {
    for (const char* text : {"1", "-2.5", "\"a\"", " true ", "null\n", "false"}) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(read(text, 0));
        EXPECT_TRUE(read(text, NSJSONReadingFragmentsAllowed));
    }
    EXPECT_EQ(reasonFor("17"), "The text is not valid JSON: the text holds neither an array nor an object, at byte 0.");
}

TEST(JsonReading, damageIsFoundAtItsPlace) {
    const std::pair<const char*, long> table[] = {
        {"", 0},
        {"  \n", 0},
        {"[1,2", 4},
        {"[1,,2]", 3},
        {"[1 2]", 3},
        {"[1]]", 3},
        {"[1] x", 4},
        {"{\"a\":1}{}", 7},
        {"{\"a\" 1}", 5},
        {"{\"a\":tru}", 5},
        {"{\"a\":1 \"b\":2}", 7},
        {"[01]", 1},
        {"[1.]", 1},
        {"[-]", 1},
        {"[1e]", 1},
        {"[+1]", 1},
        {"[.5]", 1},
        {"[NaN]", 1},
        {"[1x]", 2},
        {"[\"a\\q\"]", 3},
        {"[\"\\u12G4\"]", 2},
        {"[\"\\ud800\"]", 2},
        {"[\"\\udc00\"]", 2},
        {"[\"\\ud800\\u0041\"]", 2},
        {"[\"a\nb\"]", 3},
        {"[\"abc]", 1},
        {"[\"a\xFF\"]", 3},
        {"[\"\xED\xA0\x80\"]", 2},
        {"[\"\xC0\xAF\"]", 2},
        {"\"a\" \"b\"", 3},
        {"truee", 0},
        {"1 2", 1},
    };
    for (const auto& [text, place] : table) {
        SCOPED_TRACE(text);
        EXPECT_EQ(faultIn(text), place);
    }
}

TEST(JsonReading, theErrorSaysWhatAndWhere) {
    EXPECT_EQ(reasonFor(""), "The text is not valid JSON: there is no value, at byte 0.");
    EXPECT_EQ(reasonFor("[\"\xFF\"]"), "The text is not valid JSON: the text is not UTF-8, at byte 2.");
    EXPECT_EQ(reasonFor("[1e999]"), "The text is not valid JSON: a number is out of range, at byte 1.");
    Ref<NSError> error;
    EXPECT_FALSE(NSJSONSerialization::JSONObjectWithData_options_error(nullptr, 0, &error));
    ASSERT_TRUE(error);
    EXPECT_FALSE(error->userInfo()->peek(NSJSONSerializationErrorIndex()));
    EXPECT_FALSE(NSJSONSerialization::JSONObjectWithData_options_error(nullptr, 0, nullptr));
}

TEST(JsonReading, aByteOrderMarkIsSkippedAndCounted) {
    EXPECT_EQ(echoed("\xEF\xBB\xBF[1]"), "[1]");
    EXPECT_EQ(faultIn("\xEF\xBB\xBF[1,]"), 6);
    EXPECT_EQ(faultIn("\xEF\xBB\xBF"), 3);
    EXPECT_EQ(faultIn("[1]\xEF\xBB\xBF"), 3);
}

TEST(JsonReading, zeroBytesAreNoEnd) {
    EXPECT_EQ(cast<NSString>(read(R"("a\u0000b")"))->length(), 3u);
    EXPECT_EQ(faultIn(std::string_view("[1]\0", 4)), 3);
    EXPECT_EQ(faultIn(std::string_view("[\"a\0\"]", 6)), 3);
    EXPECT_EQ(faultIn(std::string_view("\0[1]", 4)), 0);
}

TEST(JsonReading, nestingHasALimit) {
    EXPECT_EQ(faultIn(nested(512)), -1);
    EXPECT_EQ(faultIn(nested(513)), 512);
    EXPECT_NE(faultIn(nested(100000)), -1);
    EXPECT_NE(faultIn(std::string(1000000, '[')), -1);
    std::string objects;
    for (int i = 0; i < 513; ++i) {
        objects += "{\"a\":";
    }
    EXPECT_EQ(faultIn(objects + "1" + std::string(513, '}')), 512 * 5);
    // The limit is one of depth, not of count.
    EXPECT_EQ(faultIn('[' + nested(511) + ',' + nested(511) + ']'), -1);
}

TEST(JsonReading, aTextMayLieInsideALargerBuffer) {
    const std::string buffer = "{\"a\":[1,2]}],\"b\":\"c\"}]}]" + std::string(200, ']');
    const auto readFirst = [&buffer](std::size_t length) {
        const id object =
            NSJSONSerialization::objectWithText(std::string_view(buffer).substr(0, length), 0, nullptr, buffer.size());
        return object ? written(object) : std::string("none");
    };
    EXPECT_EQ(readFirst(11), R"({"a":[1,2]})");
    for (std::size_t length = 0; length < 200; ++length) {
        SCOPED_TRACE(length);
        EXPECT_EQ(readFirst(length), length == 11 ? R"({"a":[1,2]})" : "none");
    }
}

TEST(JsonReading, everyCutIsAnErrorAndNothingElse) {
    const std::string text =
        "{\"s\":\"B\\u00e9\xE2\x82\xAC\\n\",\"l\":[1,-2.50,true,null,{\"x\":[[]]}],\"n\":"
        "123456789012345678901234567890}";
    ASSERT_EQ(faultIn(text), -1);
    const std::string tails[] = {"", text, "]}", ",1]}", "\"}", std::string(80, '}'), std::string(80, '"')};
    for (std::size_t length = 0; length < text.size(); ++length) {
        SCOPED_TRACE(length);
        EXPECT_NE(faultIn(std::string_view(text).substr(0, length)), -1);
        // Whatever lies behind the text in memory must not complete it.
        for (const std::string& tail : tails) {
            const std::string buffer = text.substr(0, length) + tail + std::string(64, ' ');
            EXPECT_FALSE(NSJSONSerialization::objectWithText(std::string_view(buffer).substr(0, length), 0, nullptr,
                                                             buffer.size()));
        }
    }
}

TEST(JsonReading, randomDamageNeverYieldsWhatCannotBeWritten) {
    const std::string text =
        R"({"e":"kline","E":1627408359982,"s":"ETHUSDT","o":"2240.1","v":[1.5e3,{"a":null}],"t":true})";
    std::mt19937 random(20210727);
    const std::string_view pieces = "{}[],:\"\\u0e+-.1tfn \n\xFF\xC3";
    int survivors = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string damaged = text;
        for (unsigned changes = random() % 4 + 1; changes > 0; --changes) {
            const std::size_t place = random() % damaged.size();
            switch (random() % 3) {
                case 0:
                    damaged[place] = pieces[random() % pieces.size()];
                    break;
                case 1:
                    damaged.insert(place, 1, pieces[random() % pieces.size()]);
                    break;
                default:
                    damaged.erase(place, 1);
            }
        }
        if (const id object = read(damaged)) {
            ++survivors;
            const std::string again = written(object);
            ASSERT_FALSE(again.empty()) << damaged;
            ASSERT_EQ(echoed(again), again) << damaged;
        }
    }
    EXPECT_GT(survivors, 100);
    EXPECT_LT(survivors, 15000);
}

TEST(JsonReading, aHugeTextIsReadAndItsMemoryGivenBack) {
    std::string text = "[";
    for (int i = 0; i < 300000; ++i) {
        text += std::to_string(i) + ',';
    }
    text.back() = ']';
    const Ref<NSArray> all(cast<NSArray>(read(text)));
    ASSERT_TRUE(all);
    EXPECT_EQ(all->count(), 300000u);
    EXPECT_EQ(all->objectAtIndex(299999)->description()->utf8(), "299999");
    const std::string longString = '"' + std::string(3000000, 'x') + '"';
    EXPECT_EQ(cast<NSString>(read(longString))->length(), 3000000u);
    EXPECT_EQ(echoed("[1]"), "[1]");
}

TEST(JsonWriting, stringsAgreeWithAnIndependentImplementation) {
    for (const auto& row : vectors("write")) {
        SCOPED_TRACE(row[2]);
        EXPECT_EQ(written(NSString::fromUtf16(unitsOf(row[1]))), row[2]);
    }
}

TEST(JsonWriting, numbersAreExact) {
    EXPECT_EQ(written(array({box(0.1), box(1e-7), box(1e22), box(100.0), box(-0.0), box(0.1f)})),
              "[0.1,1e-07,1e+22,100,-0,0.1]");
    EXPECT_EQ(written(box(std::numeric_limits<std::uint64_t>::max())), "18446744073709551615");
    EXPECT_EQ(written(box(std::numeric_limits<std::int64_t>::min())), "-9223372036854775808");
    EXPECT_EQ(written(NSDecimalNumber::decimalNumberWithString("0.00001000"_ns)), "0.00001");
    EXPECT_EQ(written(NSDecimalNumber::decimalNumberWithString("12345678901234567890123456789012345678"_ns)),
              "12345678901234567890123456789012345678");
    EXPECT_EQ(written(array({box(true), box(false), box(1), box(0)})), "[true,false,1,0]");
}

TEST(JsonWriting, keysKeepTheirOrderOrAreSorted) {
    const auto object = dictionary({{"b"_ns, box(1)}, {u"\u00e9"_ns, box(2)}, {"B"_ns, box(3)}, {"a"_ns, box(4)}});
    EXPECT_EQ(written(object), "{\"b\":1,\"\xC3\xA9\":2,\"B\":3,\"a\":4}");
    EXPECT_EQ(written(object, NSJSONWritingSortedKeys), "{\"B\":3,\"a\":4,\"b\":1,\"\xC3\xA9\":2}");
}

TEST(JsonWriting, prettyTextHasAnEntryALine) {
    const auto object = dictionary({{"a"_ns, array({box(1), NSNull::null()})},
                                    {"none"_ns, NSArray::array()},
                                    {"empty"_ns, NSDictionary::dictionary()}});
    EXPECT_EQ(written(object, NSJSONWritingPrettyPrinted),
              "{\n  \"a\" : [\n    1,\n    null\n  ],\n  \"none\" : [],\n  \"empty\" : {}\n}");
    EXPECT_TRUE(read(written(object, NSJSONWritingPrettyPrinted))->isEqual(object));
}

TEST(JsonWriting, whatHasNoFormIsRefusedWithAReason) {
    const auto itself = NSMutableArray::array();
    itself->addObject(itself);
    const std::pair<id, const char*> table[] = {
        {nullptr, "there is no object"},
        {box(1), "the object is neither an array nor a dictionary"},
        {array({box(std::nan(""))}), "JSON has no form for NaN and infinities"},
        {array({box(-INFINITY)}), "JSON has no form for NaN and infinities"},
        {array({NSDecimalNumber::notANumber()}), "JSON has no form for NaN and infinities"},
        {array({NSString::fromUtf16(u"a\xD800")}), "a string holds half a surrogate pair"},
        {dictionary({{box(1), box(1)}}), "a key is not a string"},
        {array({NSData::data()}), "JSON has no form for an object of class NSData"},
        {itself, "the object is nested too deeply"},
    };
    for (const auto& [object, reason] : table) {
        SCOPED_TRACE(reason);
        Ref<NSError> error;
        EXPECT_FALSE(NSJSONSerialization::dataWithJSONObject_options_error(object, 0, &error));
        ASSERT_TRUE(error);
        EXPECT_EQ(error->code(), NSPropertyListWriteInvalidError);
        EXPECT_EQ(error->localizedDescription()->utf8(),
                  std::string("The object cannot be written as JSON: ") + reason + '.');
        EXPECT_FALSE(NSJSONSerialization::dataWithJSONObject_options_error(object, 0, nullptr));
        EXPECT_FALSE(NSJSONSerialization::isValidJSONObject(object));
    }
    itself->removeAllObjects();
}

TEST(JsonWriting, onlyContainersAreValidAtTheTop) {
    EXPECT_TRUE(NSJSONSerialization::isValidJSONObject(array({"a"_ns, NSNull::null()})));
    EXPECT_TRUE(NSJSONSerialization::isValidJSONObject(NSMutableDictionary::dictionary()));
    EXPECT_FALSE(NSJSONSerialization::isValidJSONObject("a"_ns));
    EXPECT_FALSE(NSJSONSerialization::isValidJSONObject(NSNull::null()));
    EXPECT_EQ(written(NSNull::null()), "null");
    EXPECT_EQ(written("a"_ns), "\"a\"");
}

TEST(JsonWriting, whatWasWrittenReadsBackEqual) {
    const auto deep = read(nested(512));
    EXPECT_EQ(written(deep), nested(512));
    const auto object = dictionary({{u"\U0001F600"_ns, array({box(1.5), box(7), "x\"\\\n"_ns, box(true)})}});
    Ref<NSError> error;
    const auto data = NSJSONSerialization::dataWithJSONObject_options_error(object, 0, &error);
    ASSERT_TRUE(data);
    EXPECT_FALSE(error);
    EXPECT_TRUE(object->isEqual(NSJSONSerialization::JSONObjectWithData_options_error(data, 0, &error)));
    EXPECT_FALSE(error);
}

TEST(JsonMessages, theOperationsAreMessagesToTheClass) {
    NSObject* const serialization = NSJSONSerialization::classObject();
    EXPECT_TRUE(send<bool>(serialization, "isValidJSONObject:"_sel, NSArray::array()));
    Ref<NSError> error;
    const auto data = send<Ref<NSData>>(serialization, "dataWithJSONObject:options:error:"_sel, array({box(1)}),
                                        NSUInteger(0), &error);
    ASSERT_TRUE(data);
    EXPECT_EQ(data->view(), "[1]");
    EXPECT_TRUE(array({box(1)})->isEqual(
        send<id>(serialization, "JSONObjectWithData:options:error:"_sel, data, NSUInteger(0), &error)));
}

} // namespace

} // namespace zr
