#include <zrbasic/collections/url_query.h>

#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/per_thread_p.h>
#include <zrbasic/platform/foundation/random.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/foundation/text_search_p.h>
#include <zrbasic/platform/foundation/unicode_p.h>
#include <zrbasic/platform/foundation/url.h>
#include <zrbasic/platform/foundation/url_parts_p.h>
#include <zrbasic/platform/foundation/url_request.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace zr {

namespace {

/// An object as "%@" writes it.
Ref<NSString> written(NSObject* object) {
    if (auto* const string = cast<NSString>(object)) {
        return Ref<NSString>(string);
    }
    Ref<NSString> text = object->description();
    return text ? text : "(null)"_ns;
}

struct Parameter {
    Ref<NSString> name;
    Ref<NSString> value;
};

struct Parameters {
    /// In the dictionary's order.
    std::vector<Parameter> list;
    /// Whether two of them may have the same name; the keys of a dictionary differ, but may be written alike.
    bool mayRepeat = false;
    /// An estimate for the room that they take: their units and two signs each.
    std::size_t size = 0;
};

Parameters parametersOf(const NSDictionary& entries) {
    Parameters parameters;
    parameters.list.reserve(entries.count());
    const std::vector<detail::ObjectTable::Entry>& table = entries.table().entries();
    // Descriptions are anybody's code and may change the dictionary, so nothing of it is held across them.
    for (std::size_t i = 0; i < table.size(); ++i) {
        const id key = table[i].key;
        const id value = table[i].value;
        if (!key) {
            continue;
        }
        Parameter parameter{written(key), nullptr};
        parameter.value = written(value);
        parameters.mayRepeat = parameters.mayRepeat || key != parameter.name;
        parameters.size += parameter.name->length() + parameter.value->length() + 2;
        parameters.list.push_back(std::move(parameter));
    }
    return parameters;
}

bool isEmpty(const NSDictionary* entries) {
    return entries == nullptr || entries->count() == 0;
}

/// Leaves one parameter of each name: where the first of them stood, with the value of the last.
void mergeSameNames(std::vector<Parameter>& list) {
    std::unordered_map<std::u16string_view, std::size_t> places;
    std::size_t count = 0;
    for (Parameter& parameter : list) {
        const auto [place, isNew] = places.emplace(parameter.name->view(), count);
        if (isNew) {
            std::swap(list[count++], parameter);
        } else {
            list[place->second].value = parameter.value;
        }
    }
    list.resize(count);
}

/// The sorted parameters, joined and not escaped.
std::u16string queryTextOf(const NSDictionary& entries) {
    Parameters parameters = parametersOf(entries);
    if (parameters.mayRepeat) {
        mergeSameNames(parameters.list);
    }
    std::stable_sort(parameters.list.begin(), parameters.list.end(), [](const Parameter& a, const Parameter& b) {
        return detail::compareTexts(a.name->view(), b.name->view()) < 0;
    });
    std::u16string query;
    query.reserve(parameters.size);
    for (const Parameter& parameter : parameters.list) {
        if (!query.empty()) {
            query += u'&';
        }
        query += parameter.name->view();
        query += u'=';
        query += parameter.value->view();
    }
    if (!detail::isAscii(query) && !detail::isWellFormed(query)) {
        // A query holds its text in UTF-8, which has U+FFFD for a lone surrogate.
        query = detail::utf16FromUtf8Replacing(detail::utf8FromUtf16(query));
    }
    return query;
}

/// A URL's text, taken apart as URL components do. What is not replaced stays as it stands there.
///
/// Works on the text because the components' items would be made only to be written out again.
class Address {
  public:
    explicit Address(NSURL* url) : m_text(url ? url->absoluteString() : nullptr) {
        m_isUsable = m_text && detail::isStrictUrl(m_text->view());
        if (m_isUsable) {
            m_parts = detail::splitUrl(m_text->view());
        }
    }

    /// Whether there is a URL, and one that has components.
    [[nodiscard]] bool isUsable() const { return m_isUsable; }

    [[nodiscard]] std::u16string_view query() const { return m_parts.query.value_or(std::u16string_view()); }

