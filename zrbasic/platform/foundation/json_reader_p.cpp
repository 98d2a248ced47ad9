#include <zrbasic/platform/foundation/json_reader_p.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/json_number_p.h>
#include <zrbasic/platform/foundation/json_serialization.h>
#include <zrbasic/platform/foundation/json_text_p.h>
#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/mutable_string.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/per_thread_p.h>

#include <array>
#include <cstring>
#include <optional>
#include <vector>

#include <simdjson.h>

namespace zr::detail {

namespace {

namespace ondemand = simdjson::ondemand;

/// Beyond this the buffers that a text needed are given back after it.
constexpr std::size_t mostKeptBytes = std::size_t(1) << 20;

bool isBlank(char character) {
    return character == ' ' || character == '\t' || character == '\n' || character == '\r';
}

std::string_view withoutTrailingBlanks(std::string_view text) {
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

/// The keys met last. Texts of one server name the same few fields over and over, so that most keys need neither a new
/// string nor a new hash.
class KeyCache {
  public:
    Ref<NSString> stringFor(std::string_view key) {
        if (key.size() > longestKey) {
            return NSString::fromUtf8(key);
        }
        std::size_t hash = key.size();
        for (const char character : key) {
            hash = hash * 31 + static_cast<unsigned char>(character);
        }
        Entry& entry = m_entries[hash % m_entries.size()];
        if (!entry.string || entry.text() != key) {
            entry.string = NSString::fromUtf8(key);
            entry.length = static_cast<unsigned char>(key.size());
            std::memcpy(entry.bytes, key.data(), key.size());
        }
        return entry.string;
    }

  private:
    static constexpr std::size_t longestKey = 39;

    struct Entry {
        Ref<NSString> string;
        unsigned char length = 0;
        char bytes[longestKey];

        [[nodiscard]] std::string_view text() const { return {bytes, length}; }
    };

    std::array<Entry, 256> m_entries;
};

void addField(ObjectTable& table, id name, id value) {
    const NSUInteger hash = name->hash();
    if (const ObjectTable::Entry* const earlier = table.find(name, hash)) {
        static_cast<void>(table.exchangeValue(earlier, std::move(value)));
    } else {
        table.append(std::move(name), hash, std::move(value));
    }
}

/// Reads texts one after another. The tokens come from simdjson; what they stand for is decided here, because numbers
/// must be exact, strings end as UTF-16 anyway, and a fault needs its place.
class Reader {
  public:
    id read(std::string_view text, std::size_t readable, NSUInteger options, JsonFault& fault);

  private:
    id readPadded(std::string_view text, std::size_t readable);
    id readDocument(ondemand::document& document);
    id readFragment(std::string_view text);

    id readValue(ondemand::value value);
    id readArray(ondemand::value& value);
    id readObject(ondemand::value& value);
    id readScalar(std::string_view token);
    id readString(const char* quote);
    Ref<NSString> readKey(const char* quote);

    template <class Container, class Function>
    bool readElements(Container& container, const Function& readElement);

    /// Always null, so that a fault ends a function in one line.
    std::nullptr_t fail(std::string_view reason, const char* place);
    std::nullptr_t fail(simdjson::error_code error);

    [[nodiscard]] const char* textEnd() const { return m_text.data() + m_text.size(); }

    ondemand::parser m_parser;
    ondemand::document* m_document = nullptr;
    KeyCache m_keys;
    /// What was read of the containers that are still open; each begins where its parent left off.
    std::vector<id> m_values;
    std::vector<id> m_names;
    std::u16string m_characters;
    std::string m_copy;
    std::string_view m_text;
    NSUInteger m_options = 0;
    unsigned m_depth = 0;
    JsonFault* m_fault = nullptr;
};

std::nullptr_t Reader::fail(std::string_view reason, const char* place) {
    if (m_fault->reason.empty()) {
        m_fault->reason = reason;
        const bool isInside = place >= m_text.data() && place <= textEnd();
        m_fault->offset = isInside ? static_cast<std::size_t>(place - m_text.data()) : JsonFault::nowhere;
    }
    return nullptr;
}

std::nullptr_t Reader::fail(simdjson::error_code error) {
    switch (error) {
        case simdjson::MEMALLOC:
            throw std::bad_alloc();
        case simdjson::EMPTY:
            return fail("there is no value", m_text.data());
        case simdjson::CAPACITY:
            return fail("the text is too long", nullptr);
        case simdjson::UTF8_ERROR:
            return fail("the text is not UTF-8", m_text.data() + offsetOfInvalidUtf8(m_text));
        case simdjson::UNCLOSED_STRING:
        case simdjson::UNESCAPED_CHARS:
            return fail(error == simdjson::UNCLOSED_STRING ? "a string is not closed"
                                                           : "a string holds an unescaped control character",
                        m_text.data() + offsetOfBrokenString(m_text));
        case simdjson::INCOMPLETE_ARRAY_OR_OBJECT:
            return fail("the text ends inside an array or an object", textEnd());
        default: {
            const char* place = nullptr;
            if (!m_document || m_document->current_location().get(place) != simdjson::SUCCESS) {
                place = textEnd();
            }
            return fail("a comma, a colon, a bracket or a value is missing or out of place", place);
        }
    }
}

id Reader::read(std::string_view text, std::size_t readable, NSUInteger options, JsonFault& fault) {
    m_fault = &fault;
    m_options = options;
    m_depth = 0;
    const id result = readPadded(text, readable);
    // Whatever a broken text left behind; nothing after a good one.
    m_values.clear();
    m_names.clear();
    if (text.size() > mostKeptBytes) {
        m_parser = ondemand::parser();
        m_copy = {};
        m_values = {};
        m_names = {};
        m_characters = {};
    }
    return result;
}

id Reader::readPadded(std::string_view text, std::size_t readable) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    std::size_t skipped = 0;
    if (text.substr(0, byteOrderMark.size()) == byteOrderMark) {
        skipped = byteOrderMark.size();
        text.remove_prefix(skipped);
        readable -= std::min(readable, skipped);
    }
    if (readable < text.size() + simdjson::SIMDJSON_PADDING) {
        m_copy.reserve(text.size() + simdjson::SIMDJSON_PADDING);
        m_copy.assign(text);
        m_copy.append(simdjson::SIMDJSON_PADDING, ' ');
        text = std::string_view(m_copy).substr(0, text.size());
        readable = m_copy.size();
    }
    m_text = text;
    ondemand::document document;
    id result;
    if (const auto error = m_parser.iterate(text, readable).get(document)) {
        result = fail(error);
    } else {
        m_document = &document;
        result = readDocument(document);
        m_document = nullptr;
    }
    if (!result && m_fault->offset != JsonFault::nowhere) {
        m_fault->offset += skipped;
    }
    return result;
}

id Reader::readDocument(ondemand::document& document) {
    std::size_t start = 0;
    while (start < m_text.size() && isBlank(m_text[start])) {
        ++start;
    }
    const char first = start < m_text.size() ? m_text[start] : '\0';
    if (first != '[' && first != '{') {
        return readFragment(withoutTrailingBlanks(m_text.substr(start)));
    }
    ondemand::value root;
    if (const auto error = document.get_value().get(root)) {
        return fail(error);
    }
    const id result = readValue(root);
    // There is a place to go on from only where something follows.
    const char* place = nullptr;
    if (result && document.current_location().get(place) == simdjson::SUCCESS) {
        return fail("something follows the value", place);
    }
    return result;
}

id Reader::readFragment(std::string_view text) {
    if (!(m_options & NSJSONReadingFragmentsAllowed)) {
        return fail("the text holds neither an array nor an object", text.data());
    }
    if (text.front() == '"') {
        const id result = readString(text.data());
        const std::size_t length = lengthOfJsonString(text);
        return result && length != text.size() ? id(fail("something follows the value", text.data() + length)) : result;
    }
    return readScalar(text);
}

id Reader::readValue(ondemand::value value) {
    std::string_view token = value.raw_json_token();
    // A text that ends too early can lead behind its end.
    if (token.data() < m_text.data() || token.data() >= textEnd()) {
        return fail("the text ends inside an array or an object", textEnd());
    }
    token = token.substr(0, static_cast<std::size_t>(textEnd() - token.data()));
    switch (token.front()) {
        case '[':
            return m_depth < jsonDepthLimit ? readArray(value)
                                            : id(fail("the text is nested too deeply", token.data()));
        case '{':
            return m_depth < jsonDepthLimit ? readObject(value)
                                            : id(fail("the text is nested too deeply", token.data()));
        case '"':
            return readString(token.data());
        default:
            return readScalar(withoutTrailingBlanks(token));
    }
}

template <class Container, class Function>
bool Reader::readElements(Container& container, const Function& readElement) {
    ++m_depth;
    for (auto element : container) {
        if (!readElement(element)) {
            return false;
        }
    }
    --m_depth;
    return true;
}

id Reader::readArray(ondemand::value& value) {
    ondemand::array array;
    if (const auto error = value.get_array().get(array)) {
        return fail(error);
    }
    const std::size_t first = m_values.size();
    const bool isWhole = readElements(array, [this](simdjson::simdjson_result<ondemand::value>& element) {
        ondemand::value child;
        if (const auto error = std::move(element).get(child)) {
            fail(error);
            return false;
        }
        id object = readValue(child);
        if (!object) {
            return false;
        }
        m_values.push_back(std::move(object));
        return true;
    });
    if (!isWhole) {
        return nullptr;
    }
    const auto begin = m_values.begin() + static_cast<std::ptrdiff_t>(first);
    std::vector<id> elements(std::make_move_iterator(begin), std::make_move_iterator(m_values.end()));
    m_values.erase(begin, m_values.end());
    if (m_options & NSJSONReadingMutableContainers) {
        return NSMutableArray::fromElements(std::move(elements));
    }
    return NSArray::fromElements(std::move(elements));
}

id Reader::readObject(ondemand::value& value) {
    ondemand::object object;
    if (const auto error = value.get_object().get(object)) {
        return fail(error);
    }
    const std::size_t first = m_values.size();
    const std::size_t firstName = m_names.size();
    const bool isWhole = readElements(object, [this](simdjson::simdjson_result<ondemand::field>& element) {
        ondemand::field field;
        if (const auto error = std::move(element).get(field)) {
            fail(error);
            return false;
        }
        id name = readKey(field.key().raw() - 1);
        id child = name ? readValue(field.value()) : id();
        if (!child) {
            return false;
        }
        m_names.push_back(std::move(name));
        m_values.push_back(std::move(child));
        return true;
    });
    if (!isWhole) {
        return nullptr;
    }
    const Ref<NSMutableDictionary> changeable =
        m_options & NSJSONReadingMutableContainers
            ? NSMutableDictionary::dictionaryWithCapacity(m_values.size() - first)
            : nullptr;
    ObjectTable table;
    table.reserve(changeable ? 0 : m_values.size() - first);
    for (std::size_t i = first, name = firstName; i < m_values.size(); ++i, ++name) {
        if (changeable) {
            changeable->setObject_forKey(m_values[i], m_names[name]);
        } else {
            addField(table, std::move(m_names[name]), std::move(m_values[i]));
        }
    }
    m_names.resize(firstName);
    m_values.resize(first);
    return changeable ? id(changeable) : id(NSDictionary::fromTable(std::move(table)));
}

id Reader::readScalar(std::string_view token) {
    if (token == "true" || token == "false") {
        return box(token == "true");
    }
    if (token == "null") {
        return NSNull::null();
    }
    const std::size_t length = lengthOfJsonNumber(token);
    if (length == 0) {
        return fail("a value was expected", token.data());
    }
    if (length != token.size()) {
        return fail("a number is malformed", token.data() + length);
    }
    id number = numberFromJson(token);
    return number ? number : id(fail("a number is out of range", token.data()));
}

id Reader::readString(const char* quote) {
    const char* fault = nullptr;
    m_characters.clear();
    if (!decodeJsonString(quote, m_characters, fault)) {
        return fail("a string holds an invalid escape", fault);
    }
    if (m_options & NSJSONReadingMutableLeaves) {
        return NSMutableString::fromUtf16(m_characters);
    }
    return NSString::fromUtf16(std::u16string_view(m_characters));
}

Ref<NSString> Reader::readKey(const char* quote) {
    const std::string_view raw = plainJsonString(quote);
    if (raw.data()) {
        return m_keys.stringFor(raw);
    }
    const char* fault = nullptr;
    m_characters.clear();
    if (!decodeJsonString(quote, m_characters, fault)) {
        return fail("a string holds an invalid escape", fault);
    }
    return NSString::fromUtf16(std::u16string_view(m_characters));
}

} // namespace

id readJson(std::string_view text, std::size_t readable, NSUInteger options, JsonFault& fault) {
    if (Reader* const reader = PerThread<Reader>::ensure()) {
        return reader->read(text, readable, options, fault);
    }
    return Reader().read(text, readable, options, fault);
}

} // namespace zr::detail
