#pragma once

#include "platform/LaunchAtLogin.h"

namespace ovin {

// Not there yet.
class AutostartEntry final : public LaunchAtLogin {
public:
    [[nodiscard]] Status status() const override { return Status::notFound; }
    [[nodiscard]] std::optional<std::string> registerApplication() override { return "not there yet"; }
    [[nodiscard]] std::optional<std::string> unregisterApplication() override { return "not there yet"; }
};

}  // namespace ovin
