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
    /// The folder of the user's entries, and those of the entries for all users in order of precedence.
    std::filesystem::path userFolder;
    std::vector<std::filesystem::path> systemFolders;
    /// The program to start.
    std::optional<std::filesystem::path> program;
    /// The names of the running desktop.
    std::vector<std::string> desktops;
};

/// By the XDG rules, from the environment of this process.
[[nodiscard]] AutostartPlaces autostartPlaces();

/// Ovin among the programs that the desktop starts at login, by the XDG rules: the entry "org.ovin.Ovin.desktop" in the
/// user's folder "autostart".
///
/// - Not registered: there is no such entry, or it starts nothing here, because it names another program or a missing one,
///   or is for other desktops. Registering repairs the entry and keeps other keys, comments and translations. It drops the
///   keys that kept the entry from starting here, because the user who registers wants it to start.
/// - Enabled: an entry that starts this program, the user's or one that was installed for all users.
/// - Requires approval: the user's entry exists but is switched off, as the settings of desktops do (Hidden, or
///   X-GNOME-Autostart-enabled). Registering changes nothing and says where to allow it, because the user has decided this
///   outside of Ovin. Unregistering removes the entry, and the decision with it: the user who then registers has decided
///   anew, in Ovin.
/// - Not found: there is nothing that could be started at the next login. See `programToStart`.
///
/// To unregister an entry for all users, a hidden one in the user's folder overrides it. That one has a mark, so that it is
/// not taken for the user's own setting.
class AutostartEntry final : public LaunchAtLogin {
public:
    /// `places` is called at each call of a method.
    explicit AutostartEntry(std::function<AutostartPlaces()> places = autostartPlaces) : places_(std::move(places)) {}

    [[nodiscard]] Status status() const override;
    [[nodiscard]] std::optional<std::string> registerApplication() override;
    [[nodiscard]] std::optional<std::string> unregisterApplication() override;

private:
    const std::function<AutostartPlaces()> places_;
};

/// What went wrong with a file, in words for the user. Exposed for tests.
[[nodiscard]] std::string autostartFailure(const std::filesystem::path& file, std::error_code error);

}  // namespace ovin
