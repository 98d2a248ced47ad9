#pragma once

#include <zrbasic/platform/foundation/data.h>
#include <zrbasic/platform/foundation/error.h>
#include <zrbasic/platform/runtime/declare.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace zr {

enum NSJSONReadingOptions : NSUInteger {
    NSJSONReadingMutableContainers = 1, ///< arrays and dictionaries come as mutable ones
    NSJSONReadingMutableLeaves = 2,     ///< strings, keys aside, come as mutable ones
    NSJSONReadingFragmentsAllowed = 4,  ///< a string, number, boolean or null may stand alone
};

enum NSJSONWritingOptions : NSUInteger {
    NSJSONWritingPrettyPrinted = 1,    ///< an entry a line, two blanks deeper per level
    NSJSONWritingSortedKeys = 2,       ///< by code unit, instead of in the dictionary's own order
    NSJSONWritingFragmentsAllowed = 4, ///< a string, number, boolean or null may stand alone
};

/// The code, within `NSCocoaErrorDomain`, of text that cannot be read.
inline constexpr NSInteger NSPropertyListReadCorruptError = 3840;
/// The code of an object that cannot be written.
inline constexpr NSInteger NSPropertyListWriteInvalidError = 3852;

/// The key under which a reading error's user info holds, as a number, the byte where reading stopped; the entry is
/// missing when that is not known.
[[nodiscard]] ZR_EXPORT Ref<NSString> NSJSONSerializationErrorIndex();

/// Turns JSON text into objects and objects into JSON text.
///
/// | JSON | object |
/// |---|---|
/// | object | `NSDictionary`, keys in the order of the text; of equal keys the last one's value stays |
/// | array | `NSArray` |
/// | string | `NSString` |
/// | `true`, `false` | a boolean `NSNumber` |
/// | `null` | the null object |
/// | integer | an integer `NSNumber`, up to 64 bits with or without sign; beyond that as a number with a fraction |
/// | number with a fraction or an exponent | `NSDecimalNumber` of exactly that value, or a double |
///
/// So a price of 0.00001000 is read as 0.00001 and not as the double nearest to it. A number that needs more than 38
/// digits, or is out of a decimal's range, becomes the nearest double; one out of a double's range is an error.
///
/// Text is UTF-8; a byte order mark at its start is skipped. Arrays and objects may lie 512 deep in each other. No
/// text, however damaged, does more than give null and an error; nothing here raises. Operations may be called from
/// any thread.
class ZR_EXPORT NSJSONSerialization : public NSObject {
    ZR_DECLARE_CLASS(NSJSONSerialization, NSObject)

  public:
    ~NSJSONSerialization() override;

    /// The object that `data` describes, or null when it is null or not JSON; `error`, which may be null, then takes
    /// the reason. `options` is a sum of `NSJSONReadingOptions`; bits that mean nothing are ignored.
    static id JSONObjectWithData_options_error(NSData* data, NSUInteger options, Ref<NSError>* error);
    /// The same for text in memory, such as a line of a file.
    ///
    /// `readable` counts the bytes from the start of `text` on that belong to the caller's buffer: when 64 or more of
    /// them follow the text, it is read where it is. Otherwise it is copied first, as it is without `readable`.
    static id objectWithText(std::string_view text, NSUInteger options, Ref<NSError>* error, std::size_t readable = 0);

    /// The UTF-8 text of `object`, or null when it is null or cannot be written; `error`, which may be null, then
    /// takes the reason. `options` is a sum of `NSJSONWritingOptions`.
    ///
    /// Written are dictionaries with string keys, arrays, strings, numbers and the null object, 512 deep at most.
    /// Numbers are exact: integers and decimals with all their digits, doubles as the shortest text that reads back.
    /// NaN, an infinity or text with half a surrogate pair cannot be written.
    static Ref<NSData> dataWithJSONObject_options_error(NSObject* object, NSUInteger options, Ref<NSError>* error);
    /// The same as a C++ string; empty when `object` cannot be written.
    static std::string textWithObject(NSObject* object, NSUInteger options, Ref<NSError>* error);
    /// Whether `object` is an array or a dictionary that can be written; false for null.
    [[nodiscard]] static bool isValidJSONObject(NSObject* object);
};

} // namespace zr
