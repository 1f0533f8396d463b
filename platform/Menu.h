#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace ovin {

/// An entry of a menu.
struct MenuEntry {
    std::string title;
    /// A letter that chooses the entry together with the system's command key; none when empty.
    std::string keyEquivalent;
    bool isOn = false;
    /// Runs on the main thread when the user has chosen the entry.
    std::function<void()> action;
};

/// Entries from top to bottom; a separator is an absent entry.
using Menu = std::vector<std::optional<MenuEntry>>;

}  // namespace ovin