    /// The URL with another query, escaped already, and with `fragment`, if any, in place of its own.
    [[nodiscard]] Ref<NSURL> rebuilt(std::optional<std::u16string_view> query, const NSDictionary* fragment) const;

  private:
    Ref<NSString> m_text;
    detail::UrlParts m_parts;
    bool m_isUsable;
};

Ref<NSURL> Address::rebuilt(std::optional<std::u16string_view> query, const NSDictionary* fragment) const {
    const std::u16string_view whole = m_text->view();
    const auto pathEnd = static_cast<std::size_t>(m_parts.path.data() + m_parts.path.size() - whole.data());
    const std::u16string fragmentText = fragment ? queryTextOf(*fragment) : std::u16string();
    std::u16string text;
    text.reserve(whole.size() + query.value_or(u"").size() + fragmentText.size() + 2);
    text += whole.substr(0, pathEnd);
    if (!query) {
        query = m_parts.query;
    }
    if (query) {
        text += u'?';
        text += *query;
    }
    if (fragment) {
        text += u'#';
        detail::appendEncoded(text, fragmentText, detail::queryCharacters);
    } else if (m_parts.fragment) {
        text += u'#';
        text += *m_parts.fragment;
    }
    return detail::urlOfCheckedText(NSString::fromUtf16(std::move(text)));
}

/// The names that were read last on a thread. An application reads the same few over and over; sharing them saves a
/// quarter of the time that reading takes.
class NameCache {
  public:
    [[nodiscard]] static Ref<NSString> string(std::u16string_view name) {
        NameCache* const cache = name.size() <= longestName ? detail::PerThread<NameCache>::ensure() : nullptr;
        if (!cache) {
            return NSString::fromUtf16(name);
        }
        Ref<NSString>& known = cache->m_names[detail::hashUnits(name) % cache->m_names.size()];
        if (!known || known->view() != name) {
            known = NSString::fromUtf16(name);
        }
        return known;
    }

  private:
    static constexpr std::size_t longestName = 24;

    std::array<Ref<NSString>, 64> m_names;
};

Ref<NSMutableDictionary> paramsOfAscii(std::u16string_view content) {
    // Room for parameters of a usual length; a few more or less cost little.
    Ref<NSMutableDictionary> params = NSMutableDictionary::dictionaryWithCapacity(content.size() / 20 + 1);
    detail::walkQuery(content, [&](std::u16string_view name, std::optional<std::u16string_view> value) {
        if (value && detail::findCharacter(*value, u'=') == std::u16string_view::npos) {
            params->setObject_forKey(NSString::fromUtf16(*value), NameCache::string(name));
        }
    });
    return params;
}

/// Null for no text and for an empty one.
Ref<NSMutableDictionary> paramsOf(std::optional<std::u16string_view> content) {
    return content && !content->empty() ? paramsOfAscii(*content) : nullptr;
}

bool isRandomName(std::u16string_view name) {
    constexpr std::u16string_view randomName = u"random";
    return name == randomName || (name.size() > randomName.size() && detail::percentDecoded(name) == randomName);
}

/// The query without its first random item and those that equal it, and with a new one at the end.
std::u16string withFreshRandomItem(std::u16string_view query) {
    std::u16string fresh;
    fresh.reserve(query.size() + 20);
    bool isFirst = true;
    bool isKnown = false;
    std::optional<std::u16string> staleValue;
    detail::walkQuery(query, [&](std::u16string_view name, std::optional<std::u16string_view> value) {
        if (isRandomName(name)) {
            const auto decodedValue = value ? detail::percentDecoded(*value) : std::nullopt;
            if (!isKnown) {
                isKnown = true;
                staleValue = decodedValue;
            }
            if (decodedValue == staleValue) {
                return;
            }
        }
        detail::appendRewrittenItem(fresh, isFirst, name, value);
    });
    std::array<char, 10> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), arc4random()).ptr;
    detail::appendQueryItem(fresh, isFirst, u"random", std::u16string(digits.data(), end));
    return fresh;
}

} // namespace

ZR_GROUP(NSDictionary, ZRXHelper) {
    is.method<&URLQueryString>("URLQueryString");
}

