#include <zrbasic/platform/foundation/key_value_access_p.h>

#include <zrbasic/platform/foundation/key_value_coding.h>
#include <zrbasic/platform/foundation/per_thread_p.h>
#include <zrbasic/platform/foundation/unicode_p.h>
#include <zrbasic/platform/runtime/runtime_p.h>

#include <array>
#include <cstring>
#include <initializer_list>

namespace zr::detail {

namespace {

/// What one thread knows about keys: a few places per pair of class and key, the oldest of which gives way.
class AccessCache {
  public:
    using Resolve = KeyAccess (*)(const Class* ofClass, std::u16string_view key);

    KeyAccess find(const Class* ofClass, NSString* key, Resolve resolve) {
        const NSUInteger hash = key->hash();
        const std::u16string_view text = key->view();
        const std::uint64_t generation = Runtime::generation();
        Set& set = m_sets[((reinterpret_cast<std::uintptr_t>(ofClass) >> 6) ^ hash ^ (hash >> 17)) % sets];
        for (const Entry& entry : set.entries) {
            if (entry.ofClass == ofClass && entry.hash == hash && entry.generation == generation &&
                entry.key.size() == text.size() &&
                std::memcmp(entry.key.data(), text.data(), text.size() * sizeof(char16_t)) == 0) [[likely]] {
                return entry.access;
            }
        }
        // The generation was read before looking: whatever changes meanwhile makes the entry stale, never wrong.
        const KeyAccess access = resolve(ofClass, text);
        if (access.way != KeyWay::None && access.way != KeyWay::OwnMessage) {
            set.entries[set.next] = {ofClass, generation, hash, std::u16string(text), access};
            set.next = (set.next + 1) % ways;
        }
        return access;
    }

  private:
    static constexpr std::size_t sets = 64;
    static constexpr std::size_t ways = 4;

    struct Entry {
        const Class* ofClass = nullptr;
        std::uint64_t generation = 0;
        NSUInteger hash = 0;
        std::u16string key;
        KeyAccess access;
    };
    struct Set {
        std::array<Entry, ways> entries;
        std::size_t next = 0;
    };

