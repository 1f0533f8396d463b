#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace ovin {

/// Which status items a bar draws, as its user has chosen in its settings. Items go by their Ids there.
struct ItemChoice {
    std::set<std::string, std::less<>> shown;
    std::set<std::string, std::less<>> hidden;
    bool showsAll = false;

    /// Whether the bar draws an item. Without a choice it draws all that do not ask to be hidden.
    [[nodiscard]] bool draws(const std::string& id, bool isPassive) const {
        return showsAll || shown.contains(id) || (!isPassive && !hidden.contains(id));
    }

    friend bool operator==(const ItemChoice&, const ItemChoice&) = default;
};

/// The choices in the text of Plasma's file of panels and applets, one for each system tray.
[[nodiscard]] std::vector<ItemChoice> plasmaChoices(std::string_view file);

}  // namespace ovin
