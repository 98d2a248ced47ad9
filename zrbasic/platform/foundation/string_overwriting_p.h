#pragma once

#include <zrbasic/platform/foundation/string.h>

namespace zr::detail {

/// Overwrites the characters of a string that is about to go, so that they do not stay behind in freed memory: only if
/// `string` is its sole reference, which it is to be moved in for. Whether it was, and null is nothing to overwrite.
///
/// Constants are never overwritten, because their literals hold them. A weak reference that revives the string at this
/// very moment, on another thread, sees it as it is overwritten.
bool overwriteSoleString(Ref<NSString> string);

} // namespace zr::detail
