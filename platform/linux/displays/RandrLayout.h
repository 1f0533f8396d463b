#pragma once

#include <optional>
#include <vector>

#include "platform/linux/displays/Randr.h"

namespace ovin {

/// An X screen after a change.
struct RandrLayout {
    /// The CRTCs that change, in their new state; the one with another mode first.
    std::vector<RandrCrtc> changed;
    /// The smallest allowed size that holds all driven CRTCs.
    Extent screen;
};

/// The layout with an output in another mode. The output keeps its rotation and its top left corner. Outputs that touch its
/// right or lower edge stay at that edge, others move right or down only as far as keeps them from overlapping, and outputs
/// that mirrored it stay where they were. Nothing when the output is off, does not offer the mode, or the X screen would
/// become larger than the server allows.
[[nodiscard]] std::optional<RandrLayout> layoutWithMode(const RandrState& state, std::uint32_t output, std::uint32_t mode);

}  // namespace ovin
