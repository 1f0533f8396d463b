#pragma once

#include "platform/Alerts.h"

namespace ovin {

/// Alerts as Qt's message boxes. `run` returns at once; the box is modal to the whole program.
class QtAlerts final : public Alerts {
public:
    void run(const Alert& alert) override;
};

}  // namespace ovin
