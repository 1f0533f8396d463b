#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/system/FileSystem.h"

namespace ovin {

/// A small file that is read and replaced as a whole: when the program crashes or the power fails, it holds either the old
/// or the new content. If `path` is a symbolic link, the file that it leads to is replaced, and the link stays. `fileSystem`
/// must outlive this object.
class DurableFile {
public:
    DurableFile(std::filesystem::path path, FileSystem& fileSystem);

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    /// The content, empty while the file does not exist; nullopt when it cannot be read, is no regular file, or is longer
    /// than 16 MiB.
    [[nodiscard]] std::optional<std::string> read() const;

    /// Replaces the content by what `change` makes of it, and makes the file and its folders where they are missing.
    /// Programs that change the file at the same time take turns; each starts from what the one before has written. True
    /// once the new content is on the disk. False when it could not be read or written, or another program did not finish
    /// within a second, for which only the first of several changes waits; the content is unchanged then. (If the disk fails
    /// again while the old content is put back, the file holds either of the two.)
    [[nodiscard]] bool update(const std::function<std::string(const std::string& content)>& change) const;

private:
    class OpenFile;

    [[nodiscard]] std::filesystem::path realPath() const;
    [[nodiscard]] std::optional<std::string> read(const std::filesystem::path& path) const;
    [[nodiscard]] bool makeFolders(const std::filesystem::path& path) const;
    [[nodiscard]] bool replace(const std::filesystem::path& path, std::string_view text) const;

    const std::filesystem::path path_;
    FileSystem& fileSystem_;
    mutable bool hasWaitedInVain_ = false;
};

}  // namespace ovin
