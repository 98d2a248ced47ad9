#pragma once

#include <cstdio>
#include <cstdlib>

namespace zr::fuzz {

/// Ends the program, which is how the engine learns that an input broke a rule.
inline void rule(bool holds, const char* what) {
    if (!holds) {
        std::fprintf(stderr, "broken: %s\n", what);
        std::abort();
    }
}

} // namespace zr::fuzz
