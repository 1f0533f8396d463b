#include "platform/linux/ReplaceFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace ovin {
namespace {

std::error_code lastError() { return {errno, std::generic_category()}; }

std::error_code writeAll(int file, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = write(file, text.data(), text.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return lastError();
        text.remove_prefix(static_cast<std::size_t>(count));
    }
    return {};
}

std::error_code fill(int file, std::string_view text, mode_t permissions) {
    if (const auto error = writeAll(file, text)) return error;
    // Some file systems tell here only that they are full.
    return fchmod(file, permissions) != 0 || fsync(file) != 0 ? lastError() : std::error_code();
}

/// A new name in a folder is on the disk once the folder is. The file is there already, so that a failure changes nothing.
void syncFolder(const std::filesystem::path& folder) {
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    (void)fsync(descriptor);
    close(descriptor);
}

}  // namespace

std::error_code replaceFile(const std::filesystem::path& path, std::string_view text, mode_t permissions) {
    // Hidden, and with another ending than the file's, so that nobody takes it for one of its kind.
    std::string aside = path.parent_path() / ("." + path.filename().string() + ".XXXXXX");
    const int file = mkostemp(aside.data(), O_CLOEXEC);
    if (file < 0) return lastError();
    std::error_code error = fill(file, text, permissions);
    if (close(file) != 0 && !error) error = lastError();
    if (!error && std::rename(aside.c_str(), path.c_str()) != 0) error = lastError();
    if (error) {
        (void)unlink(aside.c_str());
        return error;
    }
    syncFolder(path.parent_path());
    return {};
}

}  // namespace ovin
