#pragma once

#include <zrbasic/platform/runtime/class.h>

namespace zr {

// NSObject(ZRXHelper)

/// Exchanges the implementations of two instance operations that the class has or inherits.
///
/// An inherited operation is exchanged where it is defined, for the defining class and all that descend from it. When
/// either operation is missing or an argument is null, nothing changes. Exchanging twice restores. Safe from any
/// thread.
ZR_EXPORT void methodExchangeImplementations(Class* ofClass, SEL first, SEL second);

/// The same for the receiving class. The spelling is part of the interface.
template <class T>
void methodExchangeImplementationsWithOriginSelector_swizedSelector(SEL originSelector, SEL swizedSelector) {
    methodExchangeImplementations(T::classObject(), originSelector, swizedSelector);
}

} // namespace zr
