#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/Geometry.h"
#include "platform/Image.h"

namespace ovin {

/// A picture with the size, in points, at which it is meant to be seen.
struct Picture {
    Image image;
    Size size;
};

/// What comes with the program. Main thread only.
class Resources {
public:
    virtual ~Resources() = default;

    /// The picture of this name, without a file name's extension; nothing when it is missing or cannot be read.
    [[nodiscard]] virtual std::optional<Picture> picture(std::string_view name) const = 0;

    /// The icon that the system shows for this application.
    [[nodiscard]] virtual Image applicationIcon() const = 0;

    /// A text under `key` in the description that the program is delivered with, such as its version; nothing when it is
    /// missing or no text.
    [[nodiscard]] virtual std::optional<std::string> infoString(std::string_view key) const = 0;
};

}  // namespace ovin