ZR_GROUP(NSURL, ZRXHelper) {
    is.method<&appendQueryItemsFromDictionary>("appendQueryItemsFromDictionary:");
    is.method<&resetFragmentWithDictionary>("resetFragmentWithDictionary:");
    is.method<&resetRandomQueryItem>("resetRandomQueryItem");
    is.method<&resetRandomURLAndFragmentWithDictionary>("resetRandomURLAndFragmentWithDictionary:");
    is.method<&getParamsFromUrlContent>("getParamsFromUrlContent:");
    is.method<&queryParams>("queryParams");
    is.method<&fragmentParams>("fragmentParams");
}

ZR_GROUP(NSMutableURLRequest, ZRXHelper) {
    is.method<&appendHeaderFields>("appendHeaderFields:");
}

Ref<NSString> URLQueryString(NSDictionary* self) {
    return self ? NSString::fromUtf16(queryTextOf(*self)) : nullptr;
}

Ref<NSURL> appendQueryItemsFromDictionary(NSURL* self, NSDictionary* parameters) {
    if (isEmpty(parameters)) {
        return Ref<NSURL>(self);
    }
    const Address address(self);
    if (!address.isUsable()) {
        return nullptr;
    }
    const Parameters added = parametersOf(*parameters);
    std::u16string query;
    query.reserve(address.query().size() + added.size);
    bool isFirst = true;
    detail::walkQuery(address.query(), [&](std::u16string_view name, std::optional<std::u16string_view> value) {
        detail::appendRewrittenItem(query, isFirst, name, value);
    });
    for (const Parameter& parameter : added.list) {
        detail::appendQueryItem(query, isFirst, parameter.name->view(), parameter.value->view());
    }
    return address.rebuilt(query, nullptr);
}

Ref<NSURL> resetFragmentWithDictionary(NSURL* self, NSDictionary* parameters) {
    if (isEmpty(parameters)) {
        return Ref<NSURL>(self);
    }
    const Address address(self);
    return address.isUsable() ? address.rebuilt(std::nullopt, parameters) : nullptr;
}

Ref<NSURL> resetRandomQueryItem(NSURL* self) {
    const Address address(self);
    return address.isUsable() ? address.rebuilt(withFreshRandomItem(address.query()), nullptr) : nullptr;
}

Ref<NSURL> resetRandomURLAndFragmentWithDictionary(NSURL* self, NSDictionary* parameters) {
    if (isEmpty(parameters)) {
        return Ref<NSURL>(self);
    }
    const Address address(self);
    return address.isUsable() ? address.rebuilt(withFreshRandomItem(address.query()), parameters) : nullptr;
}

Ref<NSMutableDictionary> getParamsFromUrlContent(NSURL* self, NSString* content) {
    if (!self || !content || content->length() == 0) {
        return nullptr;
    }
    if (detail::isAscii(content->view())) {
        return paramsOfAscii(content->view());
    }
    // A separator that a combining mark follows is none, as in all splitting of strings.
    Ref<NSMutableDictionary> params = NSMutableDictionary::dictionary();
    for (const id& piece : content->componentsSeparatedByString("&"_ns)) {
        const Ref<NSArray> parts = static_cast<NSString*>(piece.get())->componentsSeparatedByString("="_ns);
        if (parts->count() == 2) {
            params->setObject_forKey(parts->lastObject(), parts->firstObject());
        }
    }
    return params;
}

Ref<NSDictionary> queryParams(NSURL* self) {
    if (!self) {
        return nullptr;
    }
    const Ref<NSString> text = self->absoluteString();
    const detail::UrlParts parts = detail::splitUrl(text->view());
    return paramsOf(parts.isOpaque() ? std::nullopt : parts.query);
}

Ref<NSDictionary> fragmentParams(NSURL* self) {
    if (!self) {
        return nullptr;
    }
    const Ref<NSString> text = self->absoluteString();
    return paramsOf(detail::splitUrl(text->view()).fragment);
}

void appendHeaderFields(NSMutableURLRequest* self, NSDictionary* fields) {
    if (!self || isEmpty(fields)) {
        return;
    }
    const Ref<NSMutableDictionary> all = NSMutableDictionary::dictionaryWithDictionary(self->allHTTPHeaderFields());
    all->addEntriesFromDictionary(fields);
    self->setAllHTTPHeaderFields(all);
}

} // namespace zr
