#include <zrbasic/platform/appkit/font.h>

#include <zrbasic/platform/appkit/toolkit.h>

#include <algorithm>
#include <cmath>
#include <functional>

namespace zr {

namespace {

constexpr std::u16string_view systemFamily = u".SystemFont";

struct NamedWeight {
    NSFontWeight weight;
    std::u16string_view name;
};

constexpr NamedWeight namedWeights[] = {
    {NSFontWeightUltraLight, u"UltraLight"},
    {NSFontWeightThin, u"Thin"},
    {NSFontWeightLight, u"Light"},
    {NSFontWeightRegular, u"Regular"},
    {NSFontWeightMedium, u"Medium"},
    {NSFontWeightSemibold, u"Semibold"},
    {NSFontWeightBold, u"Bold"},
    {NSFontWeightHeavy, u"Heavy"},
    {NSFontWeightBlack, u"Black"},
};

/// The family and, behind the last hyphen, the style; a hyphen at either end belongs to the family.
std::pair<std::u16string_view, std::u16string_view> parts(std::u16string_view name) {
    const std::size_t hyphen = name.rfind(u'-');
    if (hyphen == std::u16string_view::npos || hyphen == 0 || hyphen + 1 == name.size()) {
        return {name, {}};
    }
    return {name.substr(0, hyphen), name.substr(hyphen + 1)};
}

NSFontWeight weightNamed(std::u16string_view name) {
    const auto* const found = std::find_if(std::begin(namedWeights), std::end(namedWeights),
                                           [name](const NamedWeight& candidate) { return candidate.name == name; });
    return found == std::end(namedWeights) ? NSFontWeightRegular : found->weight;
}

Ref<NSString> systemFontName(NSFontWeight weight) {
    const auto* const nearest = std::min_element(
        std::begin(namedWeights), std::end(namedWeights), [weight](const NamedWeight& left, const NamedWeight& right) {
            return std::fabs(left.weight - weight) < std::fabs(right.weight - weight);
        });
    std::u16string name(systemFamily);
    if (nearest->weight != NSFontWeightRegular) {
        name += u'-';
        name += nearest->name;
    }
    return NSString::fromUtf16(std::move(name));
}

} // namespace

ZR_DEFINE_CLASS(NSFont) {
    is.classMethod<&NSFont::systemFontOfSize>("systemFontOfSize:");
    is.classMethod<&NSFont::boldSystemFontOfSize>("boldSystemFontOfSize:");
    is.classMethod<&NSFont::systemFontOfSize_weight>("systemFontOfSize:weight:");
    is.classMethod<&NSFont::fontWithName_size>("fontWithName:size:");
    is.classMethod<&NSFont::systemFontSize>("systemFontSize");
    is.classMethod<&NSFont::smallSystemFontSize>("smallSystemFontSize");
    is.method<&NSFont::fontName>("fontName");
    is.method<&NSFont::familyName>("familyName");
    is.method<&NSFont::pointSize>("pointSize");
    is.method<&NSFont::ascender>("ascender");
    is.method<&NSFont::descender>("descender");
    is.method<&NSFont::leading>("leading");
}

NSFont::NSFont() = default;
NSFont::~NSFont() = default;

Ref<NSFont> NSFont::made(NSString* name, double size, NSFontWeight weight) {
    Ref<NSFont> font = alloc<NSFont>();
    font->m_name = Ref<NSString>(cast<NSString>(name->copy()));
    font->m_size = std::isfinite(size) && size > 0 ? size : systemFontSize();
    font->m_weight = weight;
    return font;
}

Ref<NSFont> NSFont::systemFontOfSize(double size) {
    return systemFontOfSize_weight(size, NSFontWeightRegular);
}

Ref<NSFont> NSFont::boldSystemFontOfSize(double size) {
    return systemFontOfSize_weight(size, NSFontWeightBold);
}

Ref<NSFont> NSFont::systemFontOfSize_weight(double size, NSFontWeight weight) {
    const NSFontWeight possible = std::isnan(weight) ? NSFontWeightRegular : std::clamp(weight, -1.0, 1.0);
    return made(systemFontName(possible), size, possible);
}

Ref<NSFont> NSFont::fontWithName_size(NSString* name, double size) {
    if (!name || name->length() == 0) {
        return nullptr;
    }
    return made(name, size, weightNamed(parts(name->view()).second));
}

double NSFont::systemFontSize() {
    return 13;
}

double NSFont::smallSystemFontSize() {
    return 11;
}

Ref<NSString> NSFont::familyName() const {
    return NSString::fromUtf16(parts(m_name->view()).first);
}

bool NSFont::isSystemFont() const {
    return parts(m_name->view()).first == systemFamily;
}

// Asked each time: another toolkit may draw the same font with other letters.
double NSFont::ascender() const {
    return currentToolkit().metricsOfFont(const_cast<NSFont*>(this)).ascender;
}

double NSFont::descender() const {
    return currentToolkit().metricsOfFont(const_cast<NSFont*>(this)).descender;
}

double NSFont::leading() const {
    return currentToolkit().metricsOfFont(const_cast<NSFont*>(this)).leading;
}

Ref<NSString> NSFont::description() const {
    return NSString::stringWithFormat("%@ %g pt"_ns, m_name, m_size);
}

bool NSFont::isEqual(NSObject* other) const {
    const auto* font = cast<NSFont>(other);
    return font != nullptr && m_size == font->m_size && m_weight == font->m_weight &&
           m_name->view() == font->m_name->view();
}

NSUInteger NSFont::hash() const {
    return m_name->hash() * 31 + std::hash<double>()(m_size);
}

id NSFont::copy() const {
    return id(const_cast<NSFont*>(this));
}

} // namespace zr
