#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace ovin {

/// Starts another program, found like a shell finds it, with these arguments: in a session of its own, so that it outlives
/// this one and its terminal, with nothing of this process but its output. What an AppImage has set for this program is kept
/// from it. Sets `pid`, which somebody has to wait for. Returns what the system says is wrong, or 0. Any thread.
[[nodiscard]] int startProgram(const std::string& program, std::vector<std::string> arguments, pid_t& pid);

/// Waits until a program that was started like this has ended. Its status as `waitpid` has it: 0 when it has ended well, and
/// also when that is not to be known. Any thread.
[[nodiscard]] int awaitEnd(pid_t pid);

}  // namespace ovin
