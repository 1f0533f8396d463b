#pragma once

#include <string>
#include <string_view>

namespace ovin {

/// The label of a D-Bus menu entry as Qt writes one: the mnemonic is marked by "&" instead of "_", doubled marks stand for
/// themselves, and only the first mark counts.
[[nodiscard]] std::string qtMenuLabel(std::string_view label);

}  // namespace ovin
