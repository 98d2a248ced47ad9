#include <zrbasic/platform/foundation/json_writer_p.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/json_reader_p.h>
#include <zrbasic/platform/foundation/json_serialization.h>
#include <zrbasic/platform/foundation/json_text_p.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/string.h>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace zr::detail {

namespace {

class Writer {
  public:
    Writer(NSUInteger options, std::string& json) : m_options(options), m_json(json) {}

    void writeRoot(NSObject* object);
    [[nodiscard]] std::string& fault() { return m_fault; }

  private:
    using Field = std::pair<NSString*, NSObject*>;

    void write(NSObject* object);
    void writeNumber(const NSNumber& number);
    void writeString(const NSString& string);
    void writeArray(const NSArray& array);
    void writeDictionary(const NSDictionary& dictionary);
    [[nodiscard]] std::vector<Field> fieldsOf(const NSDictionary& dictionary);

    template <class Elements, class Function>
    void writeContainer(char open, const Elements& elements, char close, const Function& writeElement);
    void breakLine();
    void fail(const char* reason);

    NSUInteger m_options;
    std::string& m_json;
    std::string m_fault;
    unsigned m_depth = 0;
};

void Writer::fail(const char* reason) {
    if (m_fault.empty()) {
        m_fault = reason;
    }
}

void Writer::writeRoot(NSObject* object) {
    const bool isContainer = cast<NSArray>(object) || cast<NSDictionary>(object);
    if (!object) {
        fail("there is no object");
    } else if (!isContainer && !(m_options & NSJSONWritingFragmentsAllowed)) {
        fail("the object is neither an array nor a dictionary");
    } else {
        write(object);
    }
}

void Writer::write(NSObject* object) {
    if (const auto* const string = cast<NSString>(object)) {
        writeString(*string);
    } else if (const auto* const number = cast<NSNumber>(object)) {
        writeNumber(*number);
    } else if (const auto* const dictionary = cast<NSDictionary>(object)) {
        writeDictionary(*dictionary);
    } else if (const auto* const array = cast<NSArray>(object)) {
        writeArray(*array);
    } else if (isNull(object)) {
        m_json += "null";
    } else {
        m_fault = "JSON has no form for an object of class " + object->class_()->name();
    }
}

void Writer::writeNumber(const NSNumber& number) {
    if (number.isBoolean()) {
        m_json += number.boolValue() ? "true" : "false";
    } else if (!std::isfinite(number.doubleValue())) {
        fail("JSON has no form for NaN and infinities");
    } else {
        m_json += number.stringValue()->utf8();
    }
}

void Writer::writeString(const NSString& string) {
    if (!appendJsonString(string.view(), m_json)) {
        fail("a string holds half a surrogate pair");
    }
}

void Writer::breakLine() {
    if (m_options & NSJSONWritingPrettyPrinted) {
        m_json += '\n';
        m_json.append(std::size_t(2) * m_depth, ' ');
    }
}

template <class Elements, class Function>
void Writer::writeContainer(char open, const Elements& elements, char close, const Function& writeElement) {
    // Also what ends a container that holds itself.
    if (m_depth == jsonDepthLimit) {
        fail("the object is nested too deeply");
        return;
    }
    m_json += open;
    ++m_depth;
    bool isFirst = true;
    for (const auto& element : elements) {
        if (!isFirst) {
            m_json += ',';
        }
        isFirst = false;
        breakLine();
        writeElement(element);
        if (!m_fault.empty()) {
            return;
        }
    }
    --m_depth;
    if (!isFirst) {
        breakLine();
    }
    m_json += close;
}

void Writer::writeArray(const NSArray& array) {
    writeContainer('[', array.elements(), ']', [this](const id& element) { write(element); });
}

std::vector<Writer::Field> Writer::fieldsOf(const NSDictionary& dictionary) {
    std::vector<Field> fields;
    fields.reserve(dictionary.count());
    for (const ObjectTable::Entry& entry : dictionary.table().entries()) {
        if (!entry.key) {
            continue;
        }
        auto* const name = cast<NSString>(entry.key);
        if (!name) {
            fail("a key is not a string");
            return {};
        }
        fields.emplace_back(name, entry.value.get());
    }
    if (m_options & NSJSONWritingSortedKeys) {
        std::sort(fields.begin(), fields.end(),
                  [](const Field& a, const Field& b) { return a.first->view() < b.first->view(); });
    }
    return fields;
}

void Writer::writeDictionary(const NSDictionary& dictionary) {
    writeContainer('{', fieldsOf(dictionary), '}', [this](const Field& field) {
        writeString(*field.first);
        m_json += m_options & NSJSONWritingPrettyPrinted ? " : " : ":";
        write(field.second);
    });
}

} // namespace

std::string writeJson(NSObject* object, NSUInteger options, std::string& json) {
    Writer writer(options, json);
    writer.writeRoot(object);
    return std::move(writer.fault());
}

} // namespace zr::detail
