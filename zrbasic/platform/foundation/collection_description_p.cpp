#include <zrbasic/platform/foundation/collection_description_p.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/set.h>
#include <zrbasic/platform/foundation/string.h>

#include <algorithm>
#include <cstdio>

namespace zr::detail {

namespace {

/// The collections that a description is inside of, from the innermost outwards.
struct Enclosing {
    const NSObject* collection;
    const Enclosing* outer;
};

bool isPlain(std::u16string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char16_t c) {
        return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
    });
}

void appendFormatted(std::u16string& text, const char* format, unsigned value) {
    char piece[16];
    const int length = std::snprintf(piece, sizeof piece, format, value);
    text.append(piece, piece + length);
}

void appendQuoted(std::u16string& text, std::u16string_view contents) {
    constexpr std::string_view escaped = "\a\b\t\n\v\f\r";
    constexpr std::u16string_view letters = u"abtnvfr";
    text += u'"';
    for (const char16_t c : contents) {
        if (c == u'"' || c == u'\\') {
            text += u'\\';
            text += c;
        } else if (c >= 0x20 && c < 0x7F) {
            text += c;
        } else if (const auto place = c < 0x20 ? escaped.find(static_cast<char>(c)) : escaped.npos;
                   place != escaped.npos) {
            text += u'\\';
            text += letters[place];
        } else if (c < 0x80) {
            appendFormatted(text, "\\%03o", c);
        } else {
            appendFormatted(text, "\\U%04x", c);
        }
    }
    text += u'"';
}

class Describer {
  public:
    void append(const NSObject* object, std::size_t level, const Enclosing* enclosing) {
        const auto* const array = cast<NSArray>(object);
        const auto* const dictionary = cast<NSDictionary>(object);
        const auto* const set = cast<NSSet>(object);
        if (!array && !dictionary && !set) {
            appendOther(object);
            return;
        }
        for (const Enclosing* outer = enclosing; outer; outer = outer->outer) {
            if (outer->collection == object) {
                m_text += u"...";
                return;
            }
        }
        const Enclosing inside{object, enclosing};
        indent(level);
        if (array) {
            m_text += u"(\n";
            appendList(array->elements(), level, &inside);
            m_text += u')';
        } else if (dictionary) {
            m_text += u"{\n";
            appendEntries(*dictionary, level, &inside);
            m_text += u'}';
        } else {
            std::vector<id> members;
            for (const ObjectTable::Entry& entry : set->table().entries()) {
                if (entry.key) {
                    members.push_back(entry.key);
                }
            }
            m_text += u"{(\n";
            appendList(members, level, &inside);
            m_text += u")}";
        }
    }

    [[nodiscard]] std::u16string_view text() const { return m_text; }

  private:
    void indent(std::size_t level) { m_text.append(4 * level, u' '); }

    void appendOther(const NSObject* object) {
        const Ref<NSString> own = object->description();
        const std::u16string_view contents = own ? own->view() : std::u16string_view();
        if (isPlain(contents)) {
            m_text += contents;
        } else {
            appendQuoted(m_text, contents);
        }
    }

    /// Also writes the indentation of the closing bracket.
    void appendList(std::span<const id> elements, std::size_t level, const Enclosing* enclosing) {
        for (std::size_t i = 0; i < elements.size(); ++i) {
            indent(level + 1);
            append(elements[i], level + 1, enclosing);
            m_text += i + 1 < elements.size() ? u",\n" : u"\n";
        }
        indent(level);
    }

    void appendEntries(const NSDictionary& dictionary, std::size_t level, const Enclosing* enclosing) {
        std::vector<const ObjectTable::Entry*> entries;
        for (const ObjectTable::Entry& entry : dictionary.table().entries()) {
            if (entry.key) {
                entries.push_back(&entry);
            }
        }
        if (std::all_of(entries.begin(), entries.end(), [](const auto* entry) { return cast<NSString>(entry->key); })) {
            std::sort(entries.begin(), entries.end(), [](const auto* a, const auto* b) {
                return cast<NSString>(a->key)->view() < cast<NSString>(b->key)->view();
            });
        }
        for (const ObjectTable::Entry* const entry : entries) {
            indent(level + 1);
            append(entry->key, level + 1, enclosing);
            m_text += u" = ";
            append(entry->value, level + 1, enclosing);
            m_text += u";\n";
        }
        indent(level);
    }

    std::u16string m_text;
};

} // namespace

Ref<NSString> describeCollection(const NSObject* collection) {
    Describer describer;
    describer.append(collection, 0, nullptr);
    return NSString::fromUtf16(describer.text());
}

void requireSelector(const NSObject* collection, const char* operation, SEL selector) {
    if (!selector) {
        NSException::raise(NSInvalidArgumentException, "*** -[" + collection->nativeClass()->name() + ' ' + operation +
                                                           "]: selector cannot be NULL");
    }
}

} // namespace zr::detail
