#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace ovin {

/// Returns the value of an environment variable; nothing when it is not set.
using Variables = std::function<std::optional<std::string>(const std::string& name)>;

/// The file by which this program can be started again. `running` is the kernel's path of the running program, which ends in
/// " (deleted)" when its file is gone. The result is the same path, also when a newer program has taken its place; for a
/// program within an AppImage it is the image, because its mounted files go away with the program. Nothing when there is no
/// such file.
[[nodiscard]] std::optional<std::filesystem::path> programToStart(const std::string& running, const Variables& variables);

/// The same for this process.
[[nodiscard]] std::optional<std::filesystem::path> programToStart();

}  // namespace ovin
