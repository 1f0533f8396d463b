#include "platform/linux/system/ReplaceFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace ovin {
namespace {

// Each new file has a name of its own, because another replacement at the same time could put a shared one in place before
// it is complete. It is hidden and has another extension, so that no program takes it for the file.
constexpr std::string_view randomPart = "XXXXXX";
constexpr std::string_view ending = ".new";

std::string prefixOf(const std::filesystem::path& path) { return "." + path.filename().string() + "."; }

/// The new name is on the disk once its folder is synchronised. Errors are ignored: the file is replaced already.
void syncFolder(const std::filesystem::path& folder) {
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    (void)fsync(descriptor);
    close(descriptor);
}

std::error_code lastSystemError() { return {errno, std::generic_category()}; }

std::error_code writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(file, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return lastSystemError();
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return {};
}

}  // namespace

std::error_code replaceFile(const std::filesystem::path& path, std::string_view text, mode_t permissions) {
    std::string aside = path.parent_path() / prefixOf(path);
    aside.append(randomPart).append(ending);
    const int file = mkostemps(aside.data(), static_cast<int>(ending.size()), O_CLOEXEC);
    if (file < 0) return lastSystemError();
    std::error_code error = writeAll(file, text);
    // Some file systems report only here that they are full.
    if (!error && (fchmod(file, permissions) != 0 || fsync(file) != 0)) error = lastSystemError();
    if (close(file) != 0 && !error) error = lastSystemError();
    if (!error && std::rename(aside.c_str(), path.c_str()) != 0) error = lastSystemError();
    if (error) {
        (void)unlink(aside.c_str());
        return error;
    }
    syncFolder(path.parent_path());
    return {};
}

void removeUnfinishedReplacements(const std::filesystem::path& path) {
    const std::string prefix = prefixOf(path);
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(path.parent_path(), error)) {
        const std::string name = entry.path().filename().string();
        const bool isUnfinished = name.size() == prefix.size() + randomPart.size() + ending.size() &&
                                  name.starts_with(prefix) && name.ends_with(ending);
        if (isUnfinished) (void)unlink(entry.path().c_str());
    }
}

}  // namespace ovin
