#pragma once

#include <zrbasic/platform/runtime/export.h>
#include <zrbasic/platform/runtime/value.h>

#include <string>
#include <vector>

namespace zr {

class NSObject;

/// One attribute of a declared property: a letter and its value, which is empty for flags.
///
/// T type, R read-only, C copied, & retained, W weak, D dynamic, N non-atomic, G getter, S setter, V variable.
struct PropertyAttribute {
    std::string name;
    std::string value;

    friend bool operator==(const PropertyAttribute&, const PropertyAttribute&) = default;
};

/// One declared property of one class.
struct PropertyRecord {
    std::string name;
    /// In the platform's order: T, R, C or &, W, D, N, G, S, V.
    std::vector<PropertyAttribute> attributes;
    SEL getter;
    /// Null for a read-only property.
    SEL setter;
    /// The name of the variable behind it, such as "_price"; empty when there is none.
    std::string variable;
    /// Straight access to the variable, past any accessor; null when there is none.
    Value (*read)(NSObject* object) = nullptr;
    void (*write)(NSObject* object, const Value& value) = nullptr;
    /// The same for object properties alone, without the detour over a value.
    id (*readObject)(NSObject* object) = nullptr;
    void (*writeObject)(NSObject* object, NSObject* value) = nullptr;
};

/// Borrowed from its class, for ever.
using Property = const PropertyRecord*;

/// The property's name; "" for null.
[[nodiscard]] ZR_EXPORT const char* property_getName(Property property);
/// The attributes as one text, such as "T@\"NSString\",C,N,V_name"; "" for null.
[[nodiscard]] ZR_EXPORT std::string property_getAttributes(Property property);
[[nodiscard]] ZR_EXPORT std::vector<PropertyAttribute> property_copyAttributeList(Property property);

} // namespace zr
