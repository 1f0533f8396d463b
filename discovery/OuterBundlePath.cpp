#include "discovery/OuterBundlePath.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace ovin {

std::optional<std::string> outerBundlePath(const RunningApplication& application) {
    if (!application.bundlePath) return std::nullopt;
    const std::string_view path = *application.bundlePath;

    std::string outer = path.starts_with('/') ? "/" : "";
    std::size_t end = 0;
    while (true) {
        const std::size_t start = path.find_first_not_of('/', end);
        if (start == std::string_view::npos) return std::nullopt;
        end = std::min(path.find('/', start), path.size());
        const std::string_view component = path.substr(start, end - start);

        if (!outer.empty() && outer.back() != '/') outer += '/';
        outer += component;
        if (component.ends_with(".app")) break;
    }
    const bool isLast = path.find_first_not_of('/', end) == std::string_view::npos;
    if (isLast) return std::nullopt;
    return outer;
}

}  // namespace ovin
