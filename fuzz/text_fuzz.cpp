#include "rule.h"

#include <zrbasic/core/text.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/runtime/exception.h>

#include <fuzzer/FuzzedDataProvider.h>

using namespace zr;
using fuzz::rule;

namespace {

/// Any code units, lone surrogates and zeros among them.
Ref<NSString> textFrom(FuzzedDataProvider& input) {
    std::u16string text;
    for (std::size_t left = input.ConsumeIntegralInRange<std::size_t>(0, 24); left > 0; --left)
        text += input.ConsumeBool() ? static_cast<char16_t>(input.ConsumeIntegralInRange(0x20, 0x7E))
                                    : input.ConsumeIntegral<char16_t>();
    return NSString::fromUtf16(std::move(text));
}

} // namespace

// What holds between the operations on any two texts.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const auto text = textFrom(input);
    const auto other = textFrom(input);
    rule(text->compare(other) == -other->compare(text), "comparing turns around with its sides");
    rule(text->isEqual(NSString::fromUtf16(text->view())), "a text equals its copy");

    const auto joined = text->stringByAppendingString(other);
    rule(other->length() == 0 || joined->hasSuffix(other), "a text ends with what was appended");
    const NSRange found = text->rangeOfString(other);
    rule(found.location == NSNotFound || NSMaxRange(found) <= text->length(), "what is found lies in the text");

    const auto pieces = text->componentsSeparatedByString(other);
    rule((pieces->count() > 1) == (found.location != NSNotFound), "a text falls apart where the separator is found");

    const auto trimmed = stringByTrimmingBothEndWhiteSpace(text);
    rule(trimmed->length() <= text->length(), "trimming adds nothing");
    rule(stringByTrimmingBothEndWhiteSpace(trimmed)->isEqual(trimmed), "trimming twice is trimming once");
    rule(ZRXTextValid(text) || ZRXStringByTrimmingWhiteSpace(text) == nullptr, "what is not text has no trimmed form");

    const auto decoded = text->stringByRemovingPercentEncoding();
    rule(decoded == nullptr || decoded->length() <= text->length(), "decoding escapes adds nothing");
    try {
        rule(subStringFrom_to(text, other, textFrom(input)) != nullptr, "cutting out gives a text");
    } catch (const NSException& exception) {
        rule(exception.name() == "NSRangeException", "or raises a range error");
    }
    (void)text->integerValue();
    (void)text->doubleValue();
    (void)text->boolValue();
    return 0;
}
