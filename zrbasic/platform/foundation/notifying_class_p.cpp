#include <zrbasic/platform/foundation/notifying_class_p.h>

#include <zrbasic/platform/foundation/hidden_class.h>
#include <zrbasic/platform/foundation/key_value_coding.h>
#include <zrbasic/platform/foundation/key_value_observing.h>
#include <zrbasic/platform/runtime/message.h>

#include <algorithm>
#include <deque>
#include <mutex>
#include <shared_mutex>
#include <unordered_map>

namespace zr::detail {

namespace {

using Keys = std::vector<Ref<NSString>>;

/// The announcing classes, and the keys that their setters announce. A setter's name alone does not tell: setURL:
/// serves the key URL as well as the key uRL.
struct NotifyingClasses {
    std::shared_mutex mutex;
    std::unordered_map<const Class*, std::unordered_map<SEL, Keys>> setters;
};

NotifyingClasses& notifyingClasses() {
    // Never torn down: objects may be set in destructors of static objects.
    static auto* const classes = new NotifyingClasses;
    return *classes;
}

/// The announcing class among `ofClass` and its ancestors; null when there is none. There is never more than one.
Class* notifyingAncestor(const NotifyingClasses& classes, Class* ofClass) {
    while (ofClass && !classes.setters.contains(ofClass)) {
        ofClass = ofClass->parent();
    }
    return ofClass;
}

Class* findNotifyingAncestor(Class* ofClass) {
    NotifyingClasses& classes = notifyingClasses();
    const std::shared_lock lock(classes.mutex);
    return notifyingAncestor(classes, ofClass);
}

id reportedClass(NSObject* self, SEL) {
    return id(classBehind(self, findNotifyingAncestor(self->isa())));
}

/// What stands in for the setter of an observed property.
template <class Argument>
void announcingSetter(NSObject* self, SEL selector, Argument value) {
    Class* ownClass = nullptr;
    Keys keys;
    {
        NotifyingClasses& classes = notifyingClasses();
        const std::shared_lock lock(classes.mutex);
        ownClass = notifyingAncestor(classes, self->isa());
        keys = classes.setters.at(ownClass).at(selector);
    }
    // Observers may let go of the object, but not of what a destructor sets.
    const Ref<NSObject> alive(adopt, tryRetain(self) ? self : nullptr);
    std::deque<ObservedChange> changes;
    for (const Ref<NSString>& key : keys) {
        changes.emplace_back(self, key);
    }
    sendSuper<void>(self, ownClass->parent(), selector, value);
    for (; !changes.empty(); changes.pop_back()) {
        changes.back().announce();
    }
}

IMP announcingSetterFor(const MethodType& type) {
    if (type.argumentCount != 1 || type.encoding[0] != 'v') {
        return {};
    }
    switch (*type.argumentEncodings[0]) {
        case '@':
            return type.argumentEncodings[0][1] == '?' ? IMP() : imp(&announcingSetter<NSObject*>);
        case 'B':
            return imp(&announcingSetter<bool>);
        case 'c':
            return imp(&announcingSetter<std::int8_t>);
        case 'C':
            return imp(&announcingSetter<std::uint8_t>);
        case 's':
            return imp(&announcingSetter<std::int16_t>);
        case 'S':
            return imp(&announcingSetter<std::uint16_t>);
        case 'i':
            return imp(&announcingSetter<std::int32_t>);
        case 'I':
            return imp(&announcingSetter<std::uint32_t>);
        case 'q':
            return imp(&announcingSetter<std::int64_t>);
        case 'Q':
            return imp(&announcingSetter<std::uint64_t>);
        case 'f':
            return imp(&announcingSetter<float>);
        case 'd':
            return imp(&announcingSetter<double>);
        default:
            return {};
    }
}

Class* notifyingClassUnder(Class* parent) {
    Class* const made = ensureSubclass(parent, "NSKVONotifying_" + parent->name());
    NotifyingClasses& classes = notifyingClasses();
    {
        const std::unique_lock lock(classes.mutex);
        classes.setters.try_emplace(made);
    }
    class_addMethod(made, "class"_sel, imp(&reportedClass));
    return made;
}

/// The announcing class of the object, which is switched to it first if need be.
Class* ensureNotifyingClass(NSObject* object) {
    Class* const actual = object->isa();
    if (Class* const known = findNotifyingAncestor(actual)) {
        return known;
    }
    Class* const reported = object->class_();
    const bool isOnTop =
        actual != reported && actual->parent() == reported && actual->name().ends_with(reported->name());
    if (!isOnTop) {
        Class* const notifying = notifyingClassUnder(actual);
        object_setClass(object, notifying);
        return notifying;
    }
    // The class on top is made anew over the announcing one: same prefix, same operations.
    Class* const notifying = notifyingClassUnder(reported);
    const std::string prefix = actual->name().substr(0, actual->name().size() - reported->name().size());
    Class* const top = ensureSubclass(notifying, prefix + notifying->name());
    for (const Method method : class_copyMethodList(actual)) {
        class_addMethod(top, method_getName(method), method_getImplementation(method), method_getTypeEncoding(method));
    }
    object_setClass(object, top);
    return notifying;
}

} // namespace

void ensureNotifying(NSObject* object, NSString* key) {
    Class* const reported = object->class_();
    if (object->isa()->isMetaclass() || !send<bool>(reported, "automaticallyNotifiesObserversForKey:"_sel, key)) {
        return;
    }
    Class* const notifying = ensureNotifyingClass(object);
    for (const Method setter : settersForKey(notifying->parent(), key)) {
        const SEL selector = method_getName(setter);
        const IMP announcing = announcingSetterFor(*method_getImplementation(setter).type);
        if (!announcing) {
            continue;
        }
        {
            NotifyingClasses& classes = notifyingClasses();
            const std::unique_lock lock(classes.mutex);
            Keys& keys = classes.setters[notifying][selector];
            const auto isKnown = [&](const Ref<NSString>& known) { return known->isEqualToString(key); };
            if (std::none_of(keys.begin(), keys.end(), isKnown)) {
                keys.emplace_back(key);
            }
        }
        class_addMethod(notifying, selector, announcing, method_getTypeEncoding(setter));
    }
}

} // namespace zr::detail
