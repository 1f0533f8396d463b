#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace ovin {

/// A look at one environment variable.
using Variables = std::function<std::optional<std::string>(const std::string& name)>;

/// The file by which this program can be started another time, given the path that the kernel has for the running one, which
/// ends in " (deleted)" when there is no such file any more: the same path where a newer program has taken its place; the
/// image, for a program that runs from within an AppImage, because what is mounted there goes away with it. Nothing when
/// there is no such file.
[[nodiscard]] std::optional<std::filesystem::path> programToStart(const std::string& running, const Variables& variables);

/// The same for this very process.
[[nodiscard]] std::optional<std::filesystem::path> programToStart();

}  // namespace ovin
