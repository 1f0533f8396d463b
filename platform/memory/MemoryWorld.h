#pragma once

#include "platform/Platform.h"
#include "platform/icu/IcuText.h"
#include "platform/memory/MemoryAccessibility.h"
#include "platform/memory/MemoryDesktop.h"
#include "platform/memory/MemoryDisplays.h"
#include "platform/memory/MemoryLog.h"
#include "platform/memory/MemoryProcessInfo.h"
#include "platform/memory/MemoryServices.h"
#include "platform/memory/MemoryStatusItem.h"
#include "platform/memory/MemoryUserDefaults.h"
#include "platform/memory/MemoryWindows.h"
#include "platform/memory/MemoryWorkspace.h"
#include "platform/memory/SimulatedTime.h"

namespace ovin {

/// A whole world in memory, on simulated time, which tests set up, drive and inspect. Texts sort as in English.
struct MemoryWorld {
    SimulatedTime time;
    MemoryAccessibility accessibility{[this](std::chrono::nanoseconds duration) { time.wait(duration); }};
    MemoryWorkspace workspace;
    MemoryDisplays displays;
    MemoryUserDefaults defaults;
    MemoryProcessInfo process;
    IcuText text{"en_US"};
    MemoryLog log;
    MemoryApplication application;
    MemoryScreens screens;
    MemoryWindows windows;
    MemoryEventMonitor events;
    MemoryStatusBar statusBar;
    MemoryAlerts alerts;
    MemoryLaunchAtLogin launchAtLogin;
    MemoryResources resources;
    MemoryUpdateFramework updates;

    /// This world as the program sees it.
    [[nodiscard]] Platform platform() { return platform(log); }

    /// The same with another log.
    [[nodiscard]] Platform platform(SystemLog& otherLog) { return platform(accessibility, time, time, defaults, otherLog); }

    /// The same with another store of settings, as a relaunched program finds it.
    [[nodiscard]] Platform platform(UserDefaults& settings) { return platform(accessibility, time, time, settings, log); }

    /// The same with elements, a clock and tasks that take real time.
    [[nodiscard]] Platform platform(Accessibility& elements, Clock& clock, Tasks& tasks) {
        return platform(elements, clock, tasks, defaults, log);
    }

private:
    [[nodiscard]] Platform platform(Accessibility& elements, Clock& clock, Tasks& tasks, UserDefaults& settings,
                                    SystemLog& lines) {
        return {elements,    workspace, displays, settings, process,   text,   lines,         clock,     time,   tasks,
                application, screens,   windows,  events,   statusBar, alerts, launchAtLogin, resources, updates};
    }
};

}  // namespace ovin
