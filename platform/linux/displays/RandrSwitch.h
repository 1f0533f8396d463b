#pragma once

#include <cstdint>

#include "platform/linux/displays/Randr.h"

namespace ovin {

/// Switches an output to another mode, with other clients held up meanwhile, and gives the X screen the size that then holds
/// everything. False when that fails; everything is put back then, as far as the server allows.
[[nodiscard]] bool switchMode(RandrServer& server, std::uint32_t output, std::uint32_t mode);

}  // namespace ovin
