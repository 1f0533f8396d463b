#include "platform/linux/items/ItemChoice.h"

#include <map>

namespace ovin {
namespace {

/// What stands before `separator`; `text` keeps what stands behind it.
std::string_view cut(std::string_view& text, char separator) {
    const std::size_t end = text.find(separator);
    const std::string_view part = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return part;
}

std::set<std::string, std::less<>> listed(std::string_view value) {
    std::set<std::string, std::less<>> ids;
    while (!value.empty()) ids.emplace(cut(value, ','));
    return ids;
}

}  // namespace

// The groups have names of several parts, as "[Containments][8][General]", which GLib and Qt do not read. The group of a
// tray that was removed stays; only that of the widget goes, which tells the number of the tray's.
std::vector<ItemChoice> plasmaChoices(std::string_view file) {
    std::map<std::string, ItemChoice, std::less<>> choices;
    std::set<std::string> trays;
    std::string_view group;
    while (!file.empty()) {
        std::string_view value = cut(file, '\n');
        if (value.starts_with('[')) {
            group = value;
            continue;
        }
        const std::string_view key = cut(value, '=');
        if (key == "SystrayContainmentId") trays.insert("[Containments][" + std::string(value) + "][General]");
        ItemChoice& choice = choices[std::string(group)];
        if (key == "shownItems") choice.shown = listed(value);
        if (key == "hiddenItems") choice.hidden = listed(value);
        if (key == "showAllItems") choice.showsAll = value == "true";
    }
    std::vector<ItemChoice> result;
    result.reserve(trays.size());
    for (const std::string& tray : trays) result.push_back(choices[tray]);
    return result;
}

}  // namespace ovin
