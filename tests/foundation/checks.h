#pragma once

#include <zrbasic/platform/runtime/exception.h>
#include <zrbasic/platform/runtime/types.h>

#include <ostream>
#include <string>

namespace zr {

/// Lets a failed check show the range.
inline void PrintTo(const NSRange& range, std::ostream* out) {
    *out << '{' << range.location << ", " << range.length << '}';
}

namespace test {

/// "Name: reason" of the exception that `action` raises; empty when it raises none.
template <typename Action>
std::string raised(Action&& action) {
    try {
        action();
    } catch (const NSException& exception) {
        return exception.what();
    }
    return {};
}

/// The name alone.
template <typename Action>
std::string raisedName(Action&& action) {
    try {
        action();
    } catch (const NSException& exception) {
        return exception.name();
    }
    return {};
}

} // namespace test

} // namespace zr
