#pragma once

#include <string>

namespace zr::detail {

/// Starts the program file as a process of its own, without arguments, in a session of its own: it outlasts this process
/// and needs no waiting for. Otherwise it inherits what programs do: environment, current directory, standard streams.
/// False, and nothing left behind, when the system cannot run it. From any thread.
[[nodiscard]] bool startDetached(const std::string& path);

} // namespace zr::detail
