#include <zrbasic/core/masking.h>

#include <zrbasic/platform/foundation/array.h>

namespace zr {
namespace {

constexpr std::u16string_view stars = u"****";

} // namespace

ZR_GROUP(NSString, ZRXHelper) {
    is.method<&desensitizationMobilePhone>("desensitizationMobilePhone");
    is.method<&desensitizationEmail>("desensitizationEmail");
}

Ref<NSString> desensitizationMobilePhone(NSObject* self) {
    auto* text = cast<NSString>(self);
    if (text == nullptr || text->length() <= 6)
        return text;
    std::u16string masked(text->view());
    masked.replace(3, stars.size(), stars);
    return NSString::fromUtf16(std::move(masked));
}

Ref<NSString> desensitizationEmail(NSObject* self) {
    auto* text = cast<NSString>(self);
    if (text == nullptr)
        return nullptr;
    const Ref<NSArray> parts = text->componentsSeparatedByString("@"_ns);
    if (parts->count() != 2)
        return text;
    const Ref<NSString> name(cast<NSString>(parts->objectAtIndex(0)));
    const Ref<NSString> host(cast<NSString>(parts->objectAtIndex(1)));
    if (name->length() < 3)
        return text;
    std::u16string masked(name->view().substr(0, 1));
    masked.append(stars).append(name->view().substr(name->length() - 1)).append(u"@").append(host->view());
    return NSString::fromUtf16(std::move(masked));
}

} // namespace zr
