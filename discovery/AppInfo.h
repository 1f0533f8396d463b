#pragma once

#include <optional>
#include <string>

#include "platform/Image.h"
#include "platform/ProcessInfo.h"

namespace ovin {

/// One running application that may own status items.
struct AppInfo {
    ProcessID pid = 0;
    std::optional<std::string> bundleID;
    /// The name to show: see `ItemProvider::snapshotApps`.
    std::string name;
    std::optional<Image> icon;

    friend bool operator==(const AppInfo&, const AppInfo&) = default;
};

}  // namespace ovin
