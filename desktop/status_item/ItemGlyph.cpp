#include "desktop/status_item/ItemGlyph.h"

#include <algorithm>
#include <cmath>

#include "resources/pictograms/Pictogram.h"

namespace ovin {
namespace {

/// How far inside the shape a point of [-1, 1]² lies, in the same unit; negative outside.
double depth(double x, double y, std::size_t variant) {
    const double round = std::hypot(x, y);
    switch (variant % 4) {
        case 0:
            return 0.9 - round;  // disc
        case 1:
            return 0.8 - std::max(std::abs(x), std::abs(y));  // square
        case 2:
            return (0.95 - std::abs(x) - std::abs(y)) / std::sqrt(2.0);  // diamond
        default:
            return std::min(0.9 - round, round - 0.45);  // ring
    }
}

void addPixel(ItemGlyph& glyph, std::uint32_t alpha, std::uint32_t colour) {
    for (const std::uint32_t channel : {alpha, colour >> 16, colour >> 8, colour})
        glyph.bytes.push_back(static_cast<std::uint8_t>(channel & 0xFFU));
}

}  // namespace

ItemGlyph drawItemPictogram(std::int32_t side, std::uint32_t colour, std::string_view name) {
    ItemGlyph glyph{side, {}};
    const auto pictogram = drawPictogram(name, side);
    if (!pictogram) return glyph;
    for (const std::uint8_t coverage : pictogram->coverage) addPixel(glyph, coverage, colour);
    return glyph;
}

ItemGlyph drawItemGlyph(std::int32_t side, std::uint32_t colour, std::size_t variant) {
    ItemGlyph glyph{side, {}};
    glyph.bytes.reserve(4 * static_cast<std::size_t>(side) * static_cast<std::size_t>(side));
    const double pixel = 2.0 / side;
    for (std::int32_t row = 0; row < side; ++row) {
        for (std::int32_t column = 0; column < side; ++column) {
            const double inside = depth((column + 0.5) * pixel - 1, (row + 0.5) * pixel - 1, variant);
            const double cover = std::clamp(inside / pixel + 0.5, 0.0, 1.0);  // smooth edges, one pixel wide
            addPixel(glyph, static_cast<std::uint32_t>(std::lround(255 * cover)), colour);
        }
    }
    return glyph;
}

}  // namespace ovin
