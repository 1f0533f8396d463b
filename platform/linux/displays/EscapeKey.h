#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>

#include "platform/linux/displays/Xcb.h"

namespace ovin {

/// Takes the Escape key from all other windows, for a window that never has the keyboard, until it is destroyed.
class EscapeKey {
public:
    /// Calls `pressed` from the event loop; it may destroy the returned object. Null where there is no X server; no effect
    /// where another program has taken the key before. Main thread only.
    [[nodiscard]] static std::unique_ptr<EscapeKey> grab(std::function<void()> pressed);

private:
    EscapeKey(XcbConnection connection, std::function<void()> pressed);
    void read();

    XcbConnection connection_;
    const std::function<void()> pressed_;
    QSocketNotifier notifier_;
};

}  // namespace ovin
