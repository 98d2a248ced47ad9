#pragma once

#include <zrbasic/platform/runtime/object.h>

namespace zr::test {

/// An object of a class "Namesake" that another file has for itself, as same_name_test.cpp has one.
[[nodiscard]] Ref<NSObject> namesakeOfTheOtherFile();

} // namespace zr::test
