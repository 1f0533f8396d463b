#pragma once

#include <optional>
#include <string>

#include "platform/Accessibility.h"
#include "platform/Image.h"
#include "platform/ProcessInfo.h"

namespace ovin {

/// One status item of another application.
struct DiscoveredItem {
    AccessibilityElement element;
    std::string appName;
    std::optional<Image> appIcon;
    /// What the item calls itself; empty when it has no title, description or identifier.
    std::string title;
    ProcessID ownerPID = 0;
    std::optional<std::string> bundleID;
    /// A short caption that tells several items of one application apart. Set once, after the whole scan.
    std::optional<std::string> label;

    /// The item's key across scans: owner, title and element hash, for example "512|Wi-Fi|1234567890". Equal for the same
    /// item as long as its process, its title and its element's hash stay the same.
    [[nodiscard]] std::string identity() const;
};

}  // namespace ovin
