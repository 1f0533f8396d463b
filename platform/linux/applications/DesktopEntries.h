#pragma once

#include <filesystem>
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

/// The installed applications, including those that no menu shows. Their files are looked at, for the programs that they
/// run, at the first call of `current`, and again after a file was added, removed or replaced; a change within a file is not
/// noticed. Any thread.
class DesktopEntries {
public:
    class Installed;

    /// Reads the folders "applications" of `dataFolders`; earlier folders take precedence.
    explicit DesktopEntries(std::vector<std::filesystem::path> dataFolders) : dataFolders_(std::move(dataFolders)) {}

    /// What is installed at present.
    [[nodiscard]] std::shared_ptr<const Installed> current() const;

private:
    const std::vector<std::filesystem::path> dataFolders_;
    mutable std::mutex mutex_;
    mutable std::shared_ptr<const Installed> installed_;
};

/// The entries by the last component of the path of the program that they run. An entry is read whole when it is first asked
/// for: most of those that are installed never run. Any thread.
class DesktopEntries::Installed {
public:
    explicit Installed(const std::vector<std::filesystem::path>& dataFolders);
    Installed(const Installed&) = delete;
    Installed& operator=(const Installed&) = delete;
    ~Installed();

    /// The entry of a program; null when there is none. Of several, the one in the first folder, and there the first by id.
    [[nodiscard]] const DesktopEntry* find(const std::string& executable) const;

    /// Whether no file has been added, removed or replaced since.
    [[nodiscard]] bool isCurrent() const;

private:
    struct Files;

    const std::unique_ptr<Files> files_;
};

/// The user's data folders in order of precedence, from the environment.
[[nodiscard]] std::vector<std::filesystem::path> dataFolders();

}  // namespace ovin
