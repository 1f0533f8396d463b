#pragma once

#include <functional>
#include <memory>

#include "platform/Application.h"
#include "platform/MainQueue.h"

namespace ovin {

/// The system's messages to an application. Called on the main thread.
struct ApplicationEvents {
    /// The event loop has begun.
    std::function<void()> didFinishLaunching;
    /// The process is about to end; called once, whatever ends it but a crash or SIGKILL.
    std::function<void()> willTerminate;
    /// The user has started the application while it runs: Launch Services start a bundle once, and tell its process of
    /// further starts. A process that is started past them is not told of, and runs beside the first: if it gave way to one
    /// that is about to end, none would be left.
    std::function<void()> openAgain;
};

/// The application object, as an accessory: no Dock icon and no menu bar of its own. Without a main menu, the only keys that
/// work in a window are those of its buttons.
class MacApplication final : public Application {
public:
    /// Makes the application object, which windows and status items need. Once in a process. `mainQueue` must outlive it.
    explicit MacApplication(MainQueue& mainQueue);
    MacApplication(const MacApplication&) = delete;
    MacApplication& operator=(const MacApplication&) = delete;
    ~MacApplication() override;

    void activate() override;
    void terminate() override;
    void beep() override;

    /// Runs the event loop, which signals also end from now on. The process ends within this call.
    void run(ApplicationEvents events);

private:
    struct Native;

    MainQueue& mainQueue_;
    std::unique_ptr<Native> native_;
};

}  // namespace ovin
