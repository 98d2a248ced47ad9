#pragma once

#include <zrbasic/platform/qt/session.h>

#include <memory>

namespace zr::qt {

/// The session that all tests of the program run in. A test that ends it makes another one.
[[nodiscard]] std::unique_ptr<Session>& sessionOfTests();

} // namespace zr::qt
