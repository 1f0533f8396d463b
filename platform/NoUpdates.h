#pragma once

#include <memory>
#include <utility>

#include "platform/Alerts.h"
#include "platform/UpdateFramework.h"

namespace ovin {

/// For a program whose updates are somebody else's business, as where the system's package manager has installed it. Never
/// looks for any, and says so when asked.
class NoUpdates final : public UpdateFramework {
public:
    /// `alerts` must outlive this object and its controllers.
    NoUpdates(Alerts& alerts, Alert answer) : alerts_(alerts), answer_(std::move(answer)) {}

    [[nodiscard]] std::unique_ptr<Controller> start(Delegate delegate) override;

private:
    Alerts& alerts_;
    const Alert answer_;
};

}  // namespace ovin
