#pragma once

#include "platform/EventMonitor.h"

namespace ovin {

/// Presses of mouse buttons anywhere on the X display, heard through the XInput extension by a connection of its own.
class XInputEventMonitor final : public EventMonitor {
public:
    [[nodiscard]] std::unique_ptr<Token> monitorMouseDowns(std::function<void()> handler) override;
};

}  // namespace ovin
