#include "platform/linux/displays/DisplayServer.h"

#include <sys/socket.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string_view>

namespace ovin {
namespace {

std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// When the process began, in kernel ticks since the computer's start: tells it from another process with the same id. Empty
/// when there is no process, or only a zombie, whose parent has not asked for its status. By proc(5), the state is the first
/// word after the name, which stands in parentheses, and the beginning the 20th.
std::string beginningOf(pid_t pid) {
    const std::string status = contentOf("/proc/" + std::to_string(pid) + "/stat");
    std::istringstream words(status.substr(std::min(status.size(), status.rfind(')') + 1)));
    std::string state;
    std::string word;
    words >> state;
    for (int i = 1; i < 20; ++i) words >> word;
    return words && state != "Z" ? word : "";
}

}  // namespace

std::optional<std::string> displayServerName(int socket) {
    ucred peer{};
    socklen_t size = sizeof peer;
    if (getsockopt(socket, SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0 || peer.pid <= 0) return std::nullopt;
    const std::string beginning = beginningOf(peer.pid);
    const std::string boot = contentOf("/proc/sys/kernel/random/boot_id");
    if (beginning.empty() || boot.empty()) return std::nullopt;
    return std::to_string(peer.pid) + " " + beginning + " " + boot.substr(0, boot.find('\n'));
}

bool isDisplayServerRunning(const std::string& name) {
    std::istringstream words(name);
    pid_t pid = 0;
    std::string beginning;
    std::string boot;
    if (!(words >> pid >> beginning >> boot) || beginningOf(pid) != beginning) return false;
    return contentOf("/proc/sys/kernel/random/boot_id") == boot + "\n";
}

}  // namespace ovin
