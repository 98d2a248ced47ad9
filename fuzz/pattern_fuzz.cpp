#include "rule.h"

#include <zrbasic/core/input_formatter.h>
#include <zrbasic/core/pattern_matching.h>
#include <zrbasic/platform/foundation/array.h>

#include <fuzzer/FuzzedDataProvider.h>

using namespace zr;
using fuzz::rule;

// No pattern, template or text hangs or breaks anything, and every match is a piece of the text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const auto pattern = NSString::fromUtf8(input.ConsumeRandomLengthString(48));
    const auto replacement = NSString::fromUtf8(input.ConsumeRandomLengthString(16));
    const auto text = NSString::fromUtf8(input.ConsumeRemainingBytesAsString());
    const auto matches = matchResultsWithPattern(text, pattern);
    for (const id& match : matches->elements())
        rule(text->view().find(cast<NSString>(match)->view()) != text->view().npos, "a match is a piece of the text");
    const auto first = matchResultWithPattern(text, pattern);
    rule(first == nullptr || text->view().find(first->view()) != text->view().npos, "so is the first one");
    if (isLegalObjectWithPattern(text, pattern))
        rule(first != nullptr, "where the whole text matches, there is a match in it");
    rule(stringByReplacingWithPattern_withString(text, pattern, replacement) != nullptr, "replacing gives a text");

    const auto formatter = make<ZRInputFormatter>(&ZRInputFormatter::initWithWithPartialPattern, pattern.get());
    Ref<NSString> shown;
    Ref<NSString> error;
    (void)formatter->isPartialStringValid_newEditingString_errorDescription(text, &shown, &error);
    return 0;
}
