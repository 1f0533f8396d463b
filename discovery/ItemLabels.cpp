#include "discovery/ItemLabels.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <utility>

namespace ovin {
namespace {

constexpr std::size_t longestWholeLabel = 12;
constexpr std::size_t charactersBeforeEllipsis = 11;

std::optional<std::string> label(const Text& text, const std::string& title) {
    std::string trimmed = text.trimmed(title);
    if (trimmed.empty()) return std::nullopt;
    if (text.prefix(trimmed, longestWholeLabel).size() == trimmed.size()) return trimmed;
    return text.prefix(trimmed, charactersBeforeEllipsis) + "…";
}

}  // namespace

void addLabels(const Text& text, std::vector<DiscoveredItem>& items) {
    std::map<ProcessID, int> counts;
    for (const DiscoveredItem& item : items) ++counts[item.ownerPID];
    for (DiscoveredItem& item : items) {
        if (counts[item.ownerPID] > 1) item.label = label(text, item.title);
    }
}

}  // namespace ovin
