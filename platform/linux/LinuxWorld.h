#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "platform/NoUpdates.h"
#include "platform/Platform.h"
#include "platform/icu/IcuText.h"
#include "platform/linux/accessibility/AccessibilityBus.h"
#include "platform/linux/accessibility/LinuxAccessibility.h"
#include "platform/linux/applications/LinuxWorkspace.h"
#include "platform/linux/applications/SessionProcesses.h"
#include "platform/linux/displays/QtDisplays.h"
#include "platform/linux/displays/QtScreens.h"
#include "platform/linux/displays/XInputEventMonitor.h"
#include "platform/linux/drawing/QtResources.h"
#include "platform/linux/items/QtItemMenus.h"
#include "platform/linux/items/StatusNotifierItems.h"
#include "platform/linux/items/StatusNotifierWatcher.h"
#include "platform/linux/own_item/QtStatusItem.h"
#include "platform/linux/session/AutostartEntry.h"
#include "platform/linux/session/QtApplication.h"
#include "platform/linux/system/Bus.h"
#include "platform/linux/system/FileUserDefaults.h"
#include "platform/linux/system/GentleThread.h"
#include "platform/linux/system/LinuxProcessInfo.h"
#include "platform/linux/system/QtMainQueue.h"
#include "platform/linux/system/StandardErrorLog.h"
#include "platform/linux/windows/QtAlerts.h"
#include "platform/linux/windows/QtWindows.h"
#include "platform/threads/SteadyClock.h"
#include "platform/threads/ThreadTasks.h"

namespace ovin {

/// The Linux desktop as the world of a program. Made and destroyed on the main thread of a Qt program; must outlive whatever
/// uses its platform. The last members use the first ones, and so do tasks: they are waited for first.
class LinuxWorld {
public:
    /// Whether status items may register with this program where no other takes them.
    enum class Watcher { ifThereIsNone, never };

    /// Null without a session bus.
    [[nodiscard]] static std::unique_ptr<LinuxWorld> open(Watcher watcher = Watcher::ifThereIsNone);

    LinuxWorld(const LinuxWorld&) = delete;
    LinuxWorld& operator=(const LinuxWorld&) = delete;
    ~LinuxWorld();

    /// Without updates of its own.
    [[nodiscard]] Platform platform() { return platform(updates_); }
    /// With updates that somebody else has made.
    [[nodiscard]] Platform platform(UpdateFramework& updates);
    [[nodiscard]] QtItemMenus& menus() { return menus_; }
    [[nodiscard]] QtApplication& application() { return application_; }

    /// Waits until it is known whether assistive programs are enabled, and which items are there. Where this program has
    /// become the watcher, runs the event loop until the programs that waited for one have registered: until none has come
    /// for a moment, and for 10 s at most. For programs that look once and end; all others just hear of changes.
    void waitForAnswers();

private:
    LinuxWorld(std::unique_ptr<Bus> session, Watcher watcher);
    void waitForQuiet();

    std::unique_ptr<Bus> session_;
    SessionProcesses processes_;
    StatusNotifierItems items_;
    /// Its answers are compared with the items.
    AccessibilityBus accessibilityBus_;
    /// Serves only while no other program does. It answers on the main thread, so whoever waits there for the watcher's
    /// answer, as the items do while they are made, must not find this one.
    std::optional<StatusNotifierWatcher> watcher_;
    LinuxProcessInfo process_;
    QtMainQueue mainQueue_;
    StandardErrorLog log_;
    LinuxWorkspace workspace_;
    QtDisplays displays_;
    FileUserDefaults defaults_;
    IcuText text_;
    SteadyClock clock_;
    QtItemMenus menus_;
    LinuxAccessibility accessibility_;
    QtApplication application_;
    QtScreens screens_;
    QtWindows windows_;
    XInputEventMonitor events_;
    QtStatusBar statusBar_{screens_};
    QtAlerts alerts_;
    AutostartEntry launchAtLogin_;
    QtResources resources_;
    NoUpdates updates_{alerts_,
                       {"Ovin does not update itself here",
                        "It was installed with your system’s software, and new versions come with that too."}};
    ThreadTasks tasks_{giveWay};
};

}  // namespace ovin
