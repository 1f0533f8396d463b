#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace ovin {

// Folders by the rules of XDG, from the environment. The rules have no place for relative paths, which would be other
// folders for every way to start the program: they do not count.

/// A folder of this user's: the one that a variable such as "XDG_CONFIG_HOME" names, or else one of the home folder, such as
/// ".config".
[[nodiscard]] std::filesystem::path userFolder(const std::string& variable, std::string_view otherwise);

/// Folders for all users, in order of precedence: those that a variable such as "XDG_CONFIG_DIRS" lists, or else others, in
/// the same form.
[[nodiscard]] std::vector<std::filesystem::path> systemFolders(const std::string& variable, const std::string& otherwise);

/// The parts of a list between its colons that are not empty.
[[nodiscard]] std::vector<std::string> partsOf(const std::string& list);

}  // namespace ovin
