#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/system/FileSystem.h"

namespace ovin {

/// A small file that is read whole and replaced whole, so that whatever ends the program, or the power, it holds either what
/// it held before or what it was to hold. `fileSystem` must outlive it.
class DurableFile {
public:
    DurableFile(std::filesystem::path path, FileSystem& fileSystem);

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    /// What the file holds, which is nothing while it does not exist; nullopt where it cannot be read, is no file, or is
    /// longer than any of this program's.
    [[nodiscard]] std::optional<std::string> read() const;

    /// Replaces the content, and makes the file and the folders that lead to it where they are missing. Once this has
    /// returned true the content is on the disk. False when it could not be written: then the content is `before` still.
    /// (Where a disk fails again while that is put back, the file holds either of the two.)
    [[nodiscard]] bool replace(std::string_view before, std::string_view after) const;

private:
    [[nodiscard]] bool makeFolders() const;
    [[nodiscard]] bool writeAside(std::string_view text) const;
    [[nodiscard]] bool takePlace() const;

    const std::filesystem::path path_;
    FileSystem& fileSystem_;
};

}  // namespace ovin
