#pragma once

#include <memory>

#include "platform/Platform.h"
#include "platform/macos/session/MacApplication.h"

namespace ovin {

/// macOS as the world of a program. Made and destroyed on the main thread; must outlive whatever uses its platform. Later
/// members use earlier ones, and tasks use all: they are waited for first.
class MacWorld {
public:
    /// Also makes the application object.
    MacWorld();
    MacWorld(const MacWorld&) = delete;
    MacWorld& operator=(const MacWorld&) = delete;
    ~MacWorld();

    [[nodiscard]] Platform platform();
    [[nodiscard]] MacApplication& application() { return application_; }

private:
    const std::unique_ptr<MainQueue> mainQueue_;
    /// First, because windows, status items and screens need the application object.
    MacApplication application_;
    const std::unique_ptr<SystemLog> log_;
    const std::unique_ptr<ProcessInfo> process_;
    const std::unique_ptr<Clock> clock_;
    const std::unique_ptr<Text> text_;
    const std::unique_ptr<UserDefaults> defaults_;
    const std::unique_ptr<Resources> resources_;
    const std::unique_ptr<Workspace> workspace_;
    const std::unique_ptr<DisplayServices> displays_;
    const std::unique_ptr<Accessibility> accessibility_;
    const std::unique_ptr<Screens> screens_;
    const std::unique_ptr<Windows> windows_;
    const std::unique_ptr<EventMonitor> events_;
    const std::unique_ptr<StatusBar> statusBar_;
    const std::unique_ptr<Alerts> alerts_;
    const std::unique_ptr<LaunchAtLogin> launchAtLogin_;
    const std::unique_ptr<UpdateFramework> updates_;
    const std::unique_ptr<Tasks> tasks_;
};

}  // namespace ovin
