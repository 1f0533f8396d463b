#pragma once

#include "platform/Resources.h"
#include "platform/linux/LinuxWorkspace.h"

namespace ovin {

// Not there yet.
class QtResources final : public Resources {
public:
    [[nodiscard]] std::optional<Picture> picture(std::string_view) const override { return std::nullopt; }
    [[nodiscard]] Image applicationIcon() const override { return Image(std::make_shared<NamedIcon>("org.ovin.Ovin")); }
    [[nodiscard]] std::optional<std::string> infoString(std::string_view) const override { return std::nullopt; }
};

}  // namespace ovin
