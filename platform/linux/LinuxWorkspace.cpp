#include "platform/linux/LinuxWorkspace.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <system_error>

namespace ovin {
namespace {

/// The kernel keeps this many characters of a process's name.
constexpr std::size_t longestKernelName = 15;

std::filesystem::path processFolder(ProcessID pid) { return "/proc/" + std::to_string(pid); }

/// The last component of the path that the process runs; empty when that is not to be known.
std::string executableOf(ProcessID pid) {
    std::error_code error;
    return std::filesystem::read_symlink(processFolder(pid) / "exe", error).filename().string();
}

/// The name that the process goes by: its executable's unless it has given itself another.
std::string nameOf(ProcessID pid, const std::string& executable) {
    std::ifstream file(processFolder(pid) / "comm");
    std::string name;
    std::getline(file, name);
    return executable.substr(0, longestKernelName) == name || name.empty() ? executable : name;
}

}  // namespace

LinuxWorkspace::LinuxWorkspace(SessionProcesses& processes, DesktopEntries entries, std::string ownBundleIdentifier,
                               MainQueue& mainQueue)
    : processes_(processes),
      entries_(std::move(entries)),
      ownBundleIdentifier_(std::move(ownBundleIdentifier)),
      mainQueue_(mainQueue) {}

void LinuxWorkspace::observeApplications(std::function<void()> handler) {
    const auto shared = std::make_shared<const std::function<void()>>(std::move(handler));
    processes_.observe([&queue = mainQueue_, shared] { queue.async([shared] { (*shared)(); }); });
}

std::vector<RunningApplication> LinuxWorkspace::runningApplications() const {
    std::vector<RunningApplication> applications;
    for (const ProcessID pid : processes_.processes()) applications.push_back(describe(pid));
    return applications;
}

RunningApplication LinuxWorkspace::describe(ProcessID pid) const {
    RunningApplication application;
    application.pid = pid;
    const std::string executable = executableOf(pid);
    if (const auto entry = entries_.entryFor(executable)) {
        application.bundleIdentifier = entry->id;
        if (!entry->name.empty()) application.localizedName = entry->name;
        if (!entry->icon.empty()) application.icon = Image(std::make_shared<NamedIcon>(entry->icon));
    }
    if (!application.localizedName) {
        const std::string name = nameOf(pid, executable);
        if (!name.empty()) application.localizedName = name;
    }
    if (pid == getpid()) application.bundleIdentifier = ownBundleIdentifier_;
    return application;
}

std::string LinuxWorkspace::displayName(const std::string& path) const {
    const std::size_t end = path.find_last_not_of('/') + 1;
    return path.substr(0, end).substr(path.substr(0, end).rfind('/') + 1);
}

std::optional<Image> LinuxWorkspace::icon(const std::string& path) const {
    std::error_code error;
    if (!std::filesystem::exists(path, error)) return std::nullopt;
    const bool isFolder = std::filesystem::is_directory(path, error);
    return Image(std::make_shared<NamedIcon>(isFolder ? "folder" : "text-x-generic"));
}

}  // namespace ovin
