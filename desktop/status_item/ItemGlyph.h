#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace ovin {

/// A square picture as StatusNotifierItem wants it: ARGB of 32 bits, the most significant byte first.
struct ItemGlyph {
    std::int32_t side = 0;
    std::vector<std::uint8_t> bytes;
};

/// The pictogram of that name (resources/pictograms/Pictogram.h) in the colour 0xRRGGBB; no bytes when there is none.
ItemGlyph drawItemPictogram(std::int32_t side, std::uint32_t colour, std::string_view name);

/// One of a few simple shapes in the colour 0xRRGGBB; which of them depends on `variant`.
ItemGlyph drawItemGlyph(std::int32_t side, std::uint32_t colour, std::size_t variant);

}  // namespace ovin
