#include "platform/UrlHost.h"

#include <algorithm>

namespace ovin {
namespace {

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// The characters that RFC 3986 allows anywhere in a URL.
bool isAllowed(char c) {
    return isLetter(c) || isDigit(c) || std::string_view("-._~:/?#[]@!$&'()*+,;=%").find(c) != std::string_view::npos;
}

bool isScheme(std::string_view text) {
    const auto isRest = [](char c) { return isLetter(c) || isDigit(c) || c == '+' || c == '-' || c == '.'; };
    return !text.empty() && isLetter(text.front()) && std::all_of(text.begin(), text.end(), isRest);
}

}  // namespace

std::optional<std::string_view> urlHost(std::string_view url) {
    if (!std::all_of(url.begin(), url.end(), isAllowed)) return std::nullopt;
    const std::size_t colon = url.find(':');
    if (colon == std::string_view::npos || !isScheme(url.substr(0, colon))) return std::nullopt;
    url.remove_prefix(colon + 1);
    if (!url.starts_with("//")) return std::nullopt;
    url.remove_prefix(2);

    std::string_view authority = url.substr(0, url.find_first_of("/?#"));
    if (std::count(authority.begin(), authority.end(), '@') > 1) return std::nullopt;
    if (const std::size_t at = authority.find('@'); at != std::string_view::npos) authority.remove_prefix(at + 1);
    const std::size_t portColon = authority.find(':');
    const std::string_view host = authority.substr(0, portColon);
    if (portColon != std::string_view::npos) {
        const std::string_view port = authority.substr(portColon + 1);
        if (!std::all_of(port.begin(), port.end(), isDigit)) return std::nullopt;
    }
    if (host.empty()) return std::nullopt;
    return host;
}

bool leadsToThisMachine(std::string_view url) {
    const auto host = urlHost(url);
    return host == "127.0.0.1" || host == "localhost";
}

}  // namespace ovin
