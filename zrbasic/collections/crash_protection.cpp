#include <zrbasic/collections/crash_protection.h>

#include <zrbasic/core/text.h>
#include <zrbasic/platform/foundation/array.h>
#include <zrbasic/platform/foundation/file_manager.h>

#include <mutex>

namespace zr {

namespace {

constexpr detail::FixedText objectAtIndex = "objectAtIndex:";
constexpr detail::FixedText objectAtIndexedSubscript = "objectAtIndexedSubscript:";

/// What a protected entry runs once it is exchanged with the operation called `Counterpart`.
template <detail::FixedText Entry, detail::FixedText Counterpart>
id guardedRead(NSObject* self, SEL, NSUInteger index) {
    const SEL counterpart = detail::selectorOf<Counterpart>();
    // Exchanged, the counterpart's name leads to the plain read; before that it leads back here.
    const auto here = reinterpret_cast<void (*)()>(&guardedRead<Entry, Counterpart>);
    const bool isExchanged = detail::lookUp(self->isa(), counterpart).function != here;
    try {
        return send<id>(self, isExchanged ? counterpart : detail::selectorOf<Entry>(), index);
    } catch (const NSException&) {
        send<void>(self, "crashAtIndex:"_sel, index);
        return {};
    }
}

template <detail::FixedText Entry, detail::FixedText Counterpart>
void addCounterpart(ClassBuilder& is) {
    is.addMethod(detail::selectorOf<Counterpart>().name(), imp(&guardedRead<Entry, Counterpart>));
}

} // namespace

ZR_GROUP(NSArray, ZRSafe) {
    is.classMethod<&zr_openCrashProtector>("zr_openCrashProtector");
    is.method<&crashAtIndex>("crashAtIndex:");
    addCounterpart<objectAtIndex, "zr_NSSingleObjectArrayI_objectAtIndex:">(is);
    addCounterpart<objectAtIndex, "zr_NSArrayI_objectAtIndex:">(is);
    addCounterpart<objectAtIndexedSubscript, "zr_NSArrayI_objectAtIndexedSubscript:">(is);
    addCounterpart<objectAtIndex, "zr_NSArray0_objectAtIndex:">(is);
}

ZR_GROUP(NSFileManager, ZRXHelper) {
    is.method<&removeItemsOfPath>("removeItemsOfPath:");
}

void swizzleInstanceMethod(Class* ofClass, SEL protectedName, SEL replacementName) {
    if (!ofClass) {
        return;
    }
    const Method original = class_getInstanceMethod(ofClass, protectedName);
    const Method replacement = class_getInstanceMethod(ofClass, replacementName);
    if (class_addMethod(ofClass, protectedName, method_getImplementation(replacement),
                        method_getTypeEncoding(replacement))) {
        class_replaceMethod(ofClass, replacementName, method_getImplementation(original),
                            method_getTypeEncoding(original));
    } else {
        method_exchangeImplementations(original, replacement);
    }
}

void zr_openCrashProtector() {
    static std::once_flag isOpen;
    std::call_once(isOpen, [] {
        swizzleInstanceMethod(objc_getClass("__NSSingleObjectArrayI"), "objectAtIndex:"_sel,
                              "zr_NSSingleObjectArrayI_objectAtIndex:"_sel);
        swizzleInstanceMethod(objc_getClass("__NSArrayI"), "objectAtIndex:"_sel, "zr_NSArrayI_objectAtIndex:"_sel);
        swizzleInstanceMethod(objc_getClass("__NSArrayI"), "objectAtIndexedSubscript:"_sel,
                              "zr_NSArrayI_objectAtIndexedSubscript:"_sel);
        swizzleInstanceMethod(objc_getClass("__NSArray0"), "objectAtIndex:"_sel, "zr_NSArray0_objectAtIndex:"_sel);
    });
}

void crashAtIndex(NSArray*, NSUInteger) {}

id zr_NSSingleObjectArrayI_objectAtIndex(NSArray* self, NSUInteger index) {
    return send<id>(self, "zr_NSSingleObjectArrayI_objectAtIndex:"_sel, index);
}

id zr_NSArrayI_objectAtIndex(NSArray* self, NSUInteger index) {
    return send<id>(self, "zr_NSArrayI_objectAtIndex:"_sel, index);
}

id zr_NSArrayI_objectAtIndexedSubscript(NSArray* self, NSUInteger index) {
    return send<id>(self, "zr_NSArrayI_objectAtIndexedSubscript:"_sel, index);
}

id zr_NSArray0_objectAtIndex(NSArray* self, NSUInteger index) {
    return send<id>(self, "zr_NSArray0_objectAtIndex:"_sel, index);
}

void removeItemsOfPath(NSFileManager* self, NSString* path) {
    if (!self || !ZRXTextValid(path) || !self->fileExistsAtPath(path)) {
        return;
    }
    const Ref<NSArray> names = self->contentsOfDirectoryAtPath_error(path, nullptr);
    for (const id& name : names) {
        // The bare name, without the directory in front of it: callers enter the directory first.
        self->removeItemAtPath_error(cast<NSString>(name), nullptr);
    }
}

} // namespace zr
