#pragma once

#include <sys/types.h>

#include <filesystem>
#include <functional>
#include <string_view>
#include <system_error>

namespace ovin {

/// Of the names of files that are not whole yet; each is `.NAME.` and six random characters before that.
inline constexpr std::string_view unfinishedReplacementEnding = ".new";

/// What the system said last on this thread.
[[nodiscard]] std::error_code lastSystemError();

/// Writes all of it to an open file.
[[nodiscard]] std::error_code writeAll(int file, std::string_view bytes);

/// Puts a file with these permissions, and what `write` writes to it, in the place of `path`, whose folder exists: whatever
/// happens, and whoever looks, there is the old file or the whole new one, on the disk once this has returned. A symbolic
/// link is replaced and what it points to left alone. On an error, `write`'s included, all is as it was.
[[nodiscard]] std::error_code replaceFile(const std::filesystem::path& path, mode_t permissions,
                                          const std::function<std::error_code(int file)>& write);

/// The same with a text.
[[nodiscard]] std::error_code replaceFile(const std::filesystem::path& path, std::string_view text, mode_t permissions);

/// Removes what replacements of this file have left that were interrupted by the end of their process. One that is still
/// going on fails then.
void removeUnfinishedReplacements(const std::filesystem::path& path);

}  // namespace ovin
