#include <zrbasic/platform/foundation/coder.h>

#include <zrbasic/platform/foundation/string.h>

namespace zr {

ZR_DEFINE_CLASS(NSCoder) {
    is.method<&NSCoder::containsValueForKey>("containsValueForKey:");
    is.method<&NSCoder::decodeObjectForKey>("decodeObjectForKey:");
    is.method<&NSCoder::decodeRectForKey>("decodeRectForKey:");
}

NSCoder::NSCoder() = default;
NSCoder::~NSCoder() = default;

bool NSCoder::containsValueForKey(NSString*) const {
    return false;
}

id NSCoder::decodeObjectForKey(NSString*) const {
    return nullptr;
}

NSRect NSCoder::decodeRectForKey(NSString*) const {
    return NSZeroRect;
}

} // namespace zr
