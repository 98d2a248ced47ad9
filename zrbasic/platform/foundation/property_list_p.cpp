#include <zrbasic/platform/foundation/property_list_p.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/data.h>
#include <zrbasic/platform/foundation/date.h>
#include <zrbasic/platform/foundation/decimal_number.h>
#include <zrbasic/platform/foundation/json_serialization.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/numeric_text.h>
#include <zrbasic/platform/foundation/string.h>

#include <cmath>
#include <limits>
#include <optional>
#include <vector>

namespace zr::detail {
namespace {

// A dictionary takes up to three levels of JSON, of which there may be 512.
constexpr int deepestNesting = 128;

/// The shape of the whole; a later one would have another number.
constexpr NSInteger formatVersion = 1;

constexpr std::string_view hexDigits = "0123456789abcdef";

std::string hexText(std::string_view bytes) {
    std::string text;
    text.reserve(2 * bytes.size());
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        text += hexDigits[value / 16];
        text += hexDigits[value % 16];
    }
    return text;
}

std::optional<std::string> bytesOfHex(std::string_view text) {
    if (text.size() % 2 != 0) {
        return std::nullopt;
    }
    std::string bytes;
    bytes.reserve(text.size() / 2);
    for (std::size_t i = 0; i < text.size(); i += 2) {
        const std::size_t high = hexDigits.find(text[i]);
        const std::size_t low = hexDigits.find(text[i + 1]);
        if (high == std::string_view::npos || low == std::string_view::npos) {
            return std::nullopt;
        }
        bytes += static_cast<char>(high * 16 + low);
    }
    return bytes;
}

std::optional<double> doubleOfText(NSString* text) {
    double value = doubleValueOfText(text->view());
    if (text->view() == u"nan") {
        value = std::numeric_limits<double>::quiet_NaN();
    } else if (text->view() == u"inf") {
        value = std::numeric_limits<double>::infinity();
    } else if (text->view() == u"-inf") {
        value = -std::numeric_limits<double>::infinity();
    }
    return textOfDouble(value) == text->utf8() ? std::optional(value) : std::nullopt;
}

/// Half a surrogate pair has no UTF-8 form, and therefore no place in JSON.
bool isUnicode(NSString* text) {
    return NSString::fromUtf8(text->utf8())->view() == text->view();
}

id copied(NSObject* value, int depth);

id copiedArray(NSArray* array, int depth) {
    std::vector<id> elements;
    elements.reserve(array->count());
    for (const id& element : array->elements()) {
        id copy = copied(element, depth + 1);
        if (!copy) {
            return {};
        }
        elements.push_back(std::move(copy));
    }
    return NSArray::fromElements(std::move(elements));
}

id copiedDictionary(NSDictionary* original, int depth) {
    const auto entries = NSMutableDictionary::dictionary();
    for (const id& key : original) {
        auto* const name = cast<NSString>(key);
        const id value = name ? copied(original->peek(key), depth + 1) : id();
        if (!value) {
            return {};
        }
        entries->setObject_forKey(value, plainString(name));
    }
    return entries->copy();
}

id copied(NSObject* value, int depth) {
    // Also the end of a collection that holds itself.
    if (!value || depth > deepestNesting) {
        return {};
    }
    if (auto* const text = cast<NSString>(value)) {
        return plainString(text);
    }
    if (cast<NSNumber>(value)) {
        return id(value);
    }
    if (auto* const date = cast<NSDate>(value)) {
        return NSDate::dateWithTimeIntervalSinceReferenceDate(date->timeIntervalSinceReferenceDate());
    }
    if (auto* const data = cast<NSData>(value)) {
        return NSData::fromBytes(data->view());
    }
    if (auto* const list = cast<NSArray>(value)) {
        return copiedArray(list, depth);
    }
    if (auto* const entries = cast<NSDictionary>(value)) {
        return copiedDictionary(entries, depth);
    }
    return {};
}

id tagged(NSString* type, NSObject* content) {
    return dictionary({{type, content}});
}

id encoded(NSObject* value);

id encodedNumber(NSNumber* number) {
    if (!number->isFractional()) {
        return number;
    }
    if (auto* const decimal = cast<NSDecimalNumber>(number)) {
        return tagged("decimal"_ns, NSString::fromUtf8(decimalText(decimal->decimal())));
    }
    if (*number->objCType() == 'f') {
        return tagged("float"_ns, NSString::fromUtf8(textOfFloat(number->floatValue())));
    }
    return tagged("double"_ns, NSString::fromUtf8(textOfDouble(number->doubleValue())));
}

id encodedString(NSString* text) {
    if (isUnicode(text)) {
        return text;
    }
    std::string bytes;
    for (const char16_t unit : text->view()) {
        bytes += static_cast<char>(unit >> 8);
        bytes += static_cast<char>(unit & 0xFF);
    }
    return tagged("utf16"_ns, NSString::fromUtf8(hexText(bytes)));
}

id encodedDictionary(NSDictionary* values) {
    const auto keysAndValues = NSMutableDictionary::dictionary();
    for (const id& key : values) {
        if (!isUnicode(cast<NSString>(key))) {
            // Such a key cannot be one of an object's, so all entries become pairs.
            std::vector<id> pairs;
            for (const id& pairKey : values) {
                pairs.push_back(array({encoded(pairKey), encoded(values->peek(pairKey))}));
            }
            return tagged("entries"_ns, NSArray::fromElements(std::move(pairs)));
        }
        keysAndValues->setObject_forKey(encoded(values->peek(key)), key);
    }
    return tagged("dictionary"_ns, keysAndValues);
}

id encoded(NSObject* value) {
    if (auto* const text = cast<NSString>(value)) {
        return encodedString(text);
    }
    if (auto* const number = cast<NSNumber>(value)) {
        return encodedNumber(number);
    }
    if (auto* const date = cast<NSDate>(value)) {
        return tagged("date"_ns, NSString::fromUtf8(textOfDouble(date->timeIntervalSinceReferenceDate())));
    }
    if (auto* const data = cast<NSData>(value)) {
        return tagged("data"_ns, NSString::fromUtf8(hexText(data->view())));
    }
    if (auto* const list = cast<NSArray>(value)) {
        std::vector<id> elements;
        for (const id& element : list) {
            elements.push_back(encoded(element));
        }
        return NSArray::fromElements(std::move(elements));
    }
    return encodedDictionary(cast<NSDictionary>(value));
}

// What follows gives null for what `encoded` cannot have made.

id decoded(NSObject* json);

id decodedDictionary(NSDictionary* json) {
    const auto entries = NSMutableDictionary::dictionary();
    for (const id& key : json) {
        const id value = decoded(json->peek(key));
        if (!value) {
            return {};
        }
        entries->setObject_forKey(value, key);
    }
    return entries->copy();
}

id decodedPairs(NSArray* json) {
    const auto entries = NSMutableDictionary::dictionary();
    for (const id& element : json) {
        auto* const pair = cast<NSArray>(element);
        if (!pair || pair->count() != 2) {
            return {};
        }
        const id key = decoded(pair->firstObject());
        const id value = decoded(pair->lastObject());
        if (!cast<NSString>(key) || !value) {
            return {};
        }
        entries->setObject_forKey(value, key);
    }
    return entries->copy();
}

id decodedDecimal(NSString* text) {
    const NSDecimal value = decimalFromText(text->view());
    return decimalText(value) == text->utf8() ? id(NSDecimalNumber::decimalNumberWithDecimal(value)) : id();
}

id decodedUtf16(std::string_view bytes) {
    if (bytes.size() % 2 != 0) {
        return {};
    }
    std::u16string text;
    for (std::size_t i = 0; i < bytes.size(); i += 2) {
        text +=
            static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) << 8 | static_cast<unsigned char>(bytes[i + 1]));
    }
    return NSString::fromUtf16(std::move(text));
}

