#include <zrbasic/platform/runtime/object.h>

#include <zrbasic/platform/runtime/extras_p.h>
#include <zrbasic/platform/runtime/invocation.h>
#include <zrbasic/platform/runtime/message.h>
#include <zrbasic/platform/runtime/runtime_p.h>

#include <cstdio>
#include <new>

namespace zr {

namespace {

id reportedClass(NSObject* self, SEL) {
    return self->isa()->isMetaclass() ? id(self) : id(self->isa());
}

Ref<NSMethodSignature> instanceSignature(const Class* ofClass, SEL selector) {
    const Method method = class_getInstanceMethod(ofClass, selector);
    return method ? NSMethodSignature::signatureWithObjCTypes(method_getTypeEncoding(method)) : nullptr;
}

NSUInteger addressHash(const void* address) {
    return reinterpret_cast<std::uintptr_t>(address) >> 4;
}

} // namespace

NSObject::NSObject()
    // Null only while the runtime builds its first classes.
    : m_isa(detail::Runtime::rootClass()) {}

NSObject::~NSObject() = default;

void* NSObject::operator new(std::size_t size) {
    void* const memory = ::operator new(sizeof(detail::ObjectHeader) + size);
    auto* const header = new (memory) detail::ObjectHeader;
    return header + 1;
}

void NSObject::operator delete(void* memory) noexcept {
    // Only reached when a constructor throws; living objects end through their counts.
    detail::freeObjectMemory(static_cast<detail::ObjectHeader*>(memory) - 1);
}

Class* NSObject::classObject() {
    static Class* const root = [] {
        detail::Runtime::shared();
        Class* const made = detail::Runtime::rootClass();
        ClassBuilder is(made);
        is.addMethod("class", imp(&reportedClass));
        is.method<&NSObject::init>("init");
        is.method<&NSObject::superclass>("superclass");
        is.method<&NSObject::isKindOfClass>("isKindOfClass:");
        is.method<&NSObject::isMemberOfClass>("isMemberOfClass:");
        is.method<&NSObject::conformsToProtocol>("conformsToProtocol:");
        is.method<&NSObject::respondsToSelector>("respondsToSelector:");
        is.method<&NSObject::isEqual>("isEqual:");
        is.method<&NSObject::isEqualTo>("isEqualTo:");
        is.method<&NSObject::hash>("hash");
        is.method<&NSObject::copy>("copy");
        is.method<&NSObject::mutableCopy>("mutableCopy");
        is.method<&NSObject::performSelector>("performSelector:");
        is.method<&NSObject::performSelector_withObject>("performSelector:withObject:");
        is.method<&NSObject::methodSignatureForSelector>("methodSignatureForSelector:");
        is.method<&NSObject::forwardingTargetForSelector>("forwardingTargetForSelector:");
        is.method<&NSObject::forwardInvocation>("forwardInvocation:");
        is.receivingClassMethod<&class_createInstance>("alloc");
        is.receivingClassMethod<&class_respondsToSelector>("instancesRespondToSelector:");
        is.receivingClassMethod<&instanceSignature>("instanceMethodSignatureForSelector:");
        return made;
    }();
    return root;
}

Class* NSObject::nativeClass() const {
    return NSObject::classObject();
}

id NSObject::init() {
    return id(this);
}

Class* NSObject::class_() const {
    Class* const actual = isa();
    if (actual->isDirect()) [[likely]] {
        return actual;
    }
    return send<Class*>(const_cast<NSObject*>(this), "class"_sel);
}

Class* NSObject::superclass() const {
    return class_()->parent();
}

bool NSObject::isKindOfClass(const Class* kind) const {
    const Class* const asked = isa()->isMetaclass() ? isa() : class_();
    return kind && asked->descendsFrom(kind);
}

bool NSObject::isMemberOfClass(const Class* kind) const {
    return kind && (isa()->isMetaclass() ? isa() : class_()) == kind;
}

bool NSObject::conformsToProtocol(const Protocol* protocol) const {
    return protocol && detail::Runtime::shared().adopts(class_(), protocol, true);
}

bool NSObject::respondsToSelector(SEL selector) const {
    return class_respondsToSelector(class_(), selector);
}

bool NSObject::isEqual(NSObject* other) const {
    return this == other;
}

bool NSObject::isEqualTo(NSObject* other) const {
    return isEqual(other);
}

NSUInteger NSObject::hash() const {
    return addressHash(this);
}

id NSObject::copy() const {
    doesNotRecognizeSelector("copyWithZone:"_sel);
}

id NSObject::mutableCopy() const {
    doesNotRecognizeSelector("mutableCopyWithZone:"_sel);
}

id NSObject::performSelector(SEL selector) {
    return send<id>(this, selector);
}

id NSObject::performSelector_withObject(SEL selector, NSObject* argument) {
    return send<id>(this, selector, argument);
}

Ref<NSMethodSignature> NSObject::methodSignatureForSelector(SEL selector) const {
    const Method method = class_getInstanceMethod(isa()->isMetaclass() ? isa() : class_(), selector);
    return method ? NSMethodSignature::signatureWithObjCTypes(method_getTypeEncoding(method)) : nullptr;
}

id NSObject::forwardingTargetForSelector(SEL) const {
    return {};
}

void NSObject::forwardInvocation(NSInvocation* invocation) {
    doesNotRecognizeSelector(invocation ? invocation->selector() : SEL());
}

void NSObject::doesNotRecognizeSelector(SEL selector) const {
    char address[32];
    std::snprintf(address, sizeof address, "%p", static_cast<const void*>(this));
    const bool isClass = isa()->isMetaclass();
    NSException::raise(NSInvalidArgumentException,
                       std::string(isClass ? "+[" : "-[") + object_getClassName(this) + ' ' + sel_getName(selector) +
                           "]: unrecognized selector sent to " + (isClass ? "class " : "instance ") + address);
}

namespace detail {

void destroyObject(NSObject* object) noexcept {
    ObjectHeader* const header = headerOf(object);
    object->~NSObject();
    // What others attached is let go after the object's own variables.
    if (ObjectExtras* const extras = header->extras.load(std::memory_order_acquire)) {
        header->extras.store(nullptr, std::memory_order_relaxed);
        delete extras;
    }
    // With no strong reference left no weak one can be added: a count of one is ours alone.
    if (header->weak.load(std::memory_order_acquire) == 1 ||
        header->weak.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        freeObjectMemory(header);
    }
}

void freeObjectMemory(ObjectHeader* header) noexcept {
    header->~ObjectHeader();
    ::operator delete(header);
}

} // namespace detail

} // namespace zr
