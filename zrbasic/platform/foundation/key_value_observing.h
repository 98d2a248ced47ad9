#pragma once

#include <zrbasic/platform/foundation/string.h>

namespace zr {

// NSObject(NSKeyValueObserving)
//
// Objects that are told when a property of another object changes. The observer answers the message
// `observeValueForKeyPath:ofObject:change:context:`:
//
//     void observeValue(NSString* keyPath, NSObject* object, NSDictionary* change, void* context);
//     ZR_METHOD(observeValue, "observeValueForKeyPath:ofObject:change:context:")
//
// A change is announced by a `willChangeValueForKey` and the matching `didChangeValueForKey`. Setting an observed
// property through its setter, by name or by a C++ call, announces itself: the first observer switches the object to a
// hidden class "NSKVONotifying_..." whose setters do it, unless the class answers false to the class operation
// `automaticallyNotifiesObserversForKey:`. The object still reports its own class.
//
// Every pair announces for itself: a pair around a setter that announces too makes two announcements, the inner one
// first. Equal values are announced like any others. Observers are told on the thread that ended the pair, newest
// first.
//
// Observers are held weakly; one that has died is forgotten. Observer and observed object may die, be added or removed,
// and properties may be set again, during an announcement; an observer is kept alive while it is told, and one that
// was removed before its turn is not told any more. Adding and removing is safe from any thread.
//
// A key path is the name of one property; paths over several objects are never announced.

enum NSKeyValueObservingOptions : NSUInteger {
    /// Put the new value into the change.
    NSKeyValueObservingOptionNew = 1,
    /// Put the old value into the change.
    NSKeyValueObservingOptionOld = 2,
    /// Announce once at registration already, with the value of that moment as the new one if asked for.
    NSKeyValueObservingOptionInitial = 4,
    /// Announce before the change too, without a new value.
    NSKeyValueObservingOptionPrior = 8,
};

enum NSKeyValueChange : NSUInteger {
    NSKeyValueChangeSetting = 1,
};

/// Keys of the change dictionary. The kind is always `NSKeyValueChangeSetting`; values that are null are there as the
/// null object; the last key is there, and true, only in announcements made before the change.
[[nodiscard]] ZR_EXPORT Ref<NSString> NSKeyValueChangeKindKey();
[[nodiscard]] ZR_EXPORT Ref<NSString> NSKeyValueChangeNewKey();
[[nodiscard]] ZR_EXPORT Ref<NSString> NSKeyValueChangeOldKey();
[[nodiscard]] ZR_EXPORT Ref<NSString> NSKeyValueChangeNotificationIsPriorKey();

/// Lets `observer` be told of changes of `keyPath`. Registering twice tells it twice. Null arguments do nothing, but for
/// the context, which is only handed on.
ZR_EXPORT void addObserver_forKeyPath_options_context(NSObject* self, NSObject* observer, NSString* keyPath,
                                                      NSUInteger options, void* context);

/// Ends the newest registration of `observer` for `keyPath`; the longer form, the newest with that context. Raises
/// `NSRangeException` when there is none. Null arguments do nothing.
ZR_EXPORT void removeObserver_forKeyPath(NSObject* self, NSObject* observer, NSString* keyPath);
ZR_EXPORT void removeObserver_forKeyPath_context(NSObject* self, NSObject* observer, NSString* keyPath, void* context);

/// Says that the value of `key` is about to change: old values are taken now. Costs next to nothing when nobody
/// observes the object.
ZR_EXPORT void willChangeValueForKey(NSObject* self, NSString* key);
/// Tells the observers that there were at the matching `willChangeValueForKey` on this thread. Without one it does
/// nothing.
ZR_EXPORT void didChangeValueForKey(NSObject* self, NSString* key);

namespace detail {

/// Whether the class answers the two messages that announce changes itself.
[[nodiscard]] ZR_EXPORT bool announcesInItsOwnWay(const Class* ofClass);

/// A change between its two announcements. When an exception ends the change, nobody is told of it.
class ZR_EXPORT ObservedChange {
  public:
    /// Borrows both, which must outlive it.
    ObservedChange(NSObject* object, NSString* key);
    ~ObservedChange();
    ObservedChange(const ObservedChange&) = delete;
    ObservedChange& operator=(const ObservedChange&) = delete;

    /// The change took place.
    void announce();

  private:
    NSObject* m_object;
    NSString* m_key;
    std::size_t m_depth;
};

} // namespace detail

} // namespace zr
