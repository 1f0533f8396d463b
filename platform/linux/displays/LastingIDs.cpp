#include "platform/linux/displays/LastingIDs.h"

#include <map>
#include <string>
#include <string_view>

namespace ovin {
namespace {

/// FNV-1a with 32 bits (Fowler, Noll and Vo), folded to 31. It must never change, because its results are stored in
/// settings.
std::uint32_t hash(std::string_view text) {
    std::uint32_t hash = 2166136261U;
    for (const char character : text) hash = (hash ^ static_cast<unsigned char>(character)) * 16777619U;
    constexpr std::uint32_t most = 0x7fffffffU;
    const std::uint32_t folded = (hash >> 31U) ^ (hash & most);
    return folded == 0 ? most : folded;
}

std::string describe(const RandrMode& mode) {
    return std::to_string(mode.size.width) + "x" + std::to_string(mode.size.height) + "@" + std::to_string(mode.millihertz) +
           "/" + std::to_string(mode.scan);
}

}  // namespace

DisplayID lastingID(const RandrOutput& output) { return hash(output.name + '\0' + output.monitor); }

std::vector<std::int32_t> lastingModeIDs(const RandrState& state, const RandrOutput& output) {
    std::map<std::string, int> counts;
    std::vector<std::int32_t> ids;
    for (const std::uint32_t id : output.modes) {
        const RandrMode* const mode = state.mode(id);
        const std::string text = mode == nullptr ? "" : describe(*mode);
        ids.push_back(static_cast<std::int32_t>(hash(text + "#" + std::to_string(counts[text]++))));
    }
    return ids;
}

}  // namespace ovin
