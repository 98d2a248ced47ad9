#include <zrbasic/platform/appkit/paragraph_style.h>

#include <functional>

namespace zr {

ZR_DEFINE_CLASS(NSParagraphStyle) {
    is.classMethod<&NSParagraphStyle::defaultParagraphStyle>("defaultParagraphStyle")
        .method<&NSParagraphStyle::lineSpacing>("lineSpacing")
        .method<&NSParagraphStyle::alignment>("alignment")
        .method<&NSParagraphStyle::lineBreakMode>("lineBreakMode");
}

ZR_DEFINE_CLASS(NSMutableParagraphStyle) {
    is.method<&NSMutableParagraphStyle::setLineSpacing>("setLineSpacing:")
        .method<&NSMutableParagraphStyle::setAlignment>("setAlignment:")
        .method<&NSMutableParagraphStyle::setLineBreakMode>("setLineBreakMode:")
        .method<&NSMutableParagraphStyle::setParagraphStyle>("setParagraphStyle:");
}

NSParagraphStyle::NSParagraphStyle() = default;
NSParagraphStyle::~NSParagraphStyle() = default;

Ref<NSParagraphStyle> NSParagraphStyle::defaultParagraphStyle() {
    // Never let go, so that it outlives whatever static objects hold on to it.
    static auto* const style = new Ref<NSParagraphStyle>(make<NSParagraphStyle>());
    return *style;
}

bool NSParagraphStyle::isEqual(NSObject* other) const {
    const auto* const style = cast<NSParagraphStyle>(other);
    return style == this || (style && style->m_lineSpacing == m_lineSpacing && style->m_alignment == m_alignment &&
                             style->m_lineBreakMode == m_lineBreakMode);
}

NSUInteger NSParagraphStyle::hash() const {
    // Equal spacings hash equally: the standard hash takes 0 and -0 for the same.
    return std::hash<double>()(m_lineSpacing) * 31 + static_cast<NSUInteger>(m_alignment) * 7 + m_lineBreakMode;
}

id NSParagraphStyle::copy() const {
    return id(const_cast<NSParagraphStyle*>(this));
}

id NSParagraphStyle::mutableCopy() const {
    const Ref<NSMutableParagraphStyle> made = make<NSMutableParagraphStyle>();
    made->setParagraphStyle(const_cast<NSParagraphStyle*>(this));
    return made;
}

Ref<NSParagraphStyle> NSParagraphStyle::styleLike(const NSParagraphStyle& other) {
    const Ref<NSParagraphStyle> made = make<NSParagraphStyle>();
    made->takeSettings(other);
    return made;
}

void NSParagraphStyle::takeSettings(const NSParagraphStyle& other) {
    m_lineSpacing = other.m_lineSpacing;
    m_alignment = other.m_alignment;
    m_lineBreakMode = other.m_lineBreakMode;
}

NSMutableParagraphStyle::NSMutableParagraphStyle() = default;
NSMutableParagraphStyle::~NSMutableParagraphStyle() = default;

void NSMutableParagraphStyle::setParagraphStyle(NSParagraphStyle* other) {
    if (other) {
        takeSettings(*other);
    }
}

id NSMutableParagraphStyle::copy() const {
    return styleLike(*this);
}

} // namespace zr
