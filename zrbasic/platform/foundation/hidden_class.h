#pragma once

#include <zrbasic/platform/runtime/class.h>

#include <string>

namespace zr::detail {

// Classes that an object is switched to behind the scenes. Such a class hides itself: it answers `class` with the
// class that the object had before.

/// The class named `name` under `parent`, made and registered on first use. When another class of that name exists, a
/// class under `parent` whose name has a number behind it. Safe from any thread. Never null for a parent that is no
/// metaclass.
[[nodiscard]] ZR_EXPORT Class* ensureSubclass(Class* parent, const std::string& name);

/// What `self` would report as its class if its ancestor `hiding` did not exist: the parent of `hiding`, or what that
/// one, hiding itself too, reports.
[[nodiscard]] ZR_EXPORT Class* classBehind(NSObject* self, const Class* hiding);

} // namespace zr::detail
