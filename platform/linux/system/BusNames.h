#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/linux/system/Bus.h"

namespace ovin {

/// Unique names begin with a colon; every other name is owned by one unique name at a time.
[[nodiscard]] inline bool isUniqueName(const std::string& name) { return name.starts_with(':'); }

/// The name of the bus itself, which nobody else can have.
inline constexpr const char* busName = "org.freedesktop.DBus";

/// The error of a call that was not answered in time.
inline constexpr const char* noReplyError = "org.freedesktop.DBus.Error.NoReply";

/// A call to the bus itself.
[[nodiscard]] inline BusCall busDaemonCall(std::string member, std::vector<BusCall::Argument> arguments = {}) {
    return {busName, "/org/freedesktop/DBus", busName, std::move(member), std::move(arguments)};
}

/// Reads one property of an object.
[[nodiscard]] inline BusCall propertyCall(std::string destination, std::string path, std::string interface,
                                          std::string name) {
    return {std::move(destination),
            std::move(path),
            "org.freedesktop.DBus.Properties",
            "Get",
            {std::move(interface), std::move(name)}};
}

}  // namespace ovin
