#include "rule.h"

#include <zrbasic/collections/url_query.h>
#include <zrbasic/core/url_text.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/url.h>
#include <zrbasic/platform/foundation/url_components.h>
#include <zrbasic/platform/foundation/url_query_item.h>

#include <fuzzer/FuzzedDataProvider.h>

using namespace zr;
using fuzz::rule;

// Any text is a URL or none, what is taken apart goes together again, and parameters come back as they went in.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const auto name = NSString::fromUtf8(input.ConsumeRandomLengthString(16));
    const auto value = NSString::fromUtf8(input.ConsumeRandomLengthString(16));
    const auto base = NSURL::URLWithString(NSString::fromUtf8(input.ConsumeRandomLengthString(32)));
    const auto text = NSString::fromUtf8(input.ConsumeRemainingBytesAsString());

    const auto decoded = urlDecode(urlEncode(name));
    rule(decoded != nullptr && decoded->length() == name->length(), "encoding loses nothing");

    const auto url = NSURL::URLWithString_relativeToURL(text, base);
    if (url == nullptr)
        return 0;
    rule(url->relativeString()->isEqual(text), "a URL keeps its text");
    const auto whole = url->absoluteURL();
    const auto components = NSURLComponents::componentsWithURL_resolvingAgainstBaseURL(url, true);
    if (components == nullptr)
        return 0;
    rule(components->string() == nullptr || components->string()->isEqual(whole->absoluteString()),
         "parts that nobody changed go together again");

    const auto parameters = dictionary({{name, value}});
    const auto appended = appendQueryItemsFromDictionary(url, parameters);
    if (appended == nullptr)
        return 0;
    const auto items = NSURLComponents::componentsWithURL_resolvingAgainstBaseURL(appended, true)->queryItems();
    rule(items != nullptr && items->count() > 0, "an appended item is there");
    const auto last = cast<NSURLQueryItem>(items->lastObject());
    rule(last->name()->isEqual(name) && last->value()->isEqual(value), "and reads as it was");

    const auto marked = resetFragmentWithDictionary(url, parameters);
    rule(marked != nullptr && marked->fragment() != nullptr, "a URL that can be rebuilt takes a fragment");
    rule(resetRandomQueryItem(marked) != nullptr, "and a random item");
    (void)queryParams(marked);
    (void)fragmentParams(marked);
    return 0;
}
