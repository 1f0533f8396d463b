#include "platform/linux/system/LinuxProcessInfo.h"

#include <unistd.h>

#include "platform/linux/system/Environment.h"

namespace ovin {

ProcessID LinuxProcessInfo::processIdentifier() const { return getpid(); }

std::string LinuxProcessInfo::bundleIdentifier() const { return "org.ovin.Ovin"; }

std::optional<std::string> LinuxProcessInfo::environment(std::string_view name) const {
    return environmentVariable(std::string(name));
}

}  // namespace ovin
