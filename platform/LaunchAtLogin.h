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
        /// Registered, but the user has switched it off in the system's settings; only there can the user allow it again.
        requiresApproval,
        /// The system does not know this application.
        notFound,
    };

    virtual ~LaunchAtLogin() = default;

    /// Asked of the system at each call.
    [[nodiscard]] virtual Status status() const = 0;

    /// Asks the system to start this application at login. Returns what went wrong, in words; nothing on success.
    [[nodiscard]] virtual std::optional<std::string> registerApplication() = 0;

    /// Asks the system to stop doing so; returns the same as `registerApplication`.
    [[nodiscard]] virtual std::optional<std::string> unregisterApplication() = 0;
};

}  // namespace ovin
