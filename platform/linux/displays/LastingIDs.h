#pragma once

#include <cstdint>
#include <vector>

#include "platform/DisplayServices.h"
#include "platform/linux/displays/Randr.h"

/// Ids of displays and modes for the settings, where an id must mean the same to a later X server. The server's own ids do
/// not: the next server gives them to others. These are made of what outlasts a server.
namespace ovin {

/// Made of the connector and its monitor. Between 1 and 2^31 - 1.
[[nodiscard]] DisplayID lastingID(const RandrOutput& output);

/// Made of size, rate and scan, one for each of `output.modes` in that order. Modes that agree in all three are told apart
/// by their order. Between 1 and 2^31 - 1.
[[nodiscard]] std::vector<std::int32_t> lastingModeIDs(const RandrState& state, const RandrOutput& output);

}  // namespace ovin
