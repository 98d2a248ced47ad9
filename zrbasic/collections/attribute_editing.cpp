#include <zrbasic/collections/attribute_editing.h>

#include <zrbasic/platform/appkit/color.h>
#include <zrbasic/platform/appkit/font.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/foundation/mutable_attributed_string.h>
#include <zrbasic/platform/foundation/string.h>

namespace zr {

ZR_GROUP(NSMutableAttributedString, ZRXHelper) {
    is.method<&addAttributes>("addAttributes:");
    is.method<&addAttribute_value>("addAttribute:value:");
    is.method<&addAttribute_value_ofSubString>("addAttribute:value:ofSubString:");
    is.method<&addTextColor_ofSubString>("addTextColor:ofSubString:");
    is.method<&addTextFont_ofSubString>("addTextFont:ofSubString:");
}

void addAttributes(NSMutableAttributedString* self, NSDictionary* attributes) {
    if (self) {
        self->addAttributes_range(attributes, {0, self->length()});
    }
}

void addAttribute_value(NSMutableAttributedString* self, NSString* name, NSObject* value) {
    if (self) {
        self->addAttribute_value_range(name, value, {0, self->length()});
    }
}

void addAttribute_value_ofSubString(NSMutableAttributedString* self, NSString* name, NSObject* value,
                                    NSString* subString) {
    if (!self || !name || !value || !subString) {
        return;
    }
    const NSRange place = self->string()->localizedStandardRangeOfString(subString);
    if (place.location != NSNotFound) {
        self->addAttribute_value_range(name, value, place);
    }
}

void addTextColor_ofSubString(NSMutableAttributedString* self, NSColor* color, NSString* subString) {
    addAttribute_value_ofSubString(self, NSForegroundColorAttributeName(), color, subString);
}

void addTextFont_ofSubString(NSMutableAttributedString* self, NSFont* font, NSString* subString) {
    addAttribute_value_ofSubString(self, NSFontAttributeName(), font, subString);
}

} // namespace zr
