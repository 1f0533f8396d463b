#pragma once

#include <atomic>
#include <memory>
#include <optional>

#include "platform/NoUpdates.h"
#include "platform/Platform.h"
#include "platform/icu/IcuText.h"
#include "platform/linux/accessibility/AccessibilityBus.h"
#include "platform/linux/accessibility/AccessibilityConsent.h"
#include "platform/linux/accessibility/LinuxAccessibility.h"
#include "platform/linux/applications/LinuxWorkspace.h"
#include "platform/linux/applications/SessionProcesses.h"
#include "platform/linux/displays/QtDisplays.h"
#include "platform/linux/displays/QtScreens.h"
#include "platform/linux/displays/XInputEventMonitor.h"
#include "platform/linux/drawing/DesktopColors.h"
#include "platform/linux/drawing/QtResources.h"
#include "platform/linux/items/QtBarSettings.h"
#include "platform/linux/items/QtItemMenus.h"
#include "platform/linux/items/StatusNotifierItems.h"
#include "platform/linux/items/StatusNotifierWatcher.h"
#include "platform/linux/items/WatcherClaim.h"
#include "platform/linux/own_item/QtStatusItem.h"
#include "platform/linux/session/AutostartEntry.h"
#include "platform/linux/session/QtApplication.h"
#include "platform/linux/system/Bus.h"
#include "platform/linux/system/FileUserDefaults.h"
#include "platform/linux/system/GentleThread.h"
#include "platform/linux/system/LinuxProcessInfo.h"
#include "platform/linux/system/QtMainQueue.h"
#include "platform/linux/system/StandardErrorLog.h"
#include "platform/linux/windows/PressCatcher.h"
#include "platform/linux/windows/QtAlerts.h"
#include "platform/linux/windows/QtWindows.h"
#include "platform/threads/SteadyClock.h"
#include "platform/threads/ThreadTasks.h"

namespace ovin {

/// The Linux desktop as the world of a program. Made and destroyed on the main thread of a Qt program; must outlive whatever
/// uses its platform. Later members use earlier ones; `tasks_` is the last, because its destructor waits for tasks that use
/// the others.
class LinuxWorld {
public:
    /// When this program becomes the watcher, with which status items register, where no other program is: after a while in
    /// which a bar may come, or at once because it only looks and ends; with nothing, never.
    using Watcher = std::optional<WatcherClaim::Begin>;

    /// Null without a session bus.
    [[nodiscard]] static std::unique_ptr<LinuxWorld> open(Watcher watcher = WatcherClaim::Begin::atOnce);

    LinuxWorld(const LinuxWorld&) = delete;
    LinuxWorld& operator=(const LinuxWorld&) = delete;
    ~LinuxWorld();

    /// A platform that never looks for updates.
    [[nodiscard]] Platform platform() { return platform(updates_); }
    /// A platform with the caller's `updates`, which must outlive it.
    [[nodiscard]] Platform platform(UpdateFramework& updates);
    [[nodiscard]] QtItemMenus& menus() { return menus_; }
    [[nodiscard]] QtApplication& application() { return application_; }

    /// Waits until it is known whether assistive programs are enabled and which items exist. Where this program has become
    /// the watcher, runs the event loop until no program has registered for 200 ms, for 10 s at most. For programs that look
    /// once and end; all others need not wait, because they are told of changes.
    void waitForAnswers();

private:
    LinuxWorld(std::unique_ptr<Bus> session, Watcher watcher);
    void waitForQuiet();
    /// Whether the session's watcher is this program's own, and no bar has registered there.
    [[nodiscard]] bool isOnlyHost() const { return watcher_ && watcher_->isOwner() && !watcher_->hasBar(); }

    std::unique_ptr<Bus> session_;
    SessionProcesses processes_;
    StatusNotifierItems items_;
    /// After `items_`, because its objects are matched with the items.
    AccessibilityBus accessibilityBus_;
    QtMainQueue mainQueue_;
    /// Serves only while no other program does. After `items_`, because it answers on the main thread, where the constructor
    /// of `items_` waits for the answer of a watcher and would block this one.
    std::optional<StatusNotifierWatcher> watcher_;
    LinuxProcessInfo process_;
    StandardErrorLog log_;
    LinuxWorkspace workspace_;
    QtDisplays displays_;
    FileUserDefaults defaults_;
    IcuText text_;
    SteadyClock clock_;
    QtItemMenus menus_;
    QtBarSettings barSettings_{QDBusConnection::sessionBus(), [this] { accessibility_.barHasChanged(); }};
    /// A bar that draws Ovin's item draws the others too.
    std::atomic<bool> hasBar_ = false;
    AccessibilityConsent consent_;
    LinuxAccessibility accessibility_;
    QtApplication application_;
    DesktopColors colors_{QDBusConnection::sessionBus()};
    QtScreens screens_;
    QtWindows windows_;
    PressCatcher presses_;
    XInputEventMonitor events_;
    QtStatusBar statusBar_{screens_, [this] { return !isOnlyHost() && barSettings_.hasTray(); },
                           // Without regard to the tray: its settings are read only where there is a bar.
                           [this](bool hasHost) {
                               hasBar_ = hasHost && !isOnlyHost();
                               accessibility_.barHasChanged();
                           }};
    QtAlerts alerts_;
    AutostartEntry launchAtLogin_;
    QtResources resources_;
    NoUpdates updates_{alerts_,
                       {"Ovin does not update itself here",
                        "It was installed with your system’s software, and new versions come with that too."}};
    ThreadTasks tasks_{giveWay};
};

}  // namespace ovin
