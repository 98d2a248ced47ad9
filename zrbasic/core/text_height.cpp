#include <zrbasic/core/text_height.h>

#include <zrbasic/platform/appkit/font.h>
#include <zrbasic/platform/appkit/paragraph_style.h>
#include <zrbasic/platform/appkit/text_attributes.h>
#include <zrbasic/platform/appkit/toolkit.h>
#include <zrbasic/platform/foundation/attributed_string.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>

namespace zr {
namespace {

constexpr double lineFragmentPadding = 5.0;
constexpr double usualLineSpacing = 5.0;

} // namespace

ZR_GROUP(NSString, ZRXHelper) {
    is.method<&calculateHeightWithAbsoluteWidth_font_lineSpacing>("calculateHeightWithAbsoluteWidth:font:lineSpacing:");
    is.method<&calculateHeightWithAbsoluteWidth_font>("calculateHeightWithAbsoluteWidth:font:");
}

double calculateHeightWithAbsoluteWidth_font_lineSpacing(NSString* self, double width, NSFont* font,
                                                         double lineSpacing) {
    if (self == nullptr)
        return 0;
    const Ref<NSMutableParagraphStyle> style = make<NSMutableParagraphStyle>();
    style->setLineSpacing(lineSpacing);
    const Ref<NSMutableDictionary> attributes = make<NSMutableDictionary>();
    attributes->setObject_forKey(style, NSParagraphStyleAttributeName());
    if (font != nullptr)
        attributes->setObject_forKey(font, NSFontAttributeName());
    const auto text = make<NSAttributedString>(&NSAttributedString::initWithString_attributes, self, attributes);
    return currentToolkit().heightOfText(text, width, lineFragmentPadding);
}

double calculateHeightWithAbsoluteWidth_font(NSString* self, double width, NSFont* font) {
    return calculateHeightWithAbsoluteWidth_font_lineSpacing(self, width, font, usualLineSpacing);
}

} // namespace zr
