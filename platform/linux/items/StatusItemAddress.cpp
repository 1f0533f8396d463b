#include "platform/linux/items/StatusItemAddress.h"

#include <algorithm>
#include <cstddef>

namespace ovin {
namespace {

constexpr std::size_t longestName = 255;
constexpr std::size_t longestPath = 1024;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isWordCharacter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || isDigit(c) || c == '_'; }

bool isPathElement(std::string_view element) {
    return !element.empty() && std::all_of(element.begin(), element.end(), isWordCharacter);
}

bool isNameElement(std::string_view element, bool mayStartWithDigit) {
    const auto fits = [](char c) { return isWordCharacter(c) || c == '-'; };
    return !element.empty() && (mayStartWithDigit || !isDigit(element.front())) &&
           std::all_of(element.begin(), element.end(), fits);
}

/// Whether every piece of `text` between separators passes; `count` becomes the number of pieces.
template <typename Check>
bool allPieces(std::string_view text, char separator, Check passes, int& count) {
    for (count = 1;; ++count) {
        const std::size_t end = text.find(separator);
        if (!passes(text.substr(0, end))) return false;
        if (end == std::string_view::npos) return true;
        text.remove_prefix(end + 1);
    }
}

/// Whether the bus accepts `name` as a connection's name; it disconnects programs that send it any other.
bool isBusName(std::string_view name) {
    if (name.size() > longestName) return false;
    const bool isUnique = name.starts_with(':');
    int elements = 0;
    return allPieces(
               name.substr(isUnique ? 1 : 0), '.', [&](std::string_view e) { return isNameElement(e, isUnique); },
               elements) &&
           elements >= 2;
}

}  // namespace

std::optional<StatusItemAddress> statusItemAddress(std::string_view argument, std::string_view sender) {
    const std::size_t slash = argument.find('/');
    std::string_view name = slash == 0 ? sender : argument.substr(0, slash);
    const std::string_view path = slash == std::string_view::npos ? customaryItemPath : argument.substr(slash);
    // GNOME's watcher lists items like this.
    if (slash != std::string_view::npos && name.ends_with('@')) name.remove_suffix(1);
    if (!isBusName(name) || !isObjectPath(path)) return std::nullopt;
    return StatusItemAddress{std::string(name), std::string(path)};
}

bool isObjectPath(std::string_view path) {
    if (path.size() > longestPath || !path.starts_with('/')) return false;
    int elements = 0;
    return path == "/" || allPieces(path.substr(1), '/', isPathElement, elements);
}

}  // namespace ovin
