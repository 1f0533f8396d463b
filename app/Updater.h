#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/Platform.h"

namespace ovin {

/// Checks for updates: as scheduled from its start on, and when the user asks. Main thread only.
class Updater {
public:
    /// Everything behind `platform` must outlive this object.
    explicit Updater(const Platform& platform) : platform_(platform) {}
    Updater(const Updater&) = delete;
    Updater& operator=(const Updater&) = delete;
    ~Updater() = default;

    /// Begins the scheduled checks.
    void start() { (void)controller(); }

    void checkForUpdates();

private:
    UpdateFramework::Controller& controller();
    [[nodiscard]] std::optional<std::string> feedURLString() const;

    const Platform platform_;
    /// Made at its first use.
    std::unique_ptr<UpdateFramework::Controller> controller_;
};

}  // namespace ovin
