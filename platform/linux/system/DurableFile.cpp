#include "platform/linux/system/DurableFile.h"

#include <fcntl.h>

#include <cerrno>
#include <cstddef>
#include <utility>

namespace ovin {
namespace {

/// Of a file that grows to this somebody else has made something else.
constexpr std::size_t longest = std::size_t{16} << 20U;

template <typename Call>
auto uninterrupted(const Call& call) {
    auto result = call();
    while (result < 0 && errno == EINTR) result = call();
    return result;
}

class OpenFile {
public:
    OpenFile(FileSystem& fileSystem, const std::filesystem::path& path, int flags)
        : fileSystem_(fileSystem),
          descriptor_(uninterrupted([&] { return fileSystem.open(path.string(), flags | O_CLOEXEC, 0600); })) {}
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() {
        // What has to be on the disk has been synchronised: closing tells nothing new.
        if (isOpen()) fileSystem_.close(descriptor_);
    }

    [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }
    [[nodiscard]] bool isRegular() const { return fileSystem_.isRegular(descriptor_); }

    [[nodiscard]] bool sync() const {
        return uninterrupted([&] { return fileSystem_.fsync(descriptor_); }) == 0;
    }

    [[nodiscard]] bool write(std::string_view text) const {
        while (!text.empty()) {
            const ssize_t count = uninterrupted([&] { return fileSystem_.write(descriptor_, text.data(), text.size()); });
            if (count <= 0) return false;
            text.remove_prefix(static_cast<std::size_t>(count));
        }
        return true;
    }

    [[nodiscard]] std::optional<std::string> readAll() const {
        std::string text;
        char buffer[4096];
        for (;;) {
            const ssize_t count = uninterrupted([&] { return fileSystem_.read(descriptor_, buffer, sizeof buffer); });
            if (count == 0) return text;
            if (count < 0 || text.size() + static_cast<std::size_t>(count) > longest) return std::nullopt;
            text.append(buffer, static_cast<std::size_t>(count));
        }
    }

private:
    FileSystem& fileSystem_;
    const int descriptor_;
};

/// A name in a folder is on the disk once the folder is.
bool syncFolder(FileSystem& fileSystem, const std::filesystem::path& path) {
    const OpenFile folder(fileSystem, path, O_RDONLY | O_DIRECTORY);
    return folder.isOpen() && folder.sync();
}

}  // namespace

DurableFile::DurableFile(std::filesystem::path path, FileSystem& fileSystem)
    : path_(std::move(path)), fileSystem_(fileSystem) {}

std::optional<std::string> DurableFile::read() const {
    // Without waiting for the other end of what turns out to be a pipe.
    const OpenFile file(fileSystem_, path_, O_RDONLY | O_NONBLOCK);
    if (!file.isOpen()) return errno == ENOENT ? std::optional<std::string>("") : std::nullopt;
    return file.isRegular() ? file.readAll() : std::nullopt;
}

bool DurableFile::replace(std::string_view before, std::string_view after) const {
    if (!makeFolders()) return false;
    // Opened first, because whatever can fail must do so before the file changes.
    const OpenFile folder(fileSystem_, path_.parent_path(), O_RDONLY | O_DIRECTORY);
    if (!folder.isOpen() || !writeAside(after) || !takePlace()) return false;
    if (folder.sync()) return true;
    if (writeAside(before) && takePlace()) (void)folder.sync();
    return false;
}

/// An earlier run may have made a folder and ended before its name was on the disk, so all of them are looked after.
/// It costs little where nothing has changed.
bool DurableFile::makeFolders() const {
    std::filesystem::path folder;
    for (const std::filesystem::path& part : path_.parent_path()) {
        const std::filesystem::path above = std::exchange(folder, folder / part);
        const bool isNew = fileSystem_.mkdir(folder.string(), 0700) == 0;
        if (above.empty() || syncFolder(fileSystem_, above)) continue;
        // Folders that this user may not look into, or of systems that cannot do this, are none of this program's making.
        if (isNew || (errno != EACCES && errno != EINVAL)) return false;
    }
    return true;
}

bool DurableFile::writeAside(std::string_view text) const {
    const std::filesystem::path aside = path_.string() + ".new";
    // What a crash has left behind, or a link to anywhere else, is not written into.
    (void)fileSystem_.unlink(aside.string());
    const OpenFile file(fileSystem_, aside, O_WRONLY | O_CREAT | O_EXCL);
    if (file.isOpen() && file.write(text) && file.sync()) return true;
    (void)fileSystem_.unlink(aside.string());
    return false;
}

bool DurableFile::takePlace() const {
    const std::string aside = path_.string() + ".new";
    if (fileSystem_.rename(aside, path_.string()) == 0) return true;
    (void)fileSystem_.unlink(aside);
    return false;
}

}  // namespace ovin
