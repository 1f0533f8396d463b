#include "platform/linux/applications/DesktopEntries.h"

#include <sys/stat.h>

#include <algorithm>
#include <ctime>
#include <optional>
#include <set>
#include <system_error>
#include <tuple>

#include "platform/linux/applications/DesktopEntryFile.h"
#include "platform/linux/system/XdgFolders.h"

namespace ovin {
namespace {

using Path = std::filesystem::path;

constexpr const char* extension = ".desktop";

/// A folder, and when something in it was last added, removed or replaced. A missing folder has a state, too.
using FolderState = std::tuple<ino_t, time_t, long>;

FolderState stateOf(const Path& folder) {
    struct stat info {};
    if (stat(folder.c_str(), &info) != 0) return {};
    return {info.st_ino, info.st_ctim.tv_sec, info.st_ctim.tv_nsec};
}

/// The state of a folder that is about to be read. A later change within the same tick of the kernel's clock would go
/// unnoticed, so a folder changed in this tick is read again.
FolderState stateBeforeReading(const Path& folder) {
    timespec now{};
    clock_gettime(CLOCK_REALTIME_COARSE, &now);
    const auto state = stateOf(folder);
    const auto& [inode, seconds, nanoseconds] = state;
    return std::tie(seconds, nanoseconds) < std::tie(now.tv_sec, now.tv_nsec) ? state : FolderState{inode, 0, 0};
}

/// The id of an entry: its path below `folder`, with hyphens for slashes and no extension.
std::string idOf(const Path& file, const Path& folder) {
    std::string id = file.lexically_relative(folder).replace_extension().string();
    std::replace(id.begin(), id.end(), '/', '-');
    return id;
}

/// The last component of the program that an entry runs; empty when it runs none or its TryExec is missing.
std::string executableOf(const DesktopEntryFile& entry) {
    const auto required = entry.value("TryExec");
    if (required && !findProgram(*required)) return {};
    return Path(programOfExec(entry.value("Exec").value_or(""))).filename().string();
}

}  // namespace

struct DesktopEntries::Reading {
    ByExecutable byExecutable;
    std::set<std::string> ids;
    std::map<Path, FolderState> folders;

    [[nodiscard]] bool isCurrent() const {
        return std::all_of(folders.begin(), folders.end(),
                           [](const auto& folder) { return stateOf(folder.first) == folder.second; });
    }

    void readFolder(const Path& folder) {
        std::map<std::string, Path> files;
        folders[folder] = stateBeforeReading(folder);
        std::error_code error;
        constexpr auto options = std::filesystem::directory_options::skip_permission_denied;
        std::filesystem::recursive_directory_iterator each(folder, options, error);
        for (; !error && each != std::filesystem::recursive_directory_iterator(); each.increment(error)) {
            std::error_code ignored;
            if (each->is_directory(ignored)) folders[each->path()] = stateBeforeReading(each->path());
            if (each->path().extension() == extension) files.emplace(idOf(each->path(), folder), each->path());
        }
        for (const auto& [id, path] : files) {
            if (!ids.contains(id)) readEntry(id, path);
        }
    }

    /// An entry that runs nothing does not override another one here, though it may remove that one from menus: a running
    /// program needs a name all the same.
    void readEntry(const std::string& id, const Path& path) {
        const auto entry = DesktopEntryFile::read(path);
        const std::string executable = entry ? executableOf(*entry) : std::string();
        if (executable.empty()) return;
        ids.insert(id);
        byExecutable.emplace(executable, DesktopEntry{id, entry->localizedValue("Name").value_or(""),
                                                      entry->localizedValue("Icon").value_or("")});
    }
};

std::shared_ptr<const DesktopEntries::ByExecutable> DesktopEntries::current() const {
    const std::lock_guard lock(mutex_);
    if (!reading_ || !reading_->isCurrent()) {
        const auto reading = std::make_shared<Reading>();
        for (const Path& folder : dataFolders_) reading->readFolder(folder / "applications");
        reading_ = reading;
    }
    return {reading_, &reading_->byExecutable};
}

std::vector<Path> dataFolders() {
    auto folders = systemFolders("XDG_DATA_DIRS", "/usr/local/share:/usr/share");
    folders.insert(folders.begin(), userFolder("XDG_DATA_HOME", ".local/share"));
    return folders;
}

}  // namespace ovin
