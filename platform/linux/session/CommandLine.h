#pragma once

#include <memory>
#include <optional>

class QCoreApplication;

namespace ovin {

/// Qt's application object: with a display, without which it ends the process, or without one when the program is only asked
/// for its help or version. The count and the arguments have to outlive it.
[[nodiscard]] std::unique_ptr<QCoreApplication> makeApplication(int& argumentCount, char** arguments);

/// Reads the program's command line: `--help`, `--version`, and nothing else. The exit status of a program that has nothing
/// more to do: 0 after it has said what it was asked for, and 2 after it has told, on the standard error stream, what was
/// wrong; nothing when it shall run. Needs Qt's application object with its name and version.
[[nodiscard]] std::optional<int> readCommandLine();

}  // namespace ovin
