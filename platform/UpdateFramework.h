#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace ovin {

/// The system's way to keep an application up to date: it checks the application's feed as its settings say, shows what is
/// new in windows of its own, and installs nothing unasked. News of an update that nobody asked for waits until it is a good
/// moment. Main thread only.
class UpdateFramework {
public:
    /// What the framework asks the application. Called on the main thread.
    struct Delegate {
        /// The feed to read instead of the configured one, asked for before every check; nothing keeps the configured one.
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

        /// The user asks: the answer is shown whatever it is.
        virtual void checkForUpdates() = 0;
    };

    virtual ~UpdateFramework() = default;

    /// Begins the scheduled checks. Once the controller is gone nothing of `delegate` is called any more. Never null.
    [[nodiscard]] virtual std::unique_ptr<Controller> start(Delegate delegate) = 0;
};

}  // namespace ovin
