#pragma once

#include <zrbasic/platform/foundation/geometry.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/class.h>

#include <iostream>
#include <string_view>
#include <type_traits>

/// What the snippets of the guides print with.
namespace zr::snippets {

inline void write(std::ostream& to, const NSObject* object) {
    to << (object ? object->description()->utf8() : "null");
}
template <class T>
void write(std::ostream& to, const Ref<T>& object) {
    write(to, static_cast<const NSObject*>(object.get()));
}
inline void write(std::ostream& to, SEL selector) {
    to << selector.name();
}
inline void write(std::ostream& to, NSPoint point) {
    to << '{' << point.x << ", " << point.y << '}';
}
inline void write(std::ostream& to, NSSize size) {
    to << '{' << size.width << ", " << size.height << '}';
}
inline void write(std::ostream& to, NSRect rect) {
    to << '{';
    write(to, rect.origin);
    to << ", ";
    write(to, rect.size);
    to << '}';
}
inline void write(std::ostream& to, bool value) {
    to << (value ? "true" : "false");
}
inline void write(std::ostream& to, std::string_view text) {
    to << text;
}
template <class T>
void write(std::ostream& to, const T& value) {
    if constexpr (std::is_convertible_v<T, std::string_view>) {
        to << std::string_view(value);
    } else if constexpr (std::is_enum_v<T>) {
        to << static_cast<long long>(value);
    } else if constexpr (std::is_convertible_v<T, const NSObject*>) {
        write(to, static_cast<const NSObject*>(value));
    } else {
        static_assert(std::is_arithmetic_v<T>, "nothing is known about how to show it");
        to << value;
    }
}

/// Announces the snippet that begins at that line of the page.
inline void begin(int line) {
    std::cout << "-- line " << line << std::endl;
}

} // namespace zr::snippets

namespace zr {

/// Prints one line: the values, with blanks between them.
template <class First, class... Others>
void show(const First& first, const Others&... others) {
    snippets::write(std::cout, first);
    ((std::cout << ' ', snippets::write(std::cout, others)), ...);
    std::cout << std::endl;
}

} // namespace zr
