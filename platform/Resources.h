#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/Geometry.h"
#include "platform/Image.h"
#include "platform/Words.h"

namespace ovin {

/// A picture with the size, in points, at which it is meant to be seen.
struct Picture {
    Image image;
    Size size;
};

/// The files that come with the program. Main thread only.
class Resources {
public:
    virtual ~Resources() = default;

    /// The picture of this name, which has no file extension; nothing when the picture is missing or cannot be read.
    [[nodiscard]] virtual std::optional<Picture> picture(std::string_view name) const = 0;

    /// The icon that the system shows for this application.
    [[nodiscard]] virtual Image applicationIcon() const = 0;

    /// The text under `key`, such as the version, in the description that is delivered with the program; nothing when it is
    /// missing or no text.
    [[nodiscard]] virtual std::optional<std::string> infoString(std::string_view key) const = 0;

    /// What this system's windows say.
    [[nodiscard]] virtual const Words& words() const = 0;
};

}  // namespace ovin
