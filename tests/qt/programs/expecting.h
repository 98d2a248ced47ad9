#pragma once

#include <cstdio>

/// For programs that are tests by themselves.
namespace expecting {

inline bool allGood = true;

/// Says what is not so; the program must end with something else than 0 then.
inline void expect(bool isGood, const char* what) {
    if (!isGood) {
        std::fprintf(stderr, "not so: %s\n", what);
        allGood = false;
    }
}

} // namespace expecting
