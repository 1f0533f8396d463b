#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace ovin {

/// Starts another program, found in PATH as by a shell, in a session of its own, so that it outlives this one and its
/// terminal. It inherits the output, no other files, and the environment without what an AppImage has set for this program.
/// Sets `pid`, which somebody has to wait for. Returns 0 or the system's error number. Any thread.
[[nodiscard]] int startProgram(const std::string& program, std::vector<std::string> arguments, pid_t& pid);

/// Waits until a program started by `startProgram` has ended. Returns its status as `waitpid` has it: 0 when the program
/// succeeded, and also when its status cannot be known. Any thread.
[[nodiscard]] int awaitEnd(pid_t pid);

}  // namespace ovin
