#include <zrbasic/platform/foundation/clock.h>

#include <chrono>

namespace zr {

std::uint64_t mach_absolute_time() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::nanoseconds>(now).count());
}

int mach_timebase_info(mach_timebase_info_data_t* info) {
    if (info != nullptr) {
        *info = {1, 1};
    }
    return 0;
}

} // namespace zr
