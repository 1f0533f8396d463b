#include "platform/linux/session/OwnProgram.h"

#include <unistd.h>

#include <string_view>
#include <system_error>

#include "platform/linux/system/Environment.h"

namespace ovin {
namespace {

/// The beginning of the names of folders where AppImages are mounted.
constexpr std::string_view mountPrefix = "/.mount_";

bool liesBelow(const std::string& path, std::string folder) {
    if (!folder.ends_with('/')) folder += '/';
    return folder.size() > 1 && path.starts_with(folder);
}

/// Whether this user can run it.
bool isExecutable(const std::filesystem::path& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error) && access(path.c_str(), X_OK) == 0;
}

}  // namespace

std::optional<std::filesystem::path> programToStart(const std::string& running, const Variables& variables) {
    // The variables may belong to another AppImage, which has started this program.
    const std::string mount = variables("APPDIR").value_or("");
    if (liesBelow(running, mount) || running.find(mountPrefix) != std::string::npos) {
        const std::filesystem::path image = liesBelow(running, mount) ? variables("APPIMAGE").value_or("") : "";
        return image.is_absolute() && isExecutable(image) ? std::optional(image) : std::nullopt;
    }
    if (isExecutable(running)) return running;
    constexpr std::string_view deleted = " (deleted)";
    if (!running.ends_with(deleted)) return std::nullopt;
    const std::string replaced = running.substr(0, running.size() - deleted.size());
    return isExecutable(replaced) ? std::optional(std::filesystem::path(replaced)) : std::nullopt;
}

std::optional<std::filesystem::path> programToStart() {
    std::error_code error;
    const std::filesystem::path running = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) return std::nullopt;
    return programToStart(running.string(), environmentVariable);
}

}  // namespace ovin
