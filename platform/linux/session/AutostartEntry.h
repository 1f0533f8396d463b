#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/LaunchAtLogin.h"
#include "platform/linux/session/OwnProgram.h"

namespace ovin {

/// What decides whether a desktop starts a program at login.
struct AutostartPlaces {
    /// Where the user's entries are, and then those for all users in order of precedence.
    std::filesystem::path userFolder;
    std::vector<std::filesystem::path> systemFolders;
    /// What is to be started.
    std::optional<std::filesystem::path> program;
    /// The names of the running desktop.
    std::vector<std::string> desktops;
};

/// By the XDG rules, from the environment of this process.
[[nodiscard]] AutostartPlaces autostartPlaces();

/// Ovin among the programs that the desktop starts at login: the entry "org.ovin.Ovin.desktop" in the user's folder
/// "autostart", as the XDG autostart specification has it.
///
/// - Not registered: there is no such entry, or it starts nothing here, as it names a program that is not this one or not
///   there, or is for other desktops. Registering repairs it and keeps what Ovin has no say in: other keys, comments,
///   translations. The keys that kept it from starting here are dropped, since whoever registers wants it to start.
/// - Enabled: an entry that starts this program, the user's or one that was installed for all users.
/// - Requires approval: the user's entry is there and switched off, as the settings of desktops do (Hidden, or
///   X-GNOME-Autostart-enabled). Registering changes nothing and says where it can be allowed: the user has decided this
///   outside of Ovin, and would find that decision undone otherwise. Unregistering takes the entry away, and with it the
///   decision: whoever then registers has asked for it in Ovin itself.
/// - Not found: there is nothing that could be started at the next login. See `programToStart`.
///
/// An entry for all users is overridden by one in the user's folder that is hidden. It has a mark, so that Ovin's own
/// unregistering is not taken for the user's settings.
class AutostartEntry final : public LaunchAtLogin {
public:
    /// The places are asked for at each call.
    explicit AutostartEntry(std::function<AutostartPlaces()> places = autostartPlaces) : places_(std::move(places)) {}

    [[nodiscard]] Status status() const override;
    [[nodiscard]] std::optional<std::string> registerApplication() override;
    [[nodiscard]] std::optional<std::string> unregisterApplication() override;

private:
    const std::function<AutostartPlaces()> places_;
};

/// What went wrong with a file, for a person to read. Exposed for tests.
[[nodiscard]] std::string autostartFailure(const std::filesystem::path& file, std::error_code error);

}  // namespace ovin
