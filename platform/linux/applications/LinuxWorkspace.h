#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "platform/MainQueue.h"
#include "platform/Workspace.h"
#include "platform/linux/applications/DesktopEntries.h"
#include "platform/linux/applications/SessionProcesses.h"
#include "platform/linux/items/StatusNotifierItems.h"
#include "platform/linux/system/UrlOpener.h"

namespace ovin {

/// The running applications of a Linux session: the processes on the session bus. Names and icons are those of the desktop
/// entry that runs a program of the process's own name, as a script has it, or else the same executable; without one, the
/// name is the process's own and the icon that of its first status item, if it has one. The icon of an only status item
/// comes before the application's. There are no bundles. Observers are told of processes that stay for a second, and when
/// these end.
class LinuxWorkspace final : public Workspace {
public:
    /// `processes`, `items`, `mainQueue` and `log` must outlive this object. `ownBundleIdentifier` is that of this process.
    LinuxWorkspace(SessionProcesses& processes, const StatusNotifierItems& items, std::string ownBundleIdentifier,
                   MainQueue& mainQueue, SystemLog& log);
    LinuxWorkspace(const LinuxWorkspace&) = delete;
    LinuxWorkspace& operator=(const LinuxWorkspace&) = delete;
    ~LinuxWorkspace() override;

    [[nodiscard]] std::vector<RunningApplication> runningApplications() const override;
    [[nodiscard]] std::string displayName(const std::string& path) const override;
    [[nodiscard]] std::optional<Image> icon(const std::string& path) const override;
    void observeApplications(std::function<void()> handler) override;
    void open(const std::string& url) override { urls_.open(url); }

private:
    struct Outlet;

    void look();

    [[nodiscard]] RunningApplication describe(ProcessID pid, const DesktopEntries::Installed& entries) const;

    SessionProcesses& processes_;
    const StatusNotifierItems& items_;
    const DesktopEntries entries_{dataFolders()};
    const std::string ownBundleIdentifier_;
    MainQueue& mainQueue_;
    std::vector<std::function<void()>> handlers_;
    /// When each process was first seen, and the processes that the handlers were last told of as applications.
    std::map<ProcessID, std::chrono::steady_clock::time_point> since_;
    std::optional<std::set<ProcessID>> told_;
    std::unique_ptr<MainQueue::Timer> nextLook_;
    const std::shared_ptr<Outlet> outlet_;
    UrlOpener urls_;
};

}  // namespace ovin
