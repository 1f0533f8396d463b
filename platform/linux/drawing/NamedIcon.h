#pragma once

#include <string>
#include <utility>

#include "platform/Image.h"

namespace ovin {

/// An icon by its name in the icon theme, by the absolute path of a file, or by the path of a resource compiled into the
/// program, which begins with a colon.
class NamedIcon final : public Image::Content {
public:
    explicit NamedIcon(std::string iconName) : name(std::move(iconName)) {}

    [[nodiscard]] bool isSameAs(const Content& other) const override {
        const auto* icon = dynamic_cast<const NamedIcon*>(&other);
        return icon != nullptr && icon->name == name;
    }

    const std::string name;
};

}  // namespace ovin
