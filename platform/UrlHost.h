#pragma once

#include <optional>
#include <string_view>

namespace ovin {

/// The host that a URL names, as it is written there: nothing when the text is no URL or names none. User name, password and
/// port are no part of it. Refuses what programs are known to read in different ways: white space, control and non-ASCII
/// characters, backslashes, more than one "@". Follows RFC 3986, section 3; IPv6 addresses, which stand in brackets, are not
/// read.
[[nodiscard]] std::optional<std::string_view> urlHost(std::string_view url);

/// Whether a URL leads to this very machine: whether its host is "127.0.0.1" or "localhost", written exactly so.
[[nodiscard]] bool leadsToThisMachine(std::string_view url);

}  // namespace ovin
