#pragma once

#include <zrbasic/platform/runtime/class.h>
#include <zrbasic/platform/runtime/class_builder.h>

#include <map>
#include <mutex>
#include <shared_mutex>

namespace zr::detail {

/// Moves on with every change of any method table.
inline constinit std::atomic<std::uint64_t> generationCount{1};
/// The root's record; null until the runtime stands.
inline constinit std::atomic<Class*> rootRecord{nullptr};

/// The process's classes and protocols, and the one lock over all method tables.
///
/// Reading a table costs a shared lock; messages avoid it through per-thread caches that are void as soon as the
/// generation moves on.
class Runtime {
  public:
    static Runtime& shared();

    static std::uint64_t generation() { return generationCount.load(std::memory_order_acquire); }

    /// The root's record; null until the runtime stands.
    static Class* rootClass() { return rootRecord.load(std::memory_order_acquire); }
    Class* enterNative(const NativeClass& native);
    Class* allocatePair(Class* parent, std::string_view name);
    void enterPair(Class* pair);
    Class* classNamed(std::string_view name);

    Protocol* protocolNamed(std::string_view name, bool makeIt);

    /// The operation in the class or an ancestor; adds pending groups first.
    MethodRecord* find(const Class* ofClass, SEL selector);
    IMP implementationOf(const Class* ofClass, SEL selector);

    /// How a method comes into a table: written down by the class's own declaration or group, or put there by a call.
    enum class Origin { Declared, Called };
    bool addMethod(Class* toClass, SEL selector, IMP implementation, const char* types, Origin origin);
    IMP replaceMethod(Class* inClass, SEL selector, IMP implementation, const char* types);
    IMP setImplementation(MethodRecord* method, IMP implementation);
    void exchange(MethodRecord* first, MethodRecord* second);
    std::vector<MethodRecord*> methodsOf(const Class* ofClass);

    bool addProperty(Class* toClass, std::unique_ptr<PropertyRecord> record);
    std::vector<Property> propertiesOf(const Class* ofClass);
    Property propertyOf(const Class* ofClass, std::string_view name);

    bool adopt(Class* byClass, Protocol* protocol, void* (*cast)(NSObject*));
    bool adopts(const Class* ofClass, const Protocol* protocol, bool climb);
    void* interfaceOf(NSObject* object, const Protocol* protocol);

    static NSObject* (*creatorOf(const Class* ofClass))() { return ofClass->m_create; }

    static void link(Group* group);

  private:
    Runtime();
    Class* newClass(std::string_view name, Class* parent);
    void settleGroups();
    static MethodRecord* findLocked(const Class* ofClass, SEL selector);
    static bool isAccessor(const Class* ofClass, SEL selector);
    static void markEdited(Class* edited);
    static void moveOn();

    std::shared_mutex m_lock;
    std::recursive_mutex m_groupLock;
    bool m_settling = false;
    Class* m_root = nullptr;
    std::map<std::string, Class*, std::less<>> m_classes;
    std::map<std::string, Protocol*, std::less<>> m_protocols;
};

} // namespace zr::detail