    std::array<Set, sets> m_sets;
};

struct ThreadCaches {
    AccessCache reading;
    AccessCache writing;
};

char typeOf(const char* encoding) {
    if (*encoding == '#' || (*encoding == '@' && encoding[1] != '?')) {
        return '@';
    }
    return *encoding != '\0' && std::strchr("BcCsSiIqQfd", *encoding) ? *encoding : '?';
}

KeyAccess accessorAccess(SEL selector, IMP implementation, const char* encoding) {
    KeyAccess access;
    access.type = typeOf(encoding);
    access.way = access.type == '@'   ? KeyWay::ObjectAccessor
                 : access.type == '?' ? KeyWay::OtherAccessor
                                      : KeyWay::NumberAccessor;
    access.selector = selector;
    access.implementation = implementation;
    return access;
}

/// The object property whose declared accessor `selector` is, when nothing else would run in its place.
Property untouchedProperty(const Class* ofClass, std::u16string_view key, SEL selector) {
    if (!ofClass->isDirect()) {
        return nullptr;
    }
    const Property property = class_getProperty(ofClass, utf8FromUtf16(key));
    const bool fits =
        property && property->readObject && (property->getter == selector || property->setter == selector);
    return fits ? property : nullptr;
}

Property variableNamed(const Class* ofClass, std::string_view name) {
    for (const Class* searched = ofClass; searched; searched = searched->parent()) {
        for (const Property property : class_copyPropertyList(searched)) {
            if (property->variable == name && property->read) {
                return property;
            }
        }
    }
    return nullptr;
}

KeyAccess variableAccess(const Class* ofClass, std::u16string_view key) {
    KeyAccess access;
    if (!send<bool>(const_cast<Class*>(ofClass), "accessInstanceVariablesDirectly"_sel)) {
        return access;
    }
    const std::string plain = utf8FromUtf16(key);
    for (const std::string& name : {'_' + plain, accessorName("_is", key), plain, accessorName("is", key)}) {
        if (const Property property = variableNamed(ofClass, name)) {
            access.way = KeyWay::Variable;
            access.variable = property;
            access.type = property->readObject ? '@' : typeOf(property->attributes.front().value.c_str());
            return access;
        }
    }
    return access;
}

KeyAccess searchReading(const Class* ofClass, std::u16string_view key) {
    if (key.empty()) {
        return {};
    }
    const std::string plain = utf8FromUtf16(key);
    for (const std::string& name :
         {accessorName("get", key), plain, accessorName("is", key), accessorName("_get", key), '_' + plain}) {
        // Only looked for, never made: a reply full of strange keys must not leave names behind.
        const SEL selector = sel_findName(name);
        const IMP implementation = class_getMethodImplementation(ofClass, selector);
        if (implementation && implementation.type->argumentCount == 0 && *implementation.type->encoding != 'v') {
            KeyAccess access = accessorAccess(selector, implementation, implementation.type->encoding);
            access.variable = untouchedProperty(ofClass, key, selector);
            return access;
        }
    }
    return variableAccess(ofClass, key);
}

KeyAccess searchWriting(const Class* ofClass, std::u16string_view key) {
    if (key.empty()) {
        return {};
    }
    for (const std::string& name : {accessorName("set", key, ":"), accessorName("_set", key, ":")}) {
        const SEL selector = sel_findName(name);
        const IMP implementation = class_getMethodImplementation(ofClass, selector);
        if (implementation && implementation.type->argumentCount == 1) {
            KeyAccess access = accessorAccess(selector, implementation, implementation.type->argumentEncodings[0]);
            if (*implementation.type->encoding != 'v') {
                // Sets and gives something back: called through its own type, not the usual one.
                access.way = KeyWay::OtherAccessor;
            }
            access.variable = untouchedProperty(ofClass, key, selector);
            return access;
        }
    }
    return variableAccess(ofClass, key);
}

KeyAccess resolve(const Class* ofClass, std::u16string_view key, SEL message, const IMP& rootAnswer,
                  KeyAccess (*search)(const Class*, std::u16string_view)) {
    if (lookUp(ofClass, message) == rootAnswer) {
        return search(ofClass, key);
    }
    KeyAccess access;
    access.way = KeyWay::OwnMessage;
    return access;
}

KeyAccess resolveReading(const Class* ofClass, std::u16string_view key) {
    return resolve(ofClass, key, "valueForKey:"_sel, imp(&rootValueForKey), &searchReading);
}

KeyAccess resolveWriting(const Class* ofClass, std::u16string_view key) {
    return resolve(ofClass, key, "setValue:forKey:"_sel, imp(&rootSetValueForKey), &searchWriting);
}

} // namespace

std::string accessorName(std::string_view prefix, std::u16string_view key, std::string_view suffix) {
    std::string name(prefix);
    if (!key.empty()) {
        name += utf8FromUtf16(uppercased(key.substr(0, 1)) + std::u16string(key.substr(1)));
    }
    name += suffix;
    return name;
}

KeyAccess readingOf(const Class* ofClass, NSString* key) {
    ThreadCaches* const caches = PerThread<ThreadCaches>::ensure();
    return caches ? caches->reading.find(ofClass, key, &resolveReading) : resolveReading(ofClass, key->view());
}

KeyAccess writingOf(const Class* ofClass, NSString* key) {
    ThreadCaches* const caches = PerThread<ThreadCaches>::ensure();
    return caches ? caches->writing.find(ofClass, key, &resolveWriting) : resolveWriting(ofClass, key->view());
}

KeyAccess readingPastMessage(const Class* ofClass, NSString* key) {
    return searchReading(ofClass, key->view());
}

KeyAccess writingPastMessage(const Class* ofClass, NSString* key) {
    return searchWriting(ofClass, key->view());
}

ObjectGetter objectGetter(const Class* ofClass, NSString* key) {
    if (ofClass && key) {
        const KeyAccess access = readingOf(ofClass, key);
        if (access.way == KeyWay::ObjectAccessor) {
            return {access.selector, reinterpret_cast<id (*)(NSObject*, SEL)>(access.implementation.function)};
        }
    }
    return {};
}

std::vector<Method> settersForKey(const Class* ofClass, NSString* key) {
    std::vector<Method> setters;
    if (ofClass && key && key->length() != 0) {
        for (const char* const prefix : {"set", "_set"}) {
            const Method method =
                class_getInstanceMethod(ofClass, sel_findName(accessorName(prefix, key->view(), ":")));
            if (method && method_getImplementation(method).type->argumentCount == 1) {
                setters.push_back(method);
            }
        }
    }
    return setters;
}

} // namespace zr::detail
