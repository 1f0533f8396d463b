#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace ovin {

/// A square drawing in one colour, such as menu bars show: how much of each pixel it covers, row by row, from 0 to 255.
struct Pictogram {
    int side = 0;
    std::vector<std::uint8_t> coverage;
};

/// Nothing when there is no pictogram of that name, or `side` is not positive.
[[nodiscard]] std::optional<Pictogram> drawPictogram(std::string_view name, int side);

/// The names of all of them, in alphabetical order.
[[nodiscard]] std::vector<std::string_view> pictogramNames();

}  // namespace ovin
