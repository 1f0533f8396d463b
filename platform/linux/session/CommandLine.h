#pragma once

#include <memory>
#include <optional>

class QCoreApplication;

namespace ovin {

/// Makes Qt's application object. Without a display it ends the process, unless the program is only asked for its help or
/// version. The count and the arguments must outlive the object.
[[nodiscard]] std::unique_ptr<QCoreApplication> makeApplication(int& argumentCount, char** arguments);

/// Reads the program's command line: `--help`, `--version`, and nothing else. Returns nothing when the program is to run,
/// and otherwise its exit status: 0 after it has printed what it was asked for, 2 after it has printed on the standard error
/// stream what was wrong. Needs Qt's application object with its name and version.
[[nodiscard]] std::optional<int> readCommandLine();

}  // namespace ovin
