#include <zrbasic/platform/foundation/string_overwriting_p.h>

namespace zr::detail {

bool overwriteSoleString(Ref<NSString> string) {
    if (!string || headerOf(string.get())->strong.load(std::memory_order_acquire) != 1) {
        return false;
    }
    const std::u16string_view units = string->view();
    // Volatile, because nobody reads the zeros and the compiler knows it. No string is a constant object, so writing to
    // its text is allowed.
    volatile char16_t* const text = const_cast<char16_t*>(units.data());
    for (std::size_t i = 0; i < units.size(); ++i) {
        text[i] = 0;
    }
    return true;
}

} // namespace zr::detail
