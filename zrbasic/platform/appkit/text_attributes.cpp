#include <zrbasic/platform/appkit/text_attributes.h>

#include <zrbasic/platform/foundation/string.h>

namespace zr {

Ref<NSString> NSFontAttributeName() {
    return "NSFont"_ns;
}

Ref<NSString> NSForegroundColorAttributeName() {
    return "NSColor"_ns;
}

Ref<NSString> NSLinkAttributeName() {
    return "NSLink"_ns;
}

Ref<NSString> NSAttachmentAttributeName() {
    return "NSAttachment"_ns;
}

Ref<NSString> NSParagraphStyleAttributeName() {
    return "NSParagraphStyle"_ns;
}

Ref<NSString> NSUnderlineStyleAttributeName() {
    return "NSUnderline"_ns;
}

} // namespace zr
