#include "platform/linux/items/StatusItemAddress.h"

#include <systemd/sd-bus.h>

#include <cstddef>
#include <utility>

namespace ovin {
namespace {

constexpr std::size_t longestPath = 1024;

/// The library of the bus reads no further than to a zero byte.
bool isReadWhole(const std::string& text) { return text.find('\0') == std::string::npos; }

/// Whether the bus accepts `name` as a connection's name; it disconnects programs that send it any other.
bool isBusName(const std::string& name) { return isReadWhole(name) && sd_bus_service_name_is_valid(name.c_str()) > 0; }

}  // namespace

std::optional<StatusItemAddress> statusItemAddress(std::string_view argument, std::string_view sender) {
    const std::size_t slash = argument.find('/');
    std::string name(slash == 0 ? sender : argument.substr(0, slash));
    std::string path(slash == std::string_view::npos ? customaryItemPath : argument.substr(slash));
    // GNOME's watcher lists items like this.
    if (slash != std::string_view::npos && name.ends_with('@')) name.pop_back();
    if (!isBusName(name) || !isObjectPath(path)) return std::nullopt;
    return StatusItemAddress{std::move(name), std::move(path)};
}

bool isObjectPath(const std::string& path) {
    return path.size() <= longestPath && isReadWhole(path) && sd_bus_object_path_is_valid(path.c_str()) > 0;
}

}  // namespace ovin
