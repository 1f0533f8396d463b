#pragma once

#include <optional>
#include <string>

namespace ovin {

/// Whether the system starts this application when the user logs in. Main thread only.
class LaunchAtLogin {
public:
    enum class Status {
        notRegistered,
        enabled,
        /// Registered, but the user has switched it off in the system's own settings, where alone it can be allowed again.
        requiresApproval,
        /// The system does not know this application.
        notFound,
    };

    virtual ~LaunchAtLogin() = default;

    /// Asked of the system at each call.
    [[nodiscard]] virtual Status status() const = 0;

    /// Asks the system to start this application at login. Returns what went wrong, in words; nothing when nothing did.
    [[nodiscard]] virtual std::optional<std::string> registerApplication() = 0;

    /// Asks the system to no longer do so; like `registerApplication`.
    [[nodiscard]] virtual std::optional<std::string> unregisterApplication() = 0;
};

}  // namespace ovin
