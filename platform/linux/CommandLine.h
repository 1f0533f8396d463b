#pragma once

#include <optional>

namespace ovin {

/// Reads the program's command line: `--help`, `--version`, and nothing else. The exit status of a program that has nothing
/// more to do: 0 after it has said what it was asked for, and 2 after it has told, on the standard error stream, what was
/// wrong; nothing when it shall run. Needs Qt's application object with its name and version.
[[nodiscard]] std::optional<int> readCommandLine();

}  // namespace ovin
