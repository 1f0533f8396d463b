#pragma once

#include <optional>

#include "platform/Geometry.h"

namespace ovin {

/// The mouse and the keys that go with it at one moment, wherever the pointer is.
struct X11Pointer {
    /// In pixels of the X server.
    Point position;
    /// Whether the user holds down a button.
    bool hasButtonDown = false;
    bool hasControlDown = false;

    /// One round trip to the X server; nothing without one.
    [[nodiscard]] static std::optional<X11Pointer> read();
};

}  // namespace ovin
