#include <zrbasic/platform/foundation/key_value_coding.h>

#include <zrbasic/platform/foundation/key_value_access_p.h>
#include <zrbasic/platform/foundation/key_value_observing.h>
#include <zrbasic/platform/foundation/mutable_array.h>
#include <zrbasic/platform/foundation/mutable_dictionary.h>
#include <zrbasic/platform/foundation/null.h>
#include <zrbasic/platform/foundation/number.h>

#include <cstdio>

namespace zr {

using detail::KeyAccess;
using detail::KeyWay;

namespace {

[[noreturn]] void raiseForKey(std::string_view exception, NSObject* self, const char* operation, const char* complaint,
                              NSString* key) {
    char address[32];
    std::snprintf(address, sizeof address, "%p", static_cast<const void*>(self));
    NSException::raise(exception, "[<" + self->class_()->name() + ' ' + address + "> " + operation + "]: " + complaint +
                                      " the key " + (key ? key->utf8() : "(null)") + '.');
}

constexpr const char* notCompliant = "this class is not key value coding-compliant for";

/// The number of type `T` that `value` gives by the message that fits the type.
template <class T>
T numberFrom(NSObject* value, SEL message, T (*ofNumber)(const NSNumber*), T (*ofString)(const NSString*)) {
    if (value->isa()->isDirect()) {
        if (const auto* const number = cast<NSNumber>(value)) [[likely]] {
            return ofNumber(number);
        }
    }
    // A string has few of the messages, so it converts as for the widest type of the kind.
    if (const auto* const string = cast<NSString>(value)) {
        return ofString(string);
    }
    return send<T>(value, message);
}

/// Calls `use` with the number that `value` gives for a type of the one-letter notation, in exactly that C++ type.
template <class Use>
void withNumber(NSObject* value, char type, Use&& use) {
#define ZR_DETAIL_NUMBER(letter, Type, message, stringMessage)                                        \
    case letter:                                                                                      \
        use(numberFrom<Type>(                                                                         \
            value, #message ""_sel, [](const NSNumber* number) -> Type { return number->message(); }, \
            [](const NSString* string) { return static_cast<Type>(string->stringMessage()); }));      \
        return
    switch (type) {
        ZR_DETAIL_NUMBER('B', bool, boolValue, boolValue);
        ZR_DETAIL_NUMBER('c', std::int8_t, charValue, intValue);
        ZR_DETAIL_NUMBER('C', std::uint8_t, unsignedCharValue, intValue);
        ZR_DETAIL_NUMBER('s', std::int16_t, shortValue, intValue);
        ZR_DETAIL_NUMBER('S', std::uint16_t, unsignedShortValue, intValue);
        ZR_DETAIL_NUMBER('i', std::int32_t, intValue, intValue);
        ZR_DETAIL_NUMBER('I', std::uint32_t, unsignedIntValue, intValue);
        ZR_DETAIL_NUMBER('q', std::int64_t, longLongValue, longLongValue);
        ZR_DETAIL_NUMBER('Q', std::uint64_t, unsignedLongLongValue, longLongValue);
        ZR_DETAIL_NUMBER('f', float, floatValue, floatValue);
        ZR_DETAIL_NUMBER('d', double, doubleValue, doubleValue);
        default:
            return;
    }
#undef ZR_DETAIL_NUMBER
}

template <class T>
Ref<NSNumber> boxedResult(NSObject* self, const KeyAccess& access) {
    return box(reinterpret_cast<T (*)(NSObject*, SEL)>(access.implementation.function)(self, access.selector));
}

id readNumber(NSObject* self, const KeyAccess& access) {
    switch (access.type) {
        case 'B':
            return boxedResult<bool>(self, access);
        case 'c':
            return boxedResult<std::int8_t>(self, access);
        case 'C':
            return boxedResult<std::uint8_t>(self, access);
        case 's':
            return boxedResult<std::int16_t>(self, access);
        case 'S':
            return boxedResult<std::uint16_t>(self, access);
        case 'i':
            return boxedResult<std::int32_t>(self, access);
        case 'I':
            return boxedResult<std::uint32_t>(self, access);
        case 'q':
            return boxedResult<std::int64_t>(self, access);
        case 'Q':
            return boxedResult<std::uint64_t>(self, access);
        case 'f':
            return boxedResult<float>(self, access);
        default:
            return boxedResult<double>(self, access);
    }
}

id readVariable(NSObject* self, const KeyAccess& access) {
    if (access.type == '@') {
        return access.variable->readObject(self);
    }
    id result;
    const Value value = access.variable->read(self);
    switch (access.type) {
        case '?':
            break;
        case 'B':
            result = box(value.to<bool>());
            break;
        case 'f':
            result = box(value.to<float>());
            break;
        case 'd':
            result = box(value.to<double>());
            break;
        case 'C':
        case 'S':
        case 'I':
        case 'Q':
            result = box(value.to<std::uint64_t>());
            break;
        default:
            result = box(value.to<std::int64_t>());
    }
    return result;
}

id read(NSObject* self, const KeyAccess& access) {
    switch (access.way) {
        case KeyWay::ObjectAccessor:
            if (access.variable) [[likely]] {
                return access.variable->readObject(self);
            }
            return reinterpret_cast<id (*)(NSObject*, SEL)>(access.implementation.function)(self, access.selector);
        case KeyWay::NumberAccessor:
            return readNumber(self, access);
        case KeyWay::Variable:
            return readVariable(self, access);
        default:
            return {};
    }
}

void writeNumber(NSObject* self, NSObject* value, const KeyAccess& access) {
    withNumber(value, access.type, [&]<class T>(T number) {
        reinterpret_cast<void (*)(NSObject*, SEL, T)>(access.implementation.function)(self, access.selector, number);
    });
}

/// Through an accessor of an unusual type: no number, no object, or one that gives something back.
void writeUnusual(NSObject* self, NSObject* value, const KeyAccess& access) {
    Value argument;
    if (access.type == '@') {
        argument = Value(value);
    } else if (value && access.type == '?') {
        return;
    } else if (value) {
        withNumber(value, access.type, [&](auto number) { argument = Value(number); });
    }
    Value result;
    access.implementation.type->invoke(access.implementation.function, self, access.selector, &argument, &result);
}

void writeVariable(NSObject* self, NSObject* value, NSString* key, const KeyAccess& access) {
    Value content;
    if (access.type == '?' && value) {
        return;
    }
    if (access.type != '@' && value) {
        withNumber(value, access.type, [&](auto number) { content = Value(number); });
    }
    // No setter announces this change, so it is announced here.
    detail::ObservedChange change(self, key);
    if (access.type == '@') {
        access.variable->writeObject(self, value);
    } else {
        access.variable->write(self, content);
    }
    change.announce();
}

/// Whether the class leaves the given answer to an unknown key to the root.
bool isLeftToRoot(NSObject* self, SEL selector) {
    return detail::lookUp(self->isa(), selector) == detail::lookUp(NSObject::classObject(), selector);
}

void raiseForUndefinedKey(NSObject* self, NSString* key) {
    raiseForKey(NSUndefinedKeyException, self, "valueForUndefinedKey:", notCompliant, key);
}

void raiseForUndefinedKeyWritten(NSObject* self, NSObject*, NSString* key) {
    raiseForKey(NSUndefinedKeyException, self, "setValue:forUndefinedKey:", notCompliant, key);
}

void raiseForNil(NSObject* self, NSString* key) {
    raiseForKey(NSInvalidArgumentException, self, "setNilValueForKey", "could not set nil as the value for", key);
}

bool allowsVariables() {
    return true;
}

id valueAlongPath(NSObject* self, NSString* keyPath) {
    if (!keyPath) {
        return valueForUndefinedKey(self, nullptr);
    }
    const std::u16string_view path = keyPath->view();
    id object(self);
    for (std::size_t start = 0; object;) {
        const std::size_t stop = path.find(u'.', start);
        if (start == 0 && stop == std::u16string_view::npos) {
            return valueForKey(object, keyPath);
        }
        object = valueForKey(object, NSString::fromUtf16(path.substr(start, stop - start)));
        if (stop == std::u16string_view::npos) {
            break;
        }
        start = stop + 1;
    }
    return object;
}

void setValueAlongPath(NSObject* self, NSObject* value, NSString* keyPath) {
    const std::size_t last = keyPath ? keyPath->view().rfind(u'.') : std::u16string_view::npos;
    if (last == std::u16string_view::npos) {
        setValue_forKey(self, value, keyPath);
        return;
    }
    const id object = valueForKeyPath(self, NSString::fromUtf16(keyPath->view().substr(0, last)));
    setValue_forKey(object, value, NSString::fromUtf16(keyPath->view().substr(last + 1)));
}

Ref<NSDictionary> valuesForKeys(NSObject* self, NSArray* keys) {
    Ref<NSMutableDictionary> values = NSMutableDictionary::dictionary();
    for (const id& key : keys) {
        const id value = valueForKey(self, cast<NSString>(key));
        values->setObject_forKey(value ? value.get() : NSNull::null(), key);
    }
    return cast<NSDictionary>(values->copy());
}

void setValuesForKeys(NSObject* self, NSDictionary* keyedValues) {
    for (const id& key : keyedValues) {
        const id value = keyedValues->objectForKey(key);
        setValue_forKey(self, isNull(value) ? nullptr : value.get(), cast<NSString>(key));
    }
}

/// "@count" asks the collection itself for "count"; null for every other key.
Ref<NSString> keyOfCollectionItself(NSString* key) {
    return key && key->view().starts_with(u'@') ? NSString::fromUtf16(key->view().substr(1)) : nullptr;
}

id valueInDictionary(NSDictionary* self, NSString* key) {
    if (const auto own = keyOfCollectionItself(key)) {
        return detail::rootValueForKey(self, "valueForKey:"_sel, own);
    }
    return self->objectForKey(key);
}

void setValueInDictionary(NSMutableDictionary* self, NSObject* value, NSString* key) {
    if (value) {
        self->setObject_forKey(value, key);
    } else {
        self->removeObjectForKey(key);
    }
}

id valuesInArray(NSArray* self, NSString* key) {
    if (const auto own = keyOfCollectionItself(key)) {
        return detail::rootValueForKey(self, "valueForKey:"_sel, own);
    }
    Ref<NSMutableArray> values = NSMutableArray::arrayWithCapacity(self->count());
    for (const id& element : self) {
        const id value = valueForKey(element, key);
        values->addObject(value ? value.get() : NSNull::null());
    }
    return values->copy();
}

void setValuesInArray(NSArray* self, NSObject* value, NSString* key) {
    for (const id& element : self) {
        setValue_forKey(element, value, key);
    }
}

} // namespace

namespace detail {

id rootValueForKey(NSObject* self, SEL, NSObject* key) {
    auto* const name = cast<NSString>(key);
    if (name) {
        KeyAccess access = readingOf(self->isa(), name);
        if (access.way == KeyWay::OwnMessage) {
            // Asked as the parent's answer by a class that otherwise reads in its own way.
            access = readingPastMessage(self->isa(), name);
        }
        if (access.way != KeyWay::None) {
            return read(self, access);
        }
    }
    return valueForUndefinedKey(self, name);
}

void rootSetValueForKey(NSObject* self, SEL, NSObject* value, NSObject* key) {
    auto* const name = cast<NSString>(key);
    KeyAccess access;
    if (name) {
        access = writingOf(self->isa(), name);
        if (access.way == KeyWay::OwnMessage) {
            access = writingPastMessage(self->isa(), name);
        }
    }
    writeThrough(self, value, name, access);
}

void writeThrough(NSObject* self, NSObject* value, NSString* key, const KeyAccess& access) {
    if (!value && access.type != '@' && access.type != '?') {
        setNilValueForKey(self, key);
        return;
    }
    switch (access.way) {
        case KeyWay::ObjectAccessor:
            if (access.variable) [[likely]] {
                access.variable->writeObject(self, value);
                return;
            }
            reinterpret_cast<void (*)(NSObject*, SEL, NSObject*)>(access.implementation.function)(self, access.selector,
                                                                                                  value);
            return;
        case KeyWay::NumberAccessor:
            writeNumber(self, value, access);
            return;
        case KeyWay::OtherAccessor:
            writeUnusual(self, value, access);
            return;
        case KeyWay::Variable:
            writeVariable(self, value, key, access);
            return;
        default:
            setValue_forUndefinedKey(self, value, key);
    }
}

id valueForKeyIfAny(NSObject* self, NSString* key) {
    if (!self || !key) {
        return {};
    }
    const KeyAccess access = readingOf(self->isa(), key);
    if (access.way == KeyWay::OwnMessage) {
        return send<id>(self, "valueForKey:"_sel, key);
    }
    if (access.way != KeyWay::None) {
        return read(self, access);
    }
    return isLeftToRoot(self, "valueForUndefinedKey:"_sel) ? id() : valueForUndefinedKey(self, key);
}

} // namespace detail

id valueForKey(NSObject* self, NSString* key) {
    if (!self) {
        return {};
    }
    if (key) {
        const KeyAccess access = detail::readingOf(self->isa(), key);
        if (access.way != KeyWay::OwnMessage && access.way != KeyWay::None) [[likely]] {
            return read(self, access);
        }
    }
    return send<id>(self, "valueForKey:"_sel, key);
}

void setValue_forKey(NSObject* self, NSObject* value, NSString* key) {
    if (!self) {
        return;
    }
    if (key) {
        const KeyAccess access = detail::writingOf(self->isa(), key);
        if (access.way != KeyWay::OwnMessage && access.way != KeyWay::None) [[likely]] {
            detail::writeThrough(self, value, key, access);
            return;
        }
    }
    send<void>(self, "setValue:forKey:"_sel, value, key);
}

id valueForKeyPath(NSObject* self, NSString* keyPath) {
    return send<id>(self, "valueForKeyPath:"_sel, keyPath);
}

void setValue_forKeyPath(NSObject* self, NSObject* value, NSString* keyPath) {
    send<void>(self, "setValue:forKeyPath:"_sel, value, keyPath);
}

id valueForUndefinedKey(NSObject* self, NSString* key) {
    return send<id>(self, "valueForUndefinedKey:"_sel, key);
}

void setValue_forUndefinedKey(NSObject* self, NSObject* value, NSString* key) {
    send<void>(self, "setValue:forUndefinedKey:"_sel, value, key);
}

void setNilValueForKey(NSObject* self, NSString* key) {
    send<void>(self, "setNilValueForKey:"_sel, key);
}

Ref<NSDictionary> dictionaryWithValuesForKeys(NSObject* self, NSArray* keys) {
    return send<Ref<NSDictionary>>(self, "dictionaryWithValuesForKeys:"_sel, keys);
}

void setValuesForKeysWithDictionary(NSObject* self, NSDictionary* keyedValues) {
    send<void>(self, "setValuesForKeysWithDictionary:"_sel, keyedValues);
}

ZR_GROUP(NSObject, NSKeyValueCoding) {
    is.addMethod("valueForKey:", imp(&detail::rootValueForKey));
    is.addMethod("setValue:forKey:", imp(&detail::rootSetValueForKey));
    is.method<&valueAlongPath>("valueForKeyPath:");
    is.method<&setValueAlongPath>("setValue:forKeyPath:");
    is.addMethod("valueForUndefinedKey:", imp(+[](NSObject* self, SEL, NSObject* key) -> id {
                     raiseForUndefinedKey(self, cast<NSString>(key));
                     return {};
                 }));
    is.method<&raiseForUndefinedKeyWritten>("setValue:forUndefinedKey:");
    is.method<&raiseForNil>("setNilValueForKey:");
    is.method<&valuesForKeys>("dictionaryWithValuesForKeys:");
    is.method<&setValuesForKeys>("setValuesForKeysWithDictionary:");
    is.classMethod<&allowsVariables>("accessInstanceVariablesDirectly");
}

ZR_GROUP(NSDictionary, NSKeyValueCoding) {
    is.method<&valueInDictionary>("valueForKey:");
}

ZR_GROUP(NSMutableDictionary, NSKeyValueCoding) {
    is.method<&setValueInDictionary>("setValue:forKey:");
}

ZR_GROUP(NSArray, NSKeyValueCoding) {
    is.method<&valuesInArray>("valueForKey:");
    is.method<&setValuesInArray>("setValue:forKey:");
}

} // namespace zr
