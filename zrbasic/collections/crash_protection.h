#pragma once

#include <zrbasic/platform/runtime/class.h>

/// Reading arrays past their end without an exception, for replies that are shorter than expected.
///
/// `zr_openCrashProtector` switches it on for the whole process, and nothing switches it off. From then on a read past
/// the end gives null and calls the hook `crashAtIndex:`, for exactly these kinds of arrays and entries:
///
/// - `__NSSingleObjectArrayI`, `objectAtIndex:`
/// - `__NSArrayI`, `objectAtIndex:` and `objectAtIndexedSubscript:`
/// - `__NSArray0`, `objectAtIndex:`
///
/// Mutable arrays and their copies, and subscripts of arrays of no or one element, raise as before. What the null
/// object does with messages it does not know is in collections/null_messaging.h.
namespace zr {

class NSArray;
class NSFileManager;
class NSString;

/// Exchanges two operations of a class: afterwards the first name runs the second one's implementation and the other
/// way round. An operation that the class inherits is exchanged for that class and its descendants alone. A protected
/// name that the class did not know yet runs the replacement. Does nothing when the class is null or has no
/// replacement of that name.
ZR_EXPORT void swizzleInstanceMethod(Class* ofClass, SEL protectedName, SEL replacementName);

// NSArray(ZRSafe)

/// Switches the protection on, once; later calls do nothing. Callers on other threads wait until it is on.
ZR_EXPORT void zr_openCrashProtector();
/// Called with the index of every protected read that failed. Does nothing; it is there to be replaced or broken on.
ZR_EXPORT void crashAtIndex(NSArray* self, NSUInteger index);

// The counterparts of the protected entries, which are exchanged with them: once the protection is on, these names run
// the unprotected reads and raise past the end, on whatever array. Before that they read as the protection would.
[[nodiscard]] ZR_EXPORT id zr_NSSingleObjectArrayI_objectAtIndex(NSArray* self, NSUInteger index);
[[nodiscard]] ZR_EXPORT id zr_NSArrayI_objectAtIndex(NSArray* self, NSUInteger index);
[[nodiscard]] ZR_EXPORT id zr_NSArrayI_objectAtIndexedSubscript(NSArray* self, NSUInteger index);
[[nodiscard]] ZR_EXPORT id zr_NSArray0_objectAtIndex(NSArray* self, NSUInteger index);

// NSFileManager(ZRXHelper)

/// Removes the items named like the directory's entries, errors ignored. The names are taken as they are listed, so
/// they mean items of the current directory: the directory's own entries go only when it is the current one. Does
/// nothing for a path that is no valid text or where nothing is; a file has no entries.
ZR_EXPORT void removeItemsOfPath(NSFileManager* self, NSString* path);

} // namespace zr
