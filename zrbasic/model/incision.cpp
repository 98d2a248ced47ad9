#include <zrbasic/model/incision.h>

#include <zrbasic/platform/foundation/hidden_class.h>
#include <zrbasic/platform/foundation/string.h>
#include <zrbasic/platform/runtime/association.h>

namespace zr {

namespace {

constexpr std::string_view incisedPrefix = "__ZRXIncised_";

bool isIncised(const Class* ofClass) {
    return ofClass->name().starts_with(incisedPrefix);
}

/// Answers `class` for incised objects: the class that they had before.
id __ZROriginalClass(NSObject* self, SEL) {
    const Class* incised = self->isa();
    // Somebody may have switched the object once more since.
    while (incised->parent() && !isIncised(incised)) {
        incised = incised->parent();
    }
    return id(detail::classBehind(self, incised));
}

Class* incisedClass(Class* parent, const std::string& originalName) {
    Class* const made = detail::ensureSubclass(parent, std::string(incisedPrefix) + originalName);
    class_addMethod(made, "class"_sel, imp(&__ZROriginalClass));
    return made;
}

/// The event callback of a responder, as an object that can be attached to it.
class EventCallbackBox final : public NSObject {
    ZR_OBJECT(EventCallbackBox, NSObject)

  public:
    [[nodiscard]] id copy() const override { return id(const_cast<EventCallbackBox*>(this)); }

    detail::EventCallback callback;
};

/// Stands in for an observed action.
void __ZRObserverEvent(NSObject* self, SEL action, NSObject* event) {
    // The action may let go of everything that takes part; an object that is being destroyed can no longer be held.
    const id alive(adopt, detail::tryRetain(self) ? self : nullptr);
    const id heldEvent(event);
    sendSuper<void>(self, detail::classBeforeIncision(self), action, event);
    const id attached = objc_getAssociatedObject(self, action.record());
    if (const auto* const box = cast<EventCallbackBox>(attached)) {
        box->callback(event);
    }
}

} // namespace

bool inciseSelector_implementation(NSObject* self, SEL selector, IMP implementation) {
    // Classes are objects, too, but there is nothing that one could be switched to.
    if (!self || !selector || !implementation || self->isa()->isMetaclass()) {
        return false;
    }
    const Method original = class_getInstanceMethod(self->class_(), selector);
    if (!original) {
        return false;
    }
    Class* incised = self->isa();
    if (!isIncised(incised)) {
        incised = incisedClass(incised, incised->name());
        object_setClass(self, incised);
    }
    // The class itself is asked, not its objects. Classes answer the root's operations too, so those are left alone.
    if (!incised->respondsToSelector(selector)) {
        class_addMethod(incised, selector, implementation, method_getTypeEncoding(original));
    }
    return true;
}

Class* createIncisedClassWithOriginalClassName(NSObject* self, NSString* name) {
    if (!self || !name || self->isa()->isMetaclass()) {
        return nullptr;
    }
    const std::string originalName = name->utf8();
    if (Class* const known = objc_getClass(std::string(incisedPrefix) + originalName)) {
        return known;
    }
    return incisedClass(self->isa(), originalName);
}

namespace detail {

Class* classBeforeIncision(const NSObject* object) {
    Class* incised = object->isa();
    while (incised->parent() && !isIncised(incised)) {
        incised = incised->parent();
    }
    return incised->parent();
}

bool installEventObserver(NSObject* responder, SEL action, EventCallback callback) {
    if (!responder || !action || !callback ||
        !inciseSelector_implementation(responder, action, imp(&__ZRObserverEvent))) {
        return false;
    }
    const auto box = make<EventCallbackBox>();
    box->callback = std::move(callback);
    objc_setAssociatedObject(responder, action.record(), box, OBJC_ASSOCIATION_COPY);
    return true;
}

} // namespace detail

ZR_GROUP(NSObject, ZRXIncise) {
    is.method<&inciseSelector_implementation>("inciseSelector:implementation:");
    is.method<&createIncisedClassWithOriginalClassName>("createIncisedClassWithOriginalClassName:");
}

} // namespace zr
