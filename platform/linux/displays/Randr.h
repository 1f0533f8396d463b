#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace ovin {

/// In pixels or, where it says so, in millimetres.
struct Extent {
    int width = 0;
    int height = 0;

    friend bool operator==(const Extent&, const Extent&) = default;
};

/// What the RandR extension knows, with its own identifiers: all of them hold until the X server ends (LastingIDs.h has
/// others).
struct RandrMode {
    std::uint32_t id = 0;
    Extent size;
    /// Neither interlaced nor scanned twice.
    bool isPlain = true;
    /// How often a second the whole picture is drawn, times 1000.
    std::uint32_t millihertz = 0;
    /// The mode's flags: polarities, interlacing and the like, as the extension encodes them.
    std::uint32_t scan = 0;
};

/// A socket for a display.
struct RandrOutput {
    std::uint32_t id = 0;
    std::string name;
    /// What drives it; 0 while it is off, plugged in or not.
    std::uint32_t crtc = 0;
    /// By their ids, in the server's order.
    std::vector<std::uint32_t> modes;
    /// What the monitor says of itself (the first block of its EDID); empty where there is none, or none that speaks.
    std::string monitor = {};
};

/// A part of the X screen that one output shows, or several.
struct RandrCrtc {
    std::uint32_t id = 0;
    int x = 0;
    int y = 0;
    /// As it lies on the X screen: turned by the rotation.
    Extent size;
    /// 0 while it is off, and then it has no size.
    std::uint32_t mode = 0;
    /// Rotation and reflection as the extension encodes them.
    std::uint16_t rotation = 1;
    std::vector<std::uint32_t> outputs;

    friend bool operator==(const RandrCrtc&, const RandrCrtc&) = default;
};

/// The X screen that all of it lies on.
struct RandrScreen {
    Extent size;
    Extent millimetres;
    Extent smallest;
    Extent largest;
};

struct RandrState {
    std::uint32_t configTime = 0;
    RandrScreen screen;
    /// The output that the user has made the primary one; 0 when none is.
    std::uint32_t primary = 0;
    std::vector<RandrOutput> outputs;
    std::vector<RandrCrtc> crtcs;
    std::vector<RandrMode> modes;

    /// Null when there is none.
    [[nodiscard]] const RandrOutput* output(std::uint32_t id) const;
    [[nodiscard]] const RandrCrtc* crtc(std::uint32_t id) const;
    [[nodiscard]] const RandrMode* mode(std::uint32_t id) const;
    /// What drives the output; null when the output is off or gone.
    [[nodiscard]] const RandrCrtc* crtcOf(std::uint32_t output) const;
};

/// A size as it lies on the X screen, or the size of what lies there: rotation by a quarter swaps both ways.
[[nodiscard]] Extent turned(Extent size, std::uint16_t rotation);

/// Whether two outputs show the same: one part of the X screen drives both, or their parts begin at the same point, or one
/// lies within the other.
[[nodiscard]] bool isMirrored(const RandrState& state, std::uint32_t output);

/// The requests to an X server with RandR 1.3 or later. A server that has gone away refuses everything.
class RandrServer {
public:
    enum class Answer {
        done,
        /// The configuration has changed since the state was read: read it again.
        outdated,
        refused,
    };

    RandrServer() = default;
    RandrServer(const RandrServer&) = delete;
    RandrServer& operator=(const RandrServer&) = delete;
    virtual ~RandrServer() = default;

    /// Nothing when the server does not answer.
    [[nodiscard]] virtual std::optional<RandrState> read() = 0;
    /// Keeps all other clients waiting, or no longer.
    virtual void setGrabbed(bool grabbed) = 0;
    [[nodiscard]] virtual Answer setCrtc(const RandrCrtc& crtc, std::uint32_t configTime) = 0;
    /// False when the server refused.
    [[nodiscard]] virtual bool setScreen(Extent size, Extent millimetres) = 0;
};

}  // namespace ovin
