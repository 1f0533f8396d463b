#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string_view>
#include <system_error>

namespace ovin {

/// Puts a file with this text and these permissions in the place of `path`, whose folder exists. At any moment there is the
/// old file or the complete new one, which is on the disk once this has returned. Replaces a symbolic link, not the file
/// that it points to. On an error nothing has changed.
[[nodiscard]] std::error_code replaceFile(const std::filesystem::path& path, std::string_view text, mode_t permissions);

/// Removes the files that interrupted replacements of `path` have left. Makes a replacement that is still going on fail.
void removeUnfinishedReplacements(const std::filesystem::path& path);

}  // namespace ovin