/// A value that is written as text, by the name of its type.
id decodedText(std::u16string_view type, NSString* text) {
    if (type == u"decimal") {
        return decodedDecimal(text);
    }
    if (type == u"data" || type == u"utf16") {
        const auto bytes = bytesOfHex(text->utf8());
        if (!bytes) {
            return {};
        }
        return type == u"data" ? id(NSData::fromBytes(*bytes)) : decodedUtf16(*bytes);
    }
    const auto value = doubleOfText(text);
    if (value && type == u"double") {
        return box(*value);
    }
    if (value && type == u"float") {
        const float narrow = std::isfinite(*value) ? floatValueOfText(text->view()) : static_cast<float>(*value);
        return textOfFloat(narrow) == text->utf8() ? id(box(narrow)) : id();
    }
    return value && type == u"date" ? id(NSDate::dateWithTimeIntervalSinceReferenceDate(*value)) : id();
}

id decodedTagged(NSDictionary* json) {
    if (json->count() != 1) {
        return {};
    }
    const Ref<NSArray> keys = json->allKeys();
    const std::u16string_view type = cast<NSString>(keys->firstObject().get())->view();
    NSObject* const content = json->peek(keys->firstObject());
    if (type == u"dictionary") {
        auto* const entries = cast<NSDictionary>(content);
        return entries ? decodedDictionary(entries) : id();
    }
    if (type == u"entries") {
        auto* const pairs = cast<NSArray>(content);
        return pairs ? decodedPairs(pairs) : id();
    }
    auto* const text = cast<NSString>(content);
    return text ? decodedText(type, text) : id();
}

id decoded(NSObject* json) {
    if (cast<NSString>(json) || cast<NSNumber>(json)) {
        return id(json);
    }
    if (auto* const list = cast<NSArray>(json)) {
        std::vector<id> elements;
        for (const id& element : list) {
            id value = decoded(element);
            if (!value) {
                return {};
            }
            elements.push_back(std::move(value));
        }
        return NSArray::fromElements(std::move(elements));
    }
    auto* const object = cast<NSDictionary>(json);
    return object ? decodedTagged(object) : id();
}

} // namespace

Ref<NSString> plainString(NSString* text) {
    return object_getClass(text) == NSString::classObject() ? Ref<NSString>(text) : NSString::fromUtf16(text->view());
}

id propertyListCopy(NSObject* value) {
    return copied(value, 0);
}

std::string propertyListText(NSDictionary* values) {
    const auto whole = dictionary({{"version"_ns, box(formatVersion)}, {"values"_ns, encoded(values)}});
    return NSJSONSerialization::textWithObject(whole, NSJSONWritingPrettyPrinted | NSJSONWritingSortedKeys, nullptr);
}

Ref<NSDictionary> propertyListFromText(std::string_view text) {
    const id json = NSJSONSerialization::objectWithText(text, 0, nullptr);
    auto* const whole = cast<NSDictionary>(json);
    if (!whole || !box(formatVersion)->isEqual(whole->peek("version"_ns))) {
        return {};
    }
    const id values = decoded(whole->peek("values"_ns));
    return Ref<NSDictionary>(cast<NSDictionary>(values));
}

} // namespace zr::detail
