#pragma once

#include <QSocketNotifier>
#include <cstdint>
#include <functional>
#include <memory>

#include "platform/linux/displays/Xcb.h"

namespace ovin {

/// Reports the mouse's buttons wherever the pointer is and whoever has grabbed it, through a connection of its own.
class RawButtons {
public:
    enum class Event { press, release };

    /// Calls `handler` from the event loop, once for any number of such events of the left and right button that arrive
    /// together; it may destroy the returned object. Null where the X server has no such events. Main thread only.
    [[nodiscard]] static std::unique_ptr<RawButtons> listen(Event event, std::function<void()> handler);

private:
    RawButtons(XcbConnection connection, Event event, std::function<void()> handler);
    void read();

    XcbConnection connection_;
    const std::uint16_t event_;
    const std::function<void()> handler_;
    QSocketNotifier notifier_;
};

}  // namespace ovin
