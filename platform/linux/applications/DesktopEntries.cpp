#include "platform/linux/applications/DesktopEntries.h"

#include <sys/stat.h>

#include <algorithm>
#include <ctime>
#include <map>
#include <optional>
#include <string_view>
#include <system_error>
#include <tuple>

#include "platform/linux/applications/DesktopEntryFile.h"
#include "platform/linux/system/XdgFolders.h"

namespace ovin {
namespace {

using Path = std::filesystem::path;

constexpr std::string_view extension = ".desktop";

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

/// The id of an entry: its path below the folder of entries, with hyphens for slashes and no extension.
std::string idOf(std::string_view name) {
    std::string id(name.substr(0, name.size() - extension.size()));
    std::replace(id.begin(), id.end(), '/', '-');
    return id;
}

/// The last component of the program that an entry runs; empty when it runs none.
std::string executableOf(const DesktopEntryFile& entry) {
    const std::string program = programOfExec(entry.value("Exec").value_or(""));
    return program.substr(program.rfind('/') + 1);
}

/// What a file says when it runs a program that is there.
std::optional<DesktopEntryFile> runnable(const std::string& path) {
    auto entry = DesktopEntryFile::read(path);
    if (!entry || executableOf(*entry).empty()) return std::nullopt;
    const auto required = entry->value("TryExec");
    return required && !findProgram(*required) ? std::nullopt : std::move(entry);
}

}  // namespace

struct DesktopEntries::Installed::Files {
    struct File {
        const Path& folder;
        /// Its path below that.
        std::string name;

        [[nodiscard]] std::string path() const { return folder.native() + '/' + name; }
    };

    /// By the program that each file runs, of which only those lines have been read. Files of one program in order of
    /// precedence.
    std::multimap<std::string, File> byExecutable;
    std::map<Path, FolderState> folders;
    std::mutex mutex;
    /// What `find` has answered, from files read whole; nothing where none of them is in order.
    std::map<std::string, std::optional<DesktopEntry>> known;

    /// `firstByID` has the files of the folders before this one.
    void look(const Path& folder, std::map<std::string, File>& firstByID) {
        std::map<std::string, std::string> names;
        const Path& own = folders.insert_or_assign(folder, stateBeforeReading(folder)).first->first;
        std::error_code error;
        constexpr auto options = std::filesystem::directory_options::skip_permission_denied;
        std::filesystem::recursive_directory_iterator each(folder, options, error);
        for (; !error && each != std::filesystem::recursive_directory_iterator(); each.increment(error)) {
            std::error_code ignored;
            if (each->is_directory(ignored)) folders[each->path()] = stateBeforeReading(each->path());
            std::string name = each->path().native().substr(folder.native().size() + 1);
            if (each->path().extension() == extension) names.emplace(idOf(name), std::move(name));
        }
        for (const auto& [id, name] : names) {
            const File file{own, name};
            // An entry that runs nothing does not override another one here, though it may remove that one from menus: a
            // running program needs a name all the same.
            const auto first = firstByID.find(id);
            if (first != firstByID.end()) {
                if (runnable(first->second.path())) continue;
                firstByID.erase(first);
            }
            firstByID.emplace(id, file);
            const auto entry = DesktopEntryFile::readProgram(file.path());
            std::string executable = entry ? executableOf(*entry) : std::string();
            if (!executable.empty()) byExecutable.emplace(std::move(executable), file);
        }
    }

    [[nodiscard]] std::optional<DesktopEntry> read(const std::string& executable) const {
        const auto [first, last] = byExecutable.equal_range(executable);
        for (auto each = first; each != last; ++each) {
            const auto entry = runnable(each->second.path());
            if (!entry || executableOf(*entry) != executable) continue;
            return DesktopEntry{idOf(each->second.name), entry->localizedValue("Name").value_or(""),
                                entry->localizedValue("Icon").value_or("")};
        }
        return std::nullopt;
    }
};

DesktopEntries::Installed::Installed(const std::vector<Path>& dataFolders) : files_(std::make_unique<Files>()) {
    std::map<std::string, Files::File> firstByID;
    for (const Path& folder : dataFolders) files_->look(folder / "applications", firstByID);
}

DesktopEntries::Installed::~Installed() = default;

const DesktopEntry* DesktopEntries::Installed::find(const std::string& executable) const {
    if (!files_->byExecutable.contains(executable)) return nullptr;
    const std::lock_guard lock(files_->mutex);
    auto known = files_->known.find(executable);
    if (known == files_->known.end()) known = files_->known.emplace(executable, files_->read(executable)).first;
    return known->second ? &*known->second : nullptr;
}

bool DesktopEntries::Installed::isCurrent() const {
    return std::all_of(files_->folders.begin(), files_->folders.end(),
                       [](const auto& folder) { return stateOf(folder.first) == folder.second; });
}

std::shared_ptr<const DesktopEntries::Installed> DesktopEntries::current() const {
    const std::lock_guard lock(mutex_);
    if (!installed_ || !installed_->isCurrent()) installed_ = std::make_shared<Installed>(dataFolders_);
    return installed_;
}

std::vector<Path> dataFolders() {
    auto folders = systemFolders("XDG_DATA_DIRS", "/usr/local/share:/usr/share");
    folders.insert(folders.begin(), userFolder("XDG_DATA_HOME", ".local/share"));
    return folders;
}

}  // namespace ovin
