#pragma once

#include <zrbasic/platform/foundation/string.h>

namespace zr {

/// Small tools without a state, as operations of one class. May be used from any thread.
class ZR_EXPORT ZRXTools : public NSObject {
    ZR_DECLARE_CLASS(ZRXTools, NSObject)
  public:
    ~ZRXTools() override;

    /// Whether `value` is a string of more than white space; see `ZRXTextValid`.
    [[nodiscard]] static bool isLegalString(NSObject* value);

    /// A new random identifier: 32 upper-case hexadecimal digits in groups of 8, 4, 4, 4 and 12, joined by "-".
    [[nodiscard]] static Ref<NSString> genUUID();

    /// How many decimals `value` has, to size a price display.
    ///
    /// For a string the number of UTF-16 code units behind its last ".", so trailing zeros count: "1.500" has 3 and
    /// "100." has none. For a number the digits that its description needs written without an exponent: 1.50 has 1,
    /// 0.00001 has 5. 0 for null and anything else.
    [[nodiscard]] static NSUInteger decimalsCountOfNumber(NSObject* value);

    /// A number of clock ticks in milliseconds.
    ///
    /// Ticks are multiplied by the clock's numerator as unsigned 64-bit numbers, which wrap, before the division.
    [[nodiscard]] static double intervalWithMachTick(std::uint64_t ticks);

    /// The milliseconds since `startTick`, a value of `mach_absolute_time`.
    [[nodiscard]] static double intervalFromMachBegining(std::uint64_t startTick);
};

} // namespace zr
