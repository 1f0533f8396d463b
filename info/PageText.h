#pragma once

#include <string_view>

#include "platform/Views.h"

namespace ovin {

/// Text with marks: what stands between two "**" is bold, and after an unpaired one so is the rest.
/// `size` is that of the font.
[[nodiscard]] AttributedText markedText(std::string_view text, double size, SystemColor color);

}  // namespace ovin
