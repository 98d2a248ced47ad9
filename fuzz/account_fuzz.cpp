#include "rule.h"

#include <zrbasic/core/color.h>
#include <zrbasic/core/digest.h>
#include <zrbasic/core/masking.h>
#include <zrbasic/core/validation.h>
#include <zrbasic/platform/foundation/data.h>

#include <fuzzer/FuzzedDataProvider.h>

using namespace zr;
using fuzz::rule;

// What account screens do with whatever was typed. The library's own assertions compare every check with its pattern.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const auto secret = NSString::fromUtf8(input.ConsumeRandomLengthString(8));
    const auto text = NSString::fromUtf8(input.ConsumeRemainingBytesAsString());

    rule(!isLegalPhoneNumber(text) || isPureNumberString(text), "a phone number is a number");
    rule(!isLegalPassword(text) || isLegalCommonEnglishCharacters(text), "a password is plain text");
    rule(!(isLegalURLString(text) && isLegalEmailAddress(text)), "nothing is both an address and a mailbox");
    (void)isLegalFuturesPrice(text);
    (void)isLegalIdCardNumber(text);

    rule(desensitizationMobilePhone(text)->length() == text->length(), "masking a number keeps its length");
    rule(!isLegalEmailAddress(text) || desensitizationEmail(text)->hasSuffix("m"_ns) == text->hasSuffix("m"_ns),
         "masking a mailbox keeps its host");
    rule(MD5Hash(text)->length() == 32, "a fingerprint has 32 digits");
    const auto digest = HMACEncryptWithSecret(text, secret);
    rule(digest == nullptr || digest->length() == 32, "a keyed digest has 32 bytes");

    if (const auto color = colorWithHexString(text)) {
        const auto again = colorWithHexString(hexStringValue(color));
        rule(again != nullptr && again->isEqual(color), "a colour's text reads as the colour");
    }
    const double alpha = colorAlpha(text);
    rule(alpha >= 0 && alpha <= 255, "an alpha is a byte");
    const auto opaque = colorStringWithOutAlpha(text);
    rule(opaque == text || (opaque->length() <= 8 && opaque->hasSuffix(text->substringFromIndex(text->length() - 6))),
         "a text without alpha is its prefix and its last six units");
    (void)colorStringAppendAlpha(text, 50);
    return 0;
}
