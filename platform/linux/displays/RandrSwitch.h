#pragma once

#include <cstdint>

#include "platform/linux/displays/Randr.h"

namespace ovin {

/// Switches an output to another mode in one transaction, in which no other client takes part, and gives the X screen the
/// size that then holds everything. False when that cannot be, and then all is as it was, as far as the server lets itself
/// be asked.
[[nodiscard]] bool switchMode(RandrServer& server, std::uint32_t output, std::uint32_t mode);

}  // namespace ovin
