#include "updates/VersionComparison.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace ovin {
namespace {

bool isDigit(char character) { return character >= '0' && character <= '9'; }

/// Whatever is not ASCII is part of a text.
bool isLetter(char character) {
    const auto byte = static_cast<unsigned char>(character);
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || byte >= 0x80;
}

struct Part {
    bool isNumber = true;
    /// A number without its leading zeros: empty for zero.
    std::string_view characters;
};

/// What is missing at the end.
constexpr Part zero{};

Part makePart(bool isNumber, std::string_view characters) {
    if (isNumber) characters.remove_prefix(std::min(characters.find_first_not_of('0'), characters.size()));
    return {isNumber, characters};
}

bool isZero(const Part& part) { return part.isNumber && part.characters.empty(); }

void dropZerosAtEnd(std::vector<Part>& parts) {
    while (!parts.empty() && isZero(parts.back())) parts.pop_back();
}

std::vector<Part> partsOf(std::string_view version) {
    std::vector<Part> parts;
    while (!version.empty()) {
        const bool isNumber = isDigit(version.front());
        if (!isNumber && !isLetter(version.front())) {
            version.remove_prefix(1);
            continue;
        }
        const auto* const end = std::find_if_not(version.begin(), version.end(), isNumber ? isDigit : isLetter);
        const auto length = static_cast<std::size_t>(end - version.begin());
        if (!isNumber) dropZerosAtEnd(parts);
        parts.push_back(makePart(isNumber, version.substr(0, length)));
        version.remove_prefix(length);
    }
    return parts;
}

std::weak_ordering compare(const Part& a, const Part& b) {
    if (a.isNumber != b.isNumber) return a.isNumber ? std::weak_ordering::greater : std::weak_ordering::less;
    if (a.isNumber && a.characters.size() != b.characters.size()) return a.characters.size() <=> b.characters.size();
    return a.characters.compare(b.characters) <=> 0;
}

}  // namespace

std::weak_ordering compareVersions(std::string_view a, std::string_view b) {
    const std::vector<Part> first = partsOf(a);
    const std::vector<Part> second = partsOf(b);
    for (std::size_t i = 0; i < std::max(first.size(), second.size()); ++i) {
        const auto order = compare(i < first.size() ? first[i] : zero, i < second.size() ? second[i] : zero);
        if (order != 0) return order;
    }
    return std::weak_ordering::equivalent;
}

}  // namespace ovin
