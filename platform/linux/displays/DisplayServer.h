#pragma once

#include <optional>
#include <string>

/// Tells X servers apart. A user may have several sessions with one home folder, at the same time or one after the other;
/// what is still to be undone for the displays of one session must not be undone in another.
namespace ovin {

/// The name of the server at the other end of a connected local socket: no other process of this computer ever has it, not
/// even after a restart. Nothing when the server runs on another computer or its process cannot be read.
[[nodiscard]] std::optional<std::string> displayServerName(int socket);

/// Whether the server of that name still runs.
[[nodiscard]] bool isDisplayServerRunning(const std::string& name);

}  // namespace ovin
