#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/system/FileSystem.h"

namespace ovin {

/// A small file that is read whole and replaced whole, so that whatever ends the program, or the power, it holds either what
/// it held before or what it was to hold. Where it is a symbolic link, the file that the link leads to is meant, and the
/// link stays. `fileSystem` must outlive it.
class DurableFile {
public:
    DurableFile(std::filesystem::path path, FileSystem& fileSystem);

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    /// What the file holds, which is nothing while it does not exist; nullopt where it cannot be read, is no file, or is
    /// longer than any of this program's.
    [[nodiscard]] std::optional<std::string> read() const;

    /// Replaces the content by what `change` makes of it, and makes the file and the folders that lead to it where they are
    /// missing. Programs that change the file at the same time take turns, each beginning with what the one before has
    /// written. Once this has returned true the content is on the disk. False when it could not be read or written, or when
    /// another program had not finished after a second: then the content is as it was. (Where a disk fails again while that
    /// is put back, the file holds either of the two.)
    [[nodiscard]] bool update(const std::function<std::string(const std::string& content)>& change) const;

private:
    class OpenFile;

    [[nodiscard]] std::filesystem::path realPath() const;
    [[nodiscard]] std::optional<std::string> read(const std::filesystem::path& path) const;
    [[nodiscard]] bool makeFolders(const std::filesystem::path& path) const;
    [[nodiscard]] bool replace(const std::filesystem::path& path, std::string_view text) const;

    const std::filesystem::path path_;
    FileSystem& fileSystem_;
};

}  // namespace ovin
