#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string_view>
#include <system_error>

namespace ovin {

/// Puts a file with this text and these permissions in the place of `path`, whose folder exists: whatever happens, and
/// whoever looks, there is the old file or the whole new one, on the disk once this has returned. A symbolic link is
/// replaced and what it points to left alone. On an error all is as it was.
[[nodiscard]] std::error_code replaceFile(const std::filesystem::path& path, std::string_view text, mode_t permissions);

/// Removes what replacements of this file have left that were interrupted by the end of their process. One that is still
/// going on fails then.
void removeUnfinishedReplacements(const std::filesystem::path& path);

}  // namespace ovin
