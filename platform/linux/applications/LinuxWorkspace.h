#pragma once

#include <memory>
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
/// entry that runs the same executable; without one, the name is the process's own and the icon that of its first status
/// item, if it has one. There are no bundles.
class LinuxWorkspace final : public Workspace {
public:
    /// `processes`, `items`, `mainQueue` and `log` must outlive this object. `ownBundleIdentifier` is that of this very
    /// process.
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
    /// What the bus's thread reaches the main queue through, for as long as there is one.
    struct Outlet;

    [[nodiscard]] RunningApplication describe(ProcessID pid, const DesktopEntries::ByExecutable& entries) const;

    SessionProcesses& processes_;
    const StatusNotifierItems& items_;
    const DesktopEntries entries_{dataFolders()};
    const std::string ownBundleIdentifier_;
    const std::shared_ptr<Outlet> outlet_;
    UrlOpener urls_;
};

}  // namespace ovin
