#pragma once

#include "platform/Accessibility.h"
#include "platform/Alerts.h"
#include "platform/Application.h"
#include "platform/Clock.h"
#include "platform/DisplayServices.h"
#include "platform/EventMonitor.h"
#include "platform/LaunchAtLogin.h"
#include "platform/MainQueue.h"
#include "platform/ProcessInfo.h"
#include "platform/Resources.h"
#include "platform/Screens.h"
#include "platform/StatusItem.h"
#include "platform/SystemLog.h"
#include "platform/Tasks.h"
#include "platform/Text.h"
#include "platform/UpdateFramework.h"
#include "platform/UserDefaults.h"
#include "platform/Windows.h"
#include "platform/Workspace.h"

namespace ovin {

/// The world that the program runs in. Made once by `main`, which keeps the referenced objects alive until the process ends;
/// may be copied.
struct Platform {
    Accessibility& accessibility;
    Workspace& workspace;
    DisplayServices& displays;
    UserDefaults& defaults;
    ProcessInfo& process;
    Text& text;
    SystemLog& log;
    Clock& clock;
    MainQueue& mainQueue;
    Tasks& tasks;
    Application& application;
    Screens& screens;
    Windows& windows;
    EventMonitor& events;
    StatusBar& statusBar;
    Alerts& alerts;
    LaunchAtLogin& launchAtLogin;
    Resources& resources;
    UpdateFramework& updates;
};

}  // namespace ovin
