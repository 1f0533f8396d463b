#pragma once

#include <memory>
#include <optional>
#include <utility>

#include "platform/linux/displays/Randr.h"
#include "platform/linux/displays/Xcb.h"

namespace ovin {

/// RandR over a connection of its own. Use one for a single question or change, because what the server says of its screen
/// at connection is true only at that time.
class XcbRandr final : public RandrServer {
public:
    /// Connects to `display`, or to the environment's when that is null. Null without an X server that speaks RandR 1.3.
    [[nodiscard]] static std::unique_ptr<XcbRandr> connect(const char* display = nullptr);

    /// The connection's socket; a local one when the server runs on this computer.
    [[nodiscard]] int socket() const { return xcb_get_file_descriptor(connection_.get()); }

    [[nodiscard]] std::optional<RandrState> read() override;
    void setGrabbed(bool grabbed) override;
    [[nodiscard]] Answer setCrtc(const RandrCrtc& crtc, std::uint32_t configTime) override;
    [[nodiscard]] bool setScreen(Extent size, Extent millimetres) override;

private:
    XcbRandr(XcbConnection connection, const xcb_screen_t& screen) : connection_(std::move(connection)), screen_(screen) {}

    [[nodiscard]] std::optional<RandrScreen> readScreen();

    const XcbConnection connection_;
    const xcb_screen_t& screen_;
};

}  // namespace ovin
