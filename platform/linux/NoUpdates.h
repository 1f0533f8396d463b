#pragma once

#include "platform/Alerts.h"
#include "platform/UpdateFramework.h"

namespace ovin {

/// For a program that was installed by the system's package manager, whose business updates are. Never looks for any, and
/// says so when asked.
class NoUpdates final : public UpdateFramework {
public:
    explicit NoUpdates(Alerts& alerts) : alerts_(alerts) {}

    [[nodiscard]] std::unique_ptr<Controller> start(Delegate delegate) override;

private:
    Alerts& alerts_;
};

}  // namespace ovin
