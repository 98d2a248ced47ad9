#pragma once

#include <zrbasic/platform/runtime/function_ref.h>
#include <zrbasic/platform/runtime/ref.h>
#include <zrbasic/platform/runtime/types.h>

/// What the operations on sequences call back. Callbacks are only called while the operation runs, and are never given
/// a way to stop it. The objects they receive are never null and stay alive until they return.
///
/// An empty callback counts as one that always gives null, or false.
namespace zr {

/// Gives what stands for an element in the result; null leaves it out.
using ElementTransform = FunctionRef<id(NSObject* element)>;
using IndexedTransform = FunctionRef<id(NSObject* element, NSUInteger index)>;
using IndexTransform = FunctionRef<id(NSUInteger index)>;

/// Says whether an element is meant.
using ElementPredicate = FunctionRef<bool(NSObject* element)>;
using IndexedPredicate = FunctionRef<bool(NSObject* element, NSUInteger index)>;

/// Gives the next accumulated value, which may be null; so `accumulated` may be null as well.
using ElementCombiner = FunctionRef<id(NSObject* accumulated, NSObject* element)>;

} // namespace zr
