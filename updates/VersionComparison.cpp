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

std::weak_ordering compare(const std::vector<Part>& a, const std::vector<Part>& b) {
    for (std::size_t i = 0; i < std::max(a.size(), b.size()); ++i) {
        const auto order = compare(i < a.size() ? a[i] : zero, i < b.size() ? b[i] : zero);
        if (order != 0) return order;
    }
    return std::weak_ordering::equivalent;
}

/// Takes the text up to the next opening parenthesis, and drops that parenthesis.
std::string_view takeGroup(std::string_view& version) {
    const std::string_view group = version.substr(0, version.find('('));
    version.remove_prefix(std::min(group.size() + 1, version.size()));
    return group;
}

}  // namespace

std::weak_ordering compareVersions(std::string_view a, std::string_view b) {
    a = a.substr(0, a.find('-'));
    b = b.substr(0, b.find('-'));
    auto order = std::weak_ordering::equivalent;
    while (order == 0 && !(a.empty() && b.empty())) order = compare(partsOf(takeGroup(a)), partsOf(takeGroup(b)));
    return order;
}

}  // namespace ovin
