#pragma once

#include <optional>
#include <string_view>

namespace ovin {

/// The host in a URL, exactly as written there, without user name, password and port; nothing when the text is no URL or has
/// no host. Refuses what programs are known to read in different ways: white space, control and non-ASCII characters,
/// backslashes, more than one "@". Follows RFC 3986, section 3, but refuses IPv6 addresses, which stand in brackets.
[[nodiscard]] std::optional<std::string_view> urlHost(std::string_view url);

/// Whether the host of a URL is this machine: "127.0.0.1" or "localhost", written exactly so.
[[nodiscard]] bool leadsToThisMachine(std::string_view url);

}  // namespace ovin
