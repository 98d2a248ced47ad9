#pragma once

#include <zrbasic/platform/runtime/export.h>

#include <string>
#include <string_view>

/// What is done to a regular expression before the engine compiles it, so that matching it always ends.
namespace zr::detail {

/// A pattern as it is handed to the engine.
struct GuardedPattern {
    std::u16string text;
    /// Whether `text` differs from the pattern it was made from.
    bool isRewritten = false;
    /// Whether compiling would take unreasonably long: too many character sets.
    bool isTooCostly = false;
};

/// Makes `pattern` safe to run; what it matches, and its groups, stay the same.
///
/// The engine repeats a lazy loop whose body matched nothing without ever noticing (`^+?`, `(a*)*?`), but it does
/// notice in a counted loop. So `+?` and `*?` behind an item that may match nothing become `{1,}?` and `{0,}?`.
/// Look-arounds, atomic groups and back references can read much text in what the engine counts as no work; they
/// get a counted nothing in front, so that the work limit sees them.
/// `comments` tells whether white space and `#` comments are allowed from the start. A pattern with errors is passed
/// on as it is, for the engine to refuse.
[[nodiscard]] ZR_EXPORT GuardedPattern guardedPattern(std::u16string_view pattern, bool comments);

} // namespace zr::detail
