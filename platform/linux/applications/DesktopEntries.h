#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace ovin {

/// What an installed application says about itself.
struct DesktopEntry {
    /// The name of its file without the folder and ".desktop", for example "org.kde.kate".
    std::string id;
    /// Its name in the user's language.
    std::string name;
    /// The name of its icon in the icon theme, or an absolute path; empty when it has none.
    std::string icon;
};

/// The applications that are installed, by the program that each of them runs. Read once.
class DesktopEntries {
public:
    /// Reads the entries below `dataFolders`, each of which takes precedence over those behind it. `language` is a locale
    /// such as "de_DE.UTF-8".
    DesktopEntries(const std::vector<std::filesystem::path>& dataFolders, const std::string& language);

    /// The application that runs an executable; `executable` is the last component of its path.
    [[nodiscard]] std::optional<DesktopEntry> entryFor(const std::string& executable) const;

private:
    std::map<std::string, DesktopEntry> byExecutable_;
};

/// The user's data folders in order of precedence, from the environment.
[[nodiscard]] std::vector<std::filesystem::path> dataFolders();

/// The language of messages, from the environment.
[[nodiscard]] std::string messageLanguage();

}  // namespace ovin
