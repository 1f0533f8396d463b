#pragma once

#include <memory>
#include <utility>

#include "platform/Alerts.h"
#include "platform/UpdateFramework.h"

namespace ovin {

/// For a program that something else updates, for example the system's package manager. Never looks for updates, and shows
/// `answer` when the user asks for them.
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
