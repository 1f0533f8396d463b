#pragma once

#include <functional>
#include <memory>

#include "platform/Application.h"
#include "platform/MainQueue.h"

namespace ovin {

/// What the system tells an application, on the main thread.
struct ApplicationEvents {
    /// The event loop has begun.
    std::function<void()> didFinishLaunching;
    /// The process is about to end; called once, whatever ends it but a crash or SIGKILL.
    std::function<void()> willTerminate;
    /// Somebody has started the application while it runs: from the Finder, or its program once more.
    std::function<void()> openAgain;
};

/// The application object, made to be an accessory: no place in the Dock, and no menu bar of its own. It has no main menu
/// either, so that of the keys of a window only those of its buttons work.
class MacApplication final : public Application {
public:
    /// Makes the application object, which windows and status items need. Once in a process; `mainQueue` must outlive it.
    explicit MacApplication(MainQueue& mainQueue);
    MacApplication(const MacApplication&) = delete;
    MacApplication& operator=(const MacApplication&) = delete;
    ~MacApplication() override;

    void activate() override;
    void terminate() override;
    void beep() override;

    /// Runs the event loop, which also ends with signals from now on. The process ends within this call.
    void run(ApplicationEvents events);

private:
    struct Native;

    MainQueue& mainQueue_;
    std::unique_ptr<Native> native_;
};

}  // namespace ovin
