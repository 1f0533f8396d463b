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

// The groups have names of several parts, as "[Containments][8][General]", which GLib and Qt do not read.
std::vector<ItemChoice> plasmaChoices(std::string_view file) {
    constexpr std::string_view general = "[General]";
    std::map<std::string_view, ItemChoice> choices;
    std::set<std::string_view> trays;
    std::string_view group;
    while (!file.empty()) {
        std::string_view value = cut(file, '\n');
        if (value.starts_with('[')) {
            group = value;
            continue;
        }
        const std::string_view key = cut(value, '=');
        if (key == "plugin" && value == "org.kde.plasma.private.systemtray") trays.insert(group);
        if (!group.ends_with(general)) continue;
        ItemChoice& choice = choices[group.substr(0, group.size() - general.size())];
        if (key == "shownItems") choice.shown = listed(value);
        if (key == "hiddenItems") choice.hidden = listed(value);
        if (key == "showAllItems") choice.showsAll = value == "true";
    }
    std::vector<ItemChoice> result;
    result.reserve(trays.size());
    for (const std::string_view tray : trays) result.push_back(choices[tray]);
    return result;
}

}  // namespace ovin
