#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace ovin {

/// What a person can tell the application to do, by its menu and by whatever else the system offers.
enum class Command { showHiddenItems, organize, howThisWorks, launchAtLogin, about, checkForUpdates, quit };

/// A command as it is named outside of the application: on the command line and by the desktop.
struct NamedCommand {
    Command command;
    std::string_view name;
    std::string_view help;
};

inline constexpr std::array<NamedCommand, 7> namedCommands{{
    {Command::showHiddenItems, "show", "Opens the hidden items."},
    {Command::organize, "organize", "Begins to organize the menu bar, or finishes it."},
    {Command::howThisWorks, "guide", "Shows how Ovin works."},
    {Command::launchAtLogin, "launch-at-login", "Has the desktop start Ovin when the session begins, or no longer."},
    {Command::about, "about", "Shows the About window."},
    {Command::checkForUpdates, "check-for-updates", "Looks for updates."},
    {Command::quit, "quit", "Ends the Ovin that runs."},
}};

[[nodiscard]] constexpr std::optional<Command> commandNamed(std::string_view name) {
    for (const NamedCommand& named : namedCommands) {
        if (named.name == name) return named.command;
    }
    return std::nullopt;
}

}  // namespace ovin
