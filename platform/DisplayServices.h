#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/Geometry.h"

namespace ovin {

/// Names a display for as long as it stays connected, also to a later run of this program; a display that is plugged in
/// again may get another id. No two displays of a session share an id, and in a later session the id never names a different
/// display.
using DisplayID = std::uint32_t;

/// A way in which a display can run.
struct DisplayMode {
    /// Names the mode among those of its display, also to a later run of this program, in a later session too.
    std::int32_t id = 0;
    /// In points.
    int width = 0;
    int height = 0;
    /// In pixels: more than `width` where a point has several pixels.
    int pixelWidth = 0;
    bool isUsableForDesktopGUI = true;

    friend bool operator==(const DisplayMode&, const DisplayMode&) = default;
};

/// The displays of the user's session. `mainDisplay` and `bounds` on any thread, everything else on the main thread.
class DisplayServices {
public:
    virtual ~DisplayServices() = default;

    /// The display with the menu bar, whose top left corner is the origin of the global coordinates.
    [[nodiscard]] virtual DisplayID mainDisplay() const = 0;

    /// The area of a display in global coordinates, in points; an empty rectangle at the origin when it is gone.
    [[nodiscard]] virtual Rect bounds(DisplayID display) const = 0;

    /// Whether the display mirrors another one.
    [[nodiscard]] virtual bool isInMirrorSet(DisplayID display) const = 0;

    /// The mode that the display runs in, asked of the system at each call; nothing when the display is gone or off.
    [[nodiscard]] virtual std::optional<DisplayMode> currentMode(DisplayID display) const = 0;

    /// All modes of a display in the system's order, low-resolution doubles of scaled ones included; empty when it is gone.
    [[nodiscard]] virtual std::vector<DisplayMode> modes(DisplayID display) const = 0;

    /// Whether this session lets programs switch the modes of displays at all. Main thread only.
    [[nodiscard]] virtual bool canSwitchModes() const { return true; }

    /// Switches the display to the mode that `mode` names, in one transaction, until the end of the login session. False
    /// when the display has no such mode or the system refused; nothing has changed then. True says only that the system
    /// reported success; a system may do so and change nothing.
    [[nodiscard]] virtual bool apply(std::int32_t mode, DisplayID display) = 0;

    /// A name for this session's display server, unique among all that ever ran on this computer; nothing where a user has
    /// only one server at a time, as on macOS. Main thread only.
    [[nodiscard]] virtual std::optional<std::string> serverName() const { return std::nullopt; }

    /// Whether `name` is a display server that still runs and is not this session's. Its displays may have the same ids as
    /// this session's displays, but are different ones. Main thread only.
    [[nodiscard]] virtual bool isAnotherServer(const std::string& /*name*/) const { return false; }
};

}  // namespace ovin
