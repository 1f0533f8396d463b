#pragma once

#include <memory>
#include <optional>
#include <utility>

#include "platform/linux/displays/Randr.h"
#include "platform/linux/displays/Xcb.h"

namespace ovin {

/// RandR over a connection of its own, which is meant for one question or one change: what the server says of its screen
/// when a client connects is true at that time only.
class XcbRandr final : public RandrServer {
public:
    /// Null without an X server at `display`, the environment's when null, and with one that does not speak RandR 1.3.
    [[nodiscard]] static std::unique_ptr<XcbRandr> connect(const char* display = nullptr);

    /// The connection's; local where the server is.
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
