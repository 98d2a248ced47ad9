#include <zrbasic/platform/runtime/class.h>

#include <zrbasic/platform/runtime/exception.h>
#include <zrbasic/platform/runtime/protocol.h>
#include <zrbasic/platform/runtime/runtime_p.h>

namespace zr {

using detail::Runtime;

Class::Class(std::string_view name, Class* parent, Class* metaclass, bool isMetaclass)
    : m_name(name),
      m_parent(parent),
      m_native(nullptr),
      m_depth(parent ? parent->m_depth + 1 : 0),
      m_isMetaclass(isMetaclass),
      m_ancestors(std::make_unique<const Class*[]>(m_depth + 1)) {
    m_isa.store(metaclass, std::memory_order_relaxed);
    for (std::uint32_t i = 0; i < m_depth; ++i) {
        m_ancestors[i] = parent->m_ancestors[i];
    }
    m_ancestors[m_depth] = this;
}

Class::~Class() = default;

Class* Class::nativeClass() const {
    return NSObject::classObject();
}

bool Class::respondsToSelector(SEL selector) const {
    return class_getInstanceMethod(isa(), selector) != nullptr;
}

id Class::copy() const {
    return id(const_cast<Class*>(this));
}

Class* object_getClass(const NSObject* object) {
    return object ? object->isa() : nullptr;
}

Class* object_setClass(NSObject* object, Class* newClass) {
    if (!object || !newClass) {
        return object_getClass(object);
    }
    Class* const oldClass = object->isa();
    const bool fits = !oldClass->isMetaclass() && !newClass->isMetaclass() &&
                      object->nativeClass()->descendsFrom(newClass->nativeAncestor());
    if (!fits) {
        NSException::raise(NSInvalidArgumentException, "an object of class " + object->nativeClass()->name() +
                                                           " cannot become a " + newClass->name());
    }
    object->m_isa.store(newClass, std::memory_order_relaxed);
    return oldClass;
}

const char* object_getClassName(const NSObject* object) {
    return class_getName(object_getClass(object));
}

Class* objc_getClass(std::string_view name) {
    return Runtime::shared().classNamed(name);
}

Class* objc_allocateClassPair(Class* parent, std::string_view name) {
    return Runtime::shared().allocatePair(parent, name);
}

void objc_registerClassPair(Class* pair) {
    if (pair) {
        Runtime::shared().enterPair(pair);
    }
}

id class_createInstance(Class* ofClass) {
    if (!ofClass || ofClass->isMetaclass()) {
        return {};
    }
    NSObject* (*const create)() = Runtime::creatorOf(ofClass);
    if (!create) {
        return {};
    }
    id object(adopt, create());
    object_setClass(object, ofClass);
    return object;
}

const char* class_getName(const Class* ofClass) {
    return ofClass ? ofClass->name().c_str() : "nil";
}

Class* class_getSuperclass(const Class* ofClass) {
    return ofClass ? ofClass->parent() : nullptr;
}

bool class_isMetaClass(const Class* ofClass) {
    return ofClass && ofClass->isMetaclass();
}

Method class_getInstanceMethod(const Class* ofClass, SEL selector) {
    return ofClass && selector ? Runtime::shared().find(ofClass, selector) : nullptr;
}

Method class_getClassMethod(const Class* ofClass, SEL selector) {
    return class_getInstanceMethod(object_getClass(ofClass), selector);
}

IMP class_getMethodImplementation(const Class* ofClass, SEL selector) {
    return ofClass && selector ? Runtime::shared().implementationOf(ofClass, selector) : IMP();
}

bool class_respondsToSelector(const Class* ofClass, SEL selector) {
    return class_getInstanceMethod(ofClass, selector) != nullptr;
}

bool class_addMethod(Class* toClass, SEL selector, IMP implementation, const char* types) {
    return toClass && selector && implementation &&
           Runtime::shared().addMethod(toClass, selector, implementation, types, Runtime::Origin::Called);
}

IMP class_replaceMethod(Class* inClass, SEL selector, IMP implementation, const char* types) {
    if (!inClass || !selector || !implementation) {
        return {};
    }
    return Runtime::shared().replaceMethod(inClass, selector, implementation, types);
}

std::vector<Method> class_copyMethodList(const Class* ofClass) {
    return ofClass ? Runtime::shared().methodsOf(ofClass) : std::vector<Method>();
}

SEL method_getName(Method method) {
    return method ? method->name : SEL();
}

IMP method_getImplementation(Method method) {
    return method ? class_getMethodImplementation(method->owner, method->name) : IMP();
}

const char* method_getTypeEncoding(Method method) {
    return method ? method->types.c_str() : "";
}

IMP method_setImplementation(Method method, IMP implementation) {
    return method && implementation ? Runtime::shared().setImplementation(method, implementation) : IMP();
}

void method_exchangeImplementations(Method first, Method second) {
    if (first && second) {
        Runtime::shared().exchange(first, second);
    }
}

std::vector<Property> class_copyPropertyList(const Class* ofClass) {
    return ofClass ? Runtime::shared().propertiesOf(ofClass) : std::vector<Property>();
}

Property class_getProperty(const Class* ofClass, std::string_view name) {
    return ofClass ? Runtime::shared().propertyOf(ofClass, name) : nullptr;
}

bool class_addProperty(Class* toClass, std::string_view name, std::vector<PropertyAttribute> attributes) {
    if (!toClass || name.empty()) {
        return false;
    }
    auto record = std::make_unique<PropertyRecord>();
    record->name = name;
    record->attributes = std::move(attributes);
    return Runtime::shared().addProperty(toClass, std::move(record));
}

bool class_conformsToProtocol(const Class* ofClass, const Protocol* protocol) {
    return ofClass && protocol && Runtime::shared().adopts(ofClass, protocol, false);
}

bool class_addProtocol(Class* toClass, Protocol* protocol) {
    return toClass && protocol && Runtime::shared().adopt(toClass, protocol, nullptr);
}

} // namespace zr
