#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ovin {

/// A process id as the system hands it out. Ids are reused, and a foreign program may report any number.
using ProcessID = std::int32_t;

/// What this process knows about itself. Any thread.
class ProcessInfo {
public:
    virtual ~ProcessInfo() = default;

    [[nodiscard]] virtual ProcessID processIdentifier() const = 0;

    /// The bundle identifier of this application.
    [[nodiscard]] virtual std::string bundleIdentifier() const = 0;

    /// The value of an environment variable, read afresh at each call; nothing when it is not set, the empty string when it
    /// is set to that.
    [[nodiscard]] virtual std::optional<std::string> environment(std::string_view name) const = 0;
};

}  // namespace ovin
