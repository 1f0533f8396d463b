#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace ovin {

/// In pixels, or in millimetres where the name says so.
struct Extent {
    int width = 0;
    int height = 0;

    friend bool operator==(const Extent&, const Extent&) = default;
};

/// The RandR extension's data, with its own ids, which are valid until the X server ends (those in LastingIDs.h longer).
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
    /// The CRTC that drives it; 0 while the output is off, plugged in or not.
    std::uint32_t crtc = 0;
    /// By their ids, in the server's order.
    std::vector<std::uint32_t> modes;
    /// The monitor's description of itself (the first block of its EDID); empty without a monitor or its EDID.
    std::string monitor = {};
};

/// A part of the X screen that one or more outputs show.
struct RandrCrtc {
    std::uint32_t id = 0;
    int x = 0;
    int y = 0;
    /// On the X screen, that is, after the rotation.
    Extent size;
    /// 0 while the CRTC is off; it has no size then.
    std::uint32_t mode = 0;
    /// Rotation and reflection as the extension encodes them.
    std::uint16_t rotation = 1;
    std::vector<std::uint32_t> outputs;

    friend bool operator==(const RandrCrtc&, const RandrCrtc&) = default;
};

/// The X screen that all parts lie on.
struct RandrScreen {
    Extent size;
    Extent millimetres;
    Extent smallest;
    Extent largest;
};

struct RandrState {
    std::uint32_t configTime = 0;
    RandrScreen screen;
    /// The output that the user has made primary; 0 when there is none.
    std::uint32_t primary = 0;
    std::vector<RandrOutput> outputs;
    std::vector<RandrCrtc> crtcs;
    std::vector<RandrMode> modes;

    /// Null when there is none with this id.
    [[nodiscard]] const RandrOutput* output(std::uint32_t id) const;
    [[nodiscard]] const RandrCrtc* crtc(std::uint32_t id) const;
    [[nodiscard]] const RandrMode* mode(std::uint32_t id) const;
    /// The CRTC that drives the output; null when the output is off or gone.
    [[nodiscard]] const RandrCrtc* crtcOf(std::uint32_t output) const;
};

/// Turns the size of a mode into the size on the X screen, or back: a quarter rotation swaps width and height either way.
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
    /// Makes the server hold up the requests of all other clients, or ends that.
    virtual void setGrabbed(bool grabbed) = 0;
    [[nodiscard]] virtual Answer setCrtc(const RandrCrtc& crtc, std::uint32_t configTime) = 0;
    /// False when the server refused.
    [[nodiscard]] virtual bool setScreen(Extent size, Extent millimetres) = 0;
};

}  // namespace ovin
