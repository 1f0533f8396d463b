#include "desktop/ItemSequence.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <tuple>

namespace ovin::ItemSequence {
namespace {

constexpr std::size_t longestProgram = 128;
/// Programs that are gone are forgotten once there are that many.
constexpr std::size_t mostKeys = 1'000;

/// Keys are lines of a file.
std::string printable(std::string_view program) {
    std::string result(program.substr(0, longestProgram));
    std::replace_if(
        result.begin(), result.end(), [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '#'; }, '_');
    return result.empty() ? "unnamed" : result;
}

}  // namespace

std::string newKey(std::string_view program, const std::set<std::string>& taken) {
    const std::string base = printable(program);
    for (int occurrence = 1;; ++occurrence) {
        std::string key = base + '#' + std::to_string(occurrence);
        if (!taken.contains(key)) return key;
    }
}

std::vector<std::size_t> arranged(const std::vector<Item>& items, const std::vector<std::string>& stored) {
    std::map<std::string_view, std::int64_t> ranks;
    for (const auto& key : stored) ranks.emplace(key, static_cast<std::int64_t>(ranks.size()));
    const auto position = [&](std::size_t index) {
        const auto rank = ranks.find(items[index].key);
        const auto age = -static_cast<std::int64_t>(items[index].registration);
        return rank == ranks.end() ? std::tuple(std::int64_t{-1}, age) : std::tuple(rank->second, age);
    };

    std::vector<std::size_t> order(items.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](auto a, auto b) { return position(a) < position(b); });
    return order;
}

std::vector<std::string> merged(const std::vector<std::string>& stored, const std::vector<std::string>& bar) {
    std::vector<std::string> result = bar;
    auto next = result.begin();
    for (const auto& key : stored) {
        const auto present = std::find(result.begin(), result.end(), key);
        if (present != result.end())
            next = present + 1;
        else if (result.size() < mostKeys)
            next = result.insert(next, key) + 1;
    }
    return result;
}

}  // namespace ovin::ItemSequence
