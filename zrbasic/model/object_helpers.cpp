#include <zrbasic/model/object_helpers.h>

#include <zrbasic/core/tools.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/dictionary.h>
#include <zrbasic/platform/foundation/number.h>
#include <zrbasic/platform/foundation/set.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/association.h>
#include <zrbasic/platform/runtime/synchronized.h>

#include <vector>

namespace zr {

namespace {

constexpr char identifierKey = 0;

Ref<NSString> storedIdentifier(NSObject* self) {
    return Ref<NSString>(cast<NSString>(objc_getAssociatedObject(self, &identifierKey)));
}

/// Two arrays that are being compared, as far as element `next`.
struct Comparison {
    Ref<NSArray> first;
    Ref<NSArray> second;
    NSUInteger next = 0;
};

/// Compares two objects; arrays are only compared by their counts, and noted for their elements to be compared.
bool isEqualOutside(NSObject* first, NSObject* second, std::vector<Comparison>& inside) {
    if (!first || !second) {
        return first == second;
    }
    if (const auto* const number = cast<NSNumber>(first)) {
        if (auto* const other = cast<NSNumber>(second)) {
            return number->isEqualToNumber(other);
        }
    }
    if (const auto* const string = cast<NSString>(first)) {
        if (auto* const other = cast<NSString>(second)) {
            return string->isEqualToString(other);
        }
    }
    auto* const firstArray = cast<NSArray>(first);
    auto* const secondArray = cast<NSArray>(second);
    if (!firstArray || !secondArray) {
        return send<bool>(first, "isEqualTo:"_sel, second);
    }
    if (firstArray->count() != secondArray->count()) {
        return false;
    }
    inside.push_back({firstArray, secondArray});
    return true;
}

template <class Collection>
bool anyEquals(Collection* collection, NSObject* object) {
    for (const id& element : collection) {
        if (send<bool>(element, "isEqualTo:"_sel, object)) {
            return true;
        }
    }
    return false;
}

bool isValidObjectOfReceiver(Class* receiver, NSObject* object) {
    return isValidObject_ofType(object, receiver);
}

} // namespace

Ref<NSString> objectIdentifier(NSObject* self) {
    if (!self) {
        return {};
    }
    if (Ref<NSString> known = storedIdentifier(self)) {
        return known;
    }
    // Two threads that ask at once must not be given two identifiers.
    const Synchronized lock(self);
    Ref<NSString> identifier = storedIdentifier(self);
    if (!identifier) {
        identifier = ZRXTools::genUUID();
        setObjectIdentifier(self, identifier);
    }
    return identifier;
}

void setObjectIdentifier(NSObject* self, NSString* objectIdentifier) {
    objc_setAssociatedObject(self, &identifierKey, objectIdentifier, OBJC_ASSOCIATION_COPY);
}

bool isValidObject_ofType(NSObject* object, Class* type) {
    return object && type && object->isKindOfClass(type);
}

bool isObject_equalTo(NSObject* first, NSObject* second) {
    // A list instead of recursion: how deeply a server nests its arrays is its own affair.
    std::vector<Comparison> inside;
    if (!isEqualOutside(first, second, inside)) {
        return false;
    }
    while (!inside.empty()) {
        Comparison& comparison = inside.back();
        const NSUInteger index = comparison.next++;
        if (index >= comparison.first->count() || index >= comparison.second->count()) {
            inside.pop_back();
            continue;
        }
        const id firstElement = comparison.first->elements()[index];
        const id secondElement = comparison.second->elements()[index];
        if (!isEqualOutside(firstElement, secondElement, inside)) {
            return false;
        }
    }
    return true;
}

bool isEqualToAny(NSObject* self, NSObject* collection) {
    if (const auto* const array = cast<NSArray>(collection)) {
        return anyEquals(array, self);
    }
    if (const auto* const set = cast<NSSet>(collection)) {
        return anyEquals(set, self);
    }
    if (const auto* const dictionary = cast<NSDictionary>(collection)) {
        return anyEquals(dictionary, self);
    }
    if (auto* const enumerator = cast<NSEnumerator>(collection)) {
        while (const id element = enumerator->nextObject()) {
            if (send<bool>(element, "isEqualTo:"_sel, self)) {
                return true;
            }
        }
    }
    return false;
}

ZR_GROUP(NSObject, ZRXHelper) {
    is.method<&objectIdentifier>("objectIdentifier");
    is.method<&setObjectIdentifier>("setObjectIdentifier:");
    is.classMethod<&isValidObject_ofType>("isValidObject:ofType:");
    is.receivingClassMethod<&isValidObjectOfReceiver>("isValidObject:");
    is.classMethod<&isObject_equalTo>("isObject:equalTo:");
    is.method<&isEqualToAny>("isEqualToAny:");
}

} // namespace zr
