#include "platform/linux/applications/LinuxWorkspace.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <filesystem>
#include <mutex>
#include <string_view>
#include <system_error>

#include "platform/linux/drawing/NamedIcon.h"

namespace ovin {
namespace {

/// The kernel keeps this many characters of a process's name.
constexpr std::size_t longestKernelName = 15;

// Every discovery asks for the names of all programs: these two are plain system calls.

std::string processFile(ProcessID pid, const char* name) { return "/proc/" + std::to_string(pid) + "/" + name; }

/// The last component of the path that the process runs; empty when that is not to be known.
std::string executableOf(ProcessID pid) {
    std::array<char, PATH_MAX> target{};
    const ssize_t length = readlink(processFile(pid, "exe").c_str(), target.data(), target.size());
    const std::string_view path(target.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
    return std::string(path.substr(path.rfind('/') + 1));
}

/// What the kernel calls the process; empty when there is none.
std::string kernelNameOf(ProcessID pid) {
    const int file = open(processFile(pid, "comm").c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) return {};
    std::array<char, longestKernelName + 1> line{};
    const ssize_t length = ::read(file, line.data(), line.size());
    close(file);
    const std::string_view text(line.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
    return std::string(text.substr(0, text.find('\n')));
}

/// The name that the process goes by: its executable's unless it has given itself another.
std::string nameOf(ProcessID pid, const std::string& executable) {
    const std::string name = kernelNameOf(pid);
    return executable.substr(0, longestKernelName) == name || name.empty() ? executable : name;
}

}  // namespace

struct LinuxWorkspace::Outlet {
    std::mutex mutex;
    MainQueue* queue;
};

LinuxWorkspace::LinuxWorkspace(SessionProcesses& processes, const StatusNotifierItems& items,
                               std::string ownBundleIdentifier, MainQueue& mainQueue, SystemLog& log)
    : processes_(processes),
      items_(items),
      ownBundleIdentifier_(std::move(ownBundleIdentifier)),
      outlet_(std::make_shared<Outlet>()),
      urls_(log) {
    outlet_->queue = &mainQueue;
}

/// The bus tells of connections until the very end, those that this program closes included.
LinuxWorkspace::~LinuxWorkspace() {
    const std::lock_guard lock(outlet_->mutex);
    outlet_->queue = nullptr;
}

void LinuxWorkspace::observeApplications(std::function<void()> handler) {
    const auto shared = std::make_shared<const std::function<void()>>(std::move(handler));
    processes_.observe([outlet = outlet_, shared] {
        const std::lock_guard lock(outlet->mutex);
        if (outlet->queue != nullptr) outlet->queue->async([shared] { (*shared)(); });
    });
}

std::vector<RunningApplication> LinuxWorkspace::runningApplications() const {
    std::vector<RunningApplication> applications;
    const auto entries = entries_.current();
    for (const ProcessID pid : processes_.processes()) applications.push_back(describe(pid, *entries));
    return applications;
}

RunningApplication LinuxWorkspace::describe(ProcessID pid, const DesktopEntries::ByExecutable& entries) const {
    RunningApplication application;
    application.pid = pid;
    const std::string executable = executableOf(pid);
    if (const auto found = entries.find(executable); found != entries.end()) {
        const DesktopEntry& entry = found->second;
        application.bundleIdentifier = entry.id;
        if (!entry.name.empty()) application.localizedName = entry.name;
        if (!entry.icon.empty()) application.icon = Image(std::make_shared<NamedIcon>(entry.icon));
    }
    if (!application.icon) {
        if (auto icon = items_.iconOf(pid)) application.icon = Image(std::move(icon));
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
