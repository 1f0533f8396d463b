#pragma once

#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>
#include <vector>

/// In which order status items stand in the bar, from left to right, and how that is remembered across restarts. Items are
/// remembered by keys, which name a program and tell its items apart.
namespace ovin::ItemSequence {

struct Item {
    std::string key;
    /// Grows with each registration.
    std::uint64_t registration = 0;
};

/// A key for an item of a program. `taken` are the keys of the items that are there already.
[[nodiscard]] std::string newKey(std::string_view program, const std::set<std::string>& taken);

/// The indices of `items` in the order of the bar: items that nobody has moved stand on the left, the newest leftmost; the
/// others follow as `stored` has them.
[[nodiscard]] std::vector<std::size_t> arranged(const std::vector<Item>& items, const std::vector<std::string>& stored);

/// The order to store once the user has moved an item: the bar's, with the keys of absent items where they were, behind
/// the key that they followed.
[[nodiscard]] std::vector<std::string> merged(const std::vector<std::string>& stored, const std::vector<std::string>& bar);

}  // namespace ovin::ItemSequence
