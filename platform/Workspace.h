#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Image.h"
#include "platform/ProcessInfo.h"

namespace ovin {

/// One process of the user's session that the system regards as an application, background agents included.
struct RunningApplication {
    ProcessID pid = 0;
    std::optional<std::string> bundleIdentifier;
    /// The name that the system shows for it, in the user's language.
    std::optional<std::string> localizedName;
    /// The absolute path of its bundle, its components separated by "/".
    std::optional<std::string> bundlePath;
    std::optional<Image> icon;
};

/// The running applications of the user's session, and the names and icons that the system gives to files. Any thread.
class Workspace {
public:
    virtual ~Workspace() = default;

    /// All running applications, in the system's order, which is stable while no application starts or ends.
    [[nodiscard]] virtual std::vector<RunningApplication> runningApplications() const = 0;

    /// The name under which the system shows a file to the user; for a path that does not exist, its last component.
    [[nodiscard]] virtual std::string displayName(const std::string& path) const = 0;

    /// The icon of a file; a generic one, or nothing, for a path that does not exist.
    [[nodiscard]] virtual std::optional<Image> icon(const std::string& path) const = 0;

    /// Calls `handler` on the main thread whenever an application, background agents included, has started or ended, for as
    /// long as this object lives. Main thread only.
    virtual void observeApplications(std::function<void()> handler) = 0;

    /// Opens a web page in the user's browser, or a new message in the user's mail program; refuses anything else. Failures
    /// are logged. Main thread only.
    virtual void open(const std::string& url) = 0;
};

/// Whether `Workspace::open` accepts an address: https, http or mailto, all in printable ASCII without spaces. Other schemes
/// could start any program.
[[nodiscard]] bool mayBeOpened(std::string_view url);

}  // namespace ovin
