#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace ovin {

// Folders by the rules of XDG, from the environment. Relative paths are ignored, as the rules say: they would mean different
// folders depending on where the program was started.

/// A folder of this user: the one that a variable such as "XDG_CONFIG_HOME" names, or else `otherwise` in the home folder,
/// such as ".config".
[[nodiscard]] std::filesystem::path userFolder(const std::string& variable, std::string_view otherwise);

/// Folders for all users, in order of precedence: those that a variable such as "XDG_CONFIG_DIRS" lists, or else
/// `otherwise`, in the same form.
[[nodiscard]] std::vector<std::filesystem::path> systemFolders(const std::string& variable, const std::string& otherwise);

/// The non-empty parts of a list that is separated by colons.
[[nodiscard]] std::vector<std::string> partsOf(const std::string& list);

}  // namespace ovin
