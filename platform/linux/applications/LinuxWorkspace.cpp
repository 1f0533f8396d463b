#include "platform/linux/applications/LinuxWorkspace.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <filesystem>
#include <mutex>
#include <optional>
#include <string_view>
#include <system_error>

#include "platform/linux/drawing/NamedIcon.h"

namespace ovin {
namespace {

/// A process that stays this long counts as an application. Scripts use the bus as well, some of them every second, with
/// programs that end at once; nobody needs to be told of these.
constexpr std::chrono::seconds settlingTime{1};

/// The kernel keeps this many characters of a process's name.
constexpr std::size_t longestKernelName = 15;

// Every discovery asks for the names of all processes, so the next functions are plain system calls.

std::string processFile(ProcessID pid, const char* name) { return "/proc/" + std::to_string(pid) + "/" + name; }

/// The last component of the path that the process runs; empty when it cannot be known.
std::string executableOf(ProcessID pid) {
    std::array<char, PATH_MAX> target{};
    const ssize_t length = readlink(processFile(pid, "exe").c_str(), target.data(), target.size());
    const std::string_view path(target.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
    return std::string(path.substr(path.rfind('/') + 1));
}

/// The beginning of what the kernel tells of the process in a file; empty when there is none.
std::string contentOf(ProcessID pid, const char* name) {
    const int file = open(processFile(pid, name).c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) return {};
    std::array<char, PATH_MAX> content{};
    const ssize_t length = ::read(file, content.data(), content.size());
    close(file);
    return {content.data(), length > 0 ? static_cast<std::size_t>(length) : 0};
}

/// The file name in the first argument whose file name begins so; `beginning` when there is none.
std::string argumentThatBegins(ProcessID pid, const std::string& beginning) {
    const std::string arguments = contentOf(pid, "cmdline");
    for (std::size_t start = 0, end = 0; start < arguments.size(); start = end + 1) {
        end = std::min(arguments.find('\0', start), arguments.size());
        const std::string argument = arguments.substr(start, end - start);
        std::string file = argument.substr(argument.rfind('/') + 1);
        if (file.starts_with(beginning)) return file;
    }
    return beginning;
}

/// The name of the process: its executable's, unless the process has given itself another, or the executable is the
/// interpreter of a script, whose name it is then.
std::string nameOf(ProcessID pid, const std::string& executable) {
    std::string name = contentOf(pid, "comm");
    name.erase(std::min(name.find('\n'), name.size()));
    if (executable.substr(0, longestKernelName) == name || name.empty()) return executable;
    return name.size() < longestKernelName ? name : argumentThatBegins(pid, name);
}

}  // namespace

/// The bus's thread reaches the main queue through this for as long as the workspace exists.
struct LinuxWorkspace::Outlet {
    std::mutex mutex;
    /// Null once the workspace is destroyed. Read on the main thread, or with the mutex.
    LinuxWorkspace* workspace = nullptr;
    bool isLookAwaited = false;

    /// Has the main thread look, once for all calls until it does. Any thread.
    static void lookSoon(const std::shared_ptr<Outlet>& outlet) {
        const std::lock_guard lock(outlet->mutex);
        if (outlet->workspace == nullptr || std::exchange(outlet->isLookAwaited, true)) return;
        outlet->workspace->mainQueue_.async([outlet] {
            {
                const std::lock_guard again(outlet->mutex);
                outlet->isLookAwaited = false;
            }
            if (outlet->workspace != nullptr) outlet->workspace->look();
        });
    }
};

LinuxWorkspace::LinuxWorkspace(SessionProcesses& processes, const StatusNotifierItems& items,
                               std::string ownBundleIdentifier, MainQueue& mainQueue, SystemLog& log)
    : processes_(processes),
      items_(items),
      ownBundleIdentifier_(std::move(ownBundleIdentifier)),
      mainQueue_(mainQueue),
      outlet_(std::make_shared<Outlet>()),
      urls_(log) {
    outlet_->workspace = this;
}

/// The bus reports connections until it is destroyed, including those that this program closes while it ends.
LinuxWorkspace::~LinuxWorkspace() {
    const std::lock_guard lock(outlet_->mutex);
    outlet_->workspace = nullptr;
}

void LinuxWorkspace::observeApplications(std::function<void()> handler) {
    handlers_.push_back(std::move(handler));
    if (handlers_.size() > 1) return;
    const auto longAgo = std::chrono::steady_clock::now() - settlingTime;
    for (const ProcessID pid : processes_.processes()) since_.emplace(pid, longAgo);
    // Observed first, so that no process comes between the first look and the first news.
    processes_.observe([outlet = outlet_] { Outlet::lookSoon(outlet); });
    look();
}

/// Tells of the applications that have come and gone, and looks again when the next one will have settled.
void LinuxWorkspace::look() {
    const auto now = std::chrono::steady_clock::now();
    std::map<ProcessID, std::chrono::steady_clock::time_point> since;
    std::set<ProcessID> settled;
    std::optional<std::chrono::nanoseconds> untilNext;
    for (const ProcessID pid : processes_.processes()) {
        const auto known = since_.find(pid);
        const auto first = since[pid] = known == since_.end() ? now : known->second;
        const auto left = settlingTime - (now - first);
        if (left <= std::chrono::nanoseconds::zero()) {
            settled.insert(pid);
        } else {
            untilNext = std::min<std::chrono::nanoseconds>(left, untilNext.value_or(left));
        }
    }
    since_ = std::move(since);
    nextLook_ = untilNext ? mainQueue_.after(*untilNext, [this] { look(); }) : nullptr;
    const bool isNews = told_ && settled != told_;
    told_ = std::move(settled);
    if (!isNews) return;
    for (const auto& handler : std::vector(handlers_)) handler();
}

std::vector<RunningApplication> LinuxWorkspace::runningApplications() const {
    std::vector<RunningApplication> applications;
    const auto entries = entries_.current();
    for (const ProcessID pid : processes_.processes()) applications.push_back(describe(pid, *entries));
    return applications;
}

RunningApplication LinuxWorkspace::describe(ProcessID pid, const DesktopEntries::Installed& entries) const {
    RunningApplication application;
    application.pid = pid;
    const std::string executable = executableOf(pid);
    const std::string name = nameOf(pid, executable);
    // An interpreter's own entry says nothing of the program that it runs.
    const DesktopEntry* entry = entries.find(name);
    if (entry == nullptr) entry = entries.find(executable);
    if (entry != nullptr) {
        application.bundleIdentifier = entry->id;
        if (!entry->name.empty()) application.localizedName = entry->name;
        if (!entry->icon.empty()) application.icon = Image(std::make_shared<NamedIcon>(entry->icon));
    }
    const auto items = items_.itemsOf(pid);
    const auto itemIcon = items.empty() ? nullptr : items.front().icon;
    // Several items would all look like the first one. An item that has no icon yet may come to have one.
    if (itemIcon && (application.icon ? items.size() == 1 : itemIcon->get() != nullptr)) {
        const std::string applicationIcon = entry == nullptr ? std::string() : entry->icon;
        application.icon = Image(std::make_shared<ItemOrApplicationIcon>(itemIcon, applicationIcon));
    }
    if (!application.localizedName && !name.empty()) application.localizedName = name;
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
