#pragma once

#include <zrbasic/platform/appkit/toolkit.h>

#include <vector>

namespace zr::qt {

/// The screens as Qt knows them at the moment, the primary one first; its lower left corner is the origin.
[[nodiscard]] std::vector<ScreenState> presentScreens();

} // namespace zr::qt
