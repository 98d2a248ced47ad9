#pragma once

#include <zrbasic/platform/foundation/string.h>

namespace zr::detail {

/// How a class reads or writes one key.
enum class KeyWay : std::uint8_t {
    /// Not at all.
    None,
    /// The class answers the key-value message in its own way.
    OwnMessage,
    /// An accessor that gives or takes an object.
    ObjectAccessor,
    /// An accessor that gives or takes a number; its type is in `KeyAccess::type`.
    NumberAccessor,
    /// An accessor of any other type.
    OtherAccessor,
    /// The variable, past all accessors.
    Variable,
};

struct KeyAccess {
    KeyWay way = KeyWay::None;
    /// What is given or taken: '@' for an object, the one letter of a number's type, '?' for what is neither.
    char type = '?';
    SEL selector;
    IMP implementation;
    /// The variable; for an accessor, the one that it does nothing but read or write, or null.
    Property variable = nullptr;
};

/// Found once per class and key in each thread, and again after methods changed. Keys that lead nowhere are not
/// remembered, so unknown ones cost no memory however many there are.
[[nodiscard]] KeyAccess readingOf(const Class* ofClass, NSString* key);
[[nodiscard]] KeyAccess writingOf(const Class* ofClass, NSString* key);

/// The same for a class that answers the message in its own way, and now asks for the root's answer.
[[nodiscard]] KeyAccess readingPastMessage(const Class* ofClass, NSString* key);
[[nodiscard]] KeyAccess writingPastMessage(const Class* ofClass, NSString* key);

/// What classes that do not read and write keys in their own way run for `valueForKey:` and `setValue:forKey:`.
id rootValueForKey(NSObject* self, SEL selector, NSObject* key);
void rootSetValueForKey(NSObject* self, SEL selector, NSObject* value, NSObject* key);

/// Sets a value the given way.
void writeThrough(NSObject* self, NSObject* value, NSString* key, const KeyAccess& access);

/// `key` with its first code unit in upper case, between `prefix` and `suffix`.
[[nodiscard]] std::string accessorName(std::string_view prefix, std::u16string_view key, std::string_view suffix = {});

} // namespace zr::detail
