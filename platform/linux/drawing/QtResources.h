#pragma once

#include <map>
#include <string>

#include "platform/Resources.h"

namespace ovin {

/// Pictures, icon and version, compiled into the program: they cannot be missing or belong to another version, and the
/// program runs from any folder. Pictures have two pixels for each point.
class QtResources final : public Resources {
public:
    QtResources();

    [[nodiscard]] const Words& words() const override { return desktopWords(); }
    [[nodiscard]] std::optional<Picture> picture(std::string_view name) const override;
    [[nodiscard]] Image applicationIcon() const override { return icon_; }
    /// `CFBundleName`, `CFBundleShortVersionString` and `CFBundleVersion`.
    [[nodiscard]] std::optional<std::string> infoString(std::string_view key) const override;

private:
    const Image icon_;
    /// Kept so that two calls return equal pictures.
    mutable std::map<std::string, Picture, std::less<>> pictures_;
};

}  // namespace ovin
