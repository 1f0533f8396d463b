#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace ovin {

/// The value of an environment variable of this process; nothing when it is not set. Any thread: this program changes none.
[[nodiscard]] inline std::optional<std::string> environmentVariable(const std::string& name) {
    const char* value = std::getenv(name.c_str());  // NOLINT(concurrency-mt-unsafe)
    if (value == nullptr) return std::nullopt;
    return std::string(value);
}

}  // namespace ovin
