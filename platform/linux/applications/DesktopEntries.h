#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace ovin {

/// An installed application as its desktop entry describes it.
struct DesktopEntry {
    /// The id of the entry without ".desktop", for example "org.kde.kate".
    std::string id;
    /// The application's name in the user's language; empty when it has none.
    std::string name;
    /// The icon's name in the icon theme, or its absolute path; empty when there is none.
    std::string icon;
};

/// The installed applications, including those that no menu shows. Read at the first call of `current`, and again after a
/// file was added, removed or replaced; a change within a file is not noticed. Any thread.
class DesktopEntries {
public:
    /// The key is the last component of the path of the program that the entry runs.
    using ByExecutable = std::map<std::string, DesktopEntry>;

    /// Reads the folders "applications" of `dataFolders`; earlier folders take precedence.
    explicit DesktopEntries(std::vector<std::filesystem::path> dataFolders) : dataFolders_(std::move(dataFolders)) {}

    /// The present entries. Of several that run one program, the one in the first folder, and there the first by id.
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
