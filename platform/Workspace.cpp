#include "platform/Workspace.h"

#include <algorithm>

namespace ovin {
namespace {

char lowerCase(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

/// Whether `url` begins with `scheme`, which is in lower case, and goes on after it.
bool hasScheme(std::string_view url, std::string_view scheme) {
    const auto isSame = [](char expected, char actual) { return expected == lowerCase(actual); };
    return url.size() > scheme.size() && std::equal(scheme.begin(), scheme.end(), url.begin(), isSame);
}

}  // namespace

bool mayBeOpened(std::string_view url) {
    const auto isPlain = [](char character) { return character > ' ' && character < 0x7f; };
    return (hasScheme(url, "https://") || hasScheme(url, "http://") || hasScheme(url, "mailto:")) &&
           std::all_of(url.begin(), url.end(), isPlain);
}

}  // namespace ovin
