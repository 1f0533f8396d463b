#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <vector>

class QCoreApplication;

namespace ovin {

/// Something that the program can be told to do by an option of its command line, without the hyphens.
struct CommandLineAction {
    QString name;
    QString help;
};

/// What the command line asks for.
struct CommandLine {
    /// The exit status of a program that is not to run; nothing when it is to run.
    std::optional<int> status;
    /// The name of the one action that was asked for; empty when none was.
    QString action;
};

/// Makes Qt's application object on the session's X server, which in a Wayland session is that for X programs, also where
/// the environment names the toolkit's plug-in for Wayland; the option `-platform` is obeyed. Without such a server it ends
/// the process, unless the program is only asked for its help or version, or another one is told to end. The count and the
/// arguments must outlive the object.
[[nodiscard]] std::unique_ptr<QCoreApplication> makeApplication(int& argumentCount, char** arguments);

/// Reads the program's command line: `--help`, `--version` or one of `actions`, and nothing else. The status is 0 after it
/// has printed what it was asked for, and 2 after it has printed on the standard error stream what was wrong. Needs Qt's
/// application object with its name and version.
[[nodiscard]] CommandLine readCommandLine(const std::vector<CommandLineAction>& actions);

}  // namespace ovin
