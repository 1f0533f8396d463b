#pragma once

#include <optional>
#include <vector>

#include "platform/linux/displays/Randr.h"

namespace ovin {

/// An X screen after a change.
struct RandrLayout {
    /// Those that change, as they are to be; the one with another mode first.
    std::vector<RandrCrtc> changed;
    /// What holds all of them and nothing else.
    Extent screen;
};

/// How the X screen looks once an output runs in another mode. The output keeps its rotation and its top left corner. Those
/// that touch its right or lower edge stay at that edge, and others make room for as much as would overlap, each of them to
/// the right or downwards; what mirrored the output stays where it was. Nothing when the output is off, does not offer the
/// mode, or the X screen would become larger than the server allows.
[[nodiscard]] std::optional<RandrLayout> layoutWithMode(const RandrState& state, std::uint32_t output, std::uint32_t mode);

}  // namespace ovin
