#pragma once

#include <cstdint>
#include <vector>

#include "platform/DisplayServices.h"
#include "platform/linux/displays/Randr.h"

/// What displays and modes are called in the settings, where a name must mean the same to a later X server: the server's own
/// numbers end with it, and the next one gives them to others. These are made of what lasts.
namespace ovin {

/// Of the connector and the monitor at it. Between 1 and 2^31 - 1.
[[nodiscard]] DisplayID lastingID(const RandrOutput& output);

/// Of size, rate and scan, one for each of `output.modes` in that order. Modes that agree in all three are told apart by
/// their order. Between 1 and 2^31 - 1.
[[nodiscard]] std::vector<std::int32_t> lastingModeIDs(const RandrState& state, const RandrOutput& output);

}  // namespace ovin
