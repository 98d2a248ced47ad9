#include <zrbasic/platform/runtime/property.h>

namespace zr {

const char* property_getName(Property property) {
    return property ? property->name.c_str() : "";
}

std::string property_getAttributes(Property property) {
    std::string text;
    if (property) {
        for (const PropertyAttribute& attribute : property->attributes) {
            if (!text.empty()) {
                text += ',';
            }
            text += attribute.name + attribute.value;
        }
    }
    return text;
}

std::vector<PropertyAttribute> property_copyAttributeList(Property property) {
    return property ? property->attributes : std::vector<PropertyAttribute>();
}

} // namespace zr
