#include <zrbasic/platform/foundation/random.h>

#include <stdlib.h>

namespace zr {

// All are the C library's own, here and on the other systems; it spells the parameters differently from place to place.

std::uint32_t arc4random() {
    return ::arc4random();
}

std::uint32_t arc4random_uniform(std::uint32_t bound) {
    return bound < 2 ? 0 : ::arc4random_uniform(bound);
}

void arc4random_buf(void* bytes, std::size_t count) {
    ::arc4random_buf(bytes, count);
}

} // namespace zr
