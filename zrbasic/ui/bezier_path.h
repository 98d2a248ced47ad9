#pragma once

#include <zrbasic/platform/runtime/export.h>
#include <zrbasic/platform/runtime/ref.h>

namespace zr {

class CGPath;
class NSBezierPath;

// NSBezierPath(ZRXHelper)

/// The receiver's pieces as a path for animations and canvases, a new one that the caller owns; an open path stays open.
///
/// Null for a path that ends with a close, whatever comes before or only moves after it; for one of moves alone; for an
/// empty and a null receiver. Nothing is raised.
///
/// The message is `CGPath`; in C++ that is the type, so the first letters of the function are small ones.
[[nodiscard]] ZR_EXPORT Ref<CGPath> cgPath(NSBezierPath* self);

} // namespace zr
