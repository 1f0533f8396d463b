#pragma once

#include <optional>
#include <string>

/// Tells X servers apart. A user may have several sessions with one home folder, on one computer at the same time and one
/// after the other, and what is owed to the displays of one is no business of another.
namespace ovin {

/// The name of the server at the other end of a connected local socket: no other process of this computer has it, also not
/// after the next start. Nothing when the server runs elsewhere or hides what it is.
[[nodiscard]] std::optional<std::string> displayServerName(int socket);

/// Whether the server of that name has not ended yet.
[[nodiscard]] bool isDisplayServerRunning(const std::string& name);

}  // namespace ovin
