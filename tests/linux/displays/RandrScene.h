#pragma once

#include <algorithm>
#include <cstdint>
#include <string>

#include "platform/linux/displays/Randr.h"

namespace ovin {

// Modes are named by their size, and drivers by ten times their output.
constexpr std::uint32_t small = 800600;
constexpr std::uint32_t medium = 1440900;
constexpr std::uint32_t large = 19201200;

/// An X server on which nothing is plugged in.
inline RandrState emptyScene() {
    RandrState state;
    state.configTime = 1;
    state.screen = {{64, 64}, {16, 16}, {64, 64}, {8192, 8192}};
    state.modes = {{small, {800, 600}, true}, {medium, {1440, 900}, true}, {large, {1920, 1200}, true}};
    return state;
}

/// Puts a display somewhere; the X screen grows with it, four pixels for a millimetre.
inline void plug(RandrState& state, std::uint32_t output, std::uint32_t mode, int x, int y, std::uint16_t rotation = 1) {
    state.outputs.push_back({output, "OUT" + std::to_string(output), output * 10, {small, medium, large}});
    const Extent size = turned(state.mode(mode)->size, rotation);
    state.crtcs.push_back({output * 10, x, y, size, mode, rotation, {output}});
    Extent& screen = state.screen.size;
    screen = {std::max(screen.width, x + size.width), std::max(screen.height, y + size.height)};
    state.screen.millimetres = {screen.width / 4, screen.height / 4};
}

}  // namespace ovin
