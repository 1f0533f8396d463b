#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace ovin {

/// Keeps the application up to date: checks its feed as its settings say, shows what is new in windows of its own, and
/// installs nothing unasked. An update that a scheduled check finds is shown only at a good moment. Main thread only.
class UpdateFramework {
public:
    /// What the framework asks the application. Called on the main thread.
    struct Delegate {
        /// The feed to read; nothing means the configured one. Called before every check.
        std::function<std::optional<std::string>()> feedURLString;
        /// A window with an update is about to be shown.
        std::function<void()> willHandleShowingUpdate;
    };

    /// Checks for updates while it lives.
    class Controller {
    public:
        Controller() = default;
        Controller(const Controller&) = delete;
        Controller& operator=(const Controller&) = delete;
        virtual ~Controller() = default;

        /// Checks because the user asks: the result is shown whatever it is.
        virtual void checkForUpdates() = 0;
    };

    virtual ~UpdateFramework() = default;

    /// Begins the scheduled checks. Once the controller is gone, `delegate` is called no more. Never null.
    [[nodiscard]] virtual std::unique_ptr<Controller> start(Delegate delegate) = 0;
};

}  // namespace ovin
