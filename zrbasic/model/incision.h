#pragma once

#include <zrbasic/platform/runtime/declare.h>

#include <functional>

namespace zr {

class NSString;

// NSObject(ZRXIncise)
//
// Replacing operations of a single object. The object is switched to a class of its own kind, made at run time and
// shared by all incised objects of its class: "__ZRXIncised_" and the name of the class that it had. It still reports
// that class, and it is never switched back. To replace an operation for all objects of a class, use
// `methodExchangeImplementations`.

/// Puts `implementation` in place of the operation `selector` of `self`, and says whether the object's class has that
/// operation at all.
///
/// The first implementation added for a selector stays for every object that is incised later; further ones are
/// ignored, with true as the answer. Operations that the root class has, too, are never replaced, although the answer
/// is true. `implementation` must have the operation's types, or callers that go by the types raise. False, and
/// nothing done, when an argument is null.
ZR_EXPORT bool inciseSelector_implementation(NSObject* self, SEL selector, IMP implementation);

/// The class "__ZRXIncised_" and `name`, made as a subclass of the actual class of `self` unless it exists. Borrowed;
/// null when an argument is null.
ZR_EXPORT Class* createIncisedClassWithOriginalClassName(NSObject* self, NSString* name);

namespace detail {

/// The class whose implementations an incised object had before.
[[nodiscard]] Class* classBeforeIncision(const NSObject* object);

/// Called with the event after an action.
using EventCallback = std::function<void(NSObject* event)>;

/// Lets `callback` run after each `action` of `responder`, an operation that takes the event. The newest callback of an
/// action replaces the one before. False, and nothing done, when an argument is null or empty, or the responder has
/// no such operation.
ZR_EXPORT bool installEventObserver(NSObject* responder, SEL action, EventCallback callback);

} // namespace detail

} // namespace zr
