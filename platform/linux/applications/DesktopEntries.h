#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace ovin {

/// What an installed application says about itself.
struct DesktopEntry {
    /// The id of its entry without ".desktop", for example "org.kde.kate".
    std::string id;
    /// Its name in the user's language; empty when it has none.
    std::string name;
    /// The name of its icon in the icon theme, or an absolute path; empty when it has none.
    std::string icon;
};

/// The applications that are installed, those that no menu shows included. They are read when they are first asked for, and
/// again once something has been installed, removed or replaced; what somebody changes within a file is not noticed. Any
/// thread.
class DesktopEntries {
public:
    /// By the last component of the path of the program that each of them runs.
    using ByExecutable = std::map<std::string, DesktopEntry>;

    /// Those in the folders "applications" of `dataFolders`, each of which takes precedence over those behind it.
    explicit DesktopEntries(std::vector<std::filesystem::path> dataFolders) : dataFolders_(std::move(dataFolders)) {}

    /// As they are now. Of several that run the same program, it is the one in the first folder, and there the first by id.
    [[nodiscard]] std::shared_ptr<const ByExecutable> current() const;

private:
    struct Reading;

    const std::vector<std::filesystem::path> dataFolders_;
    mutable std::mutex mutex_;
    mutable std::shared_ptr<const Reading> reading_;
};

/// The user's data folders in order of precedence, from the environment.
[[nodiscard]] std::vector<std::filesystem::path> dataFolders();

}  // namespace ovin
