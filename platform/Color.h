#pragma once

#include <variant>

namespace ovin {

/// Colours that the system chooses, by light or dark appearance and by the user's settings.
enum class SystemColor { label, secondaryLabel, quaternaryLabel, separator, controlAccent, systemOrange, clear };

/// A fixed colour in the sRGB colour space; components from 0 to 1.
struct SRGB {
    double red = 0;
    double green = 0;
    double blue = 0;

    friend bool operator==(const SRGB&, const SRGB&) = default;
};

struct Color {
    std::variant<SystemColor, SRGB> base;
    /// The opacity, from 0 to 1. Less than 1 replaces the opacity of `base`; 1 keeps it.
    double alpha = 1;

    friend bool operator==(const Color&, const Color&) = default;
};

}  // namespace ovin
