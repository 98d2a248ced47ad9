#include "rule.h"

#include <zrbasic/platform/foundation/json_serialization.h>

#include <cstddef>
#include <cstdint>
#include <string_view>

using namespace zr;
using fuzz::rule;

// Any bytes are read or refused with a reason, and what was read is written as text that reads as the same.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    Ref<NSError> error;
    const id object = NSJSONSerialization::objectWithText(text, NSJSONReadingFragmentsAllowed, &error);
    rule((object == nullptr) == (error != nullptr), "null comes with an error and an object without one");
    if (object == nullptr)
        return 0;
    const std::string written =
        NSJSONSerialization::textWithObject(object, NSJSONWritingFragmentsAllowed | NSJSONWritingSortedKeys, nullptr);
    const id again = NSJSONSerialization::objectWithText(written, NSJSONReadingFragmentsAllowed, nullptr);
    rule(again != nullptr && again->isEqual(object), "what was read can be written and read again");
    return 0;
}
