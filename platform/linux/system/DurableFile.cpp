#include "platform/linux/system/DurableFile.h"

#include <fcntl.h>

#include <cerrno>
#include <chrono>
#include <cstddef>
#include <thread>
#include <utility>

namespace ovin {
namespace {

/// Of a file that grows to this somebody else has made something else.
constexpr std::size_t longest = std::size_t{16} << 20U;

/// How long others may take for a change, and how often they are asked whether they are done. One takes milliseconds.
constexpr std::chrono::seconds longestTurn{1};
constexpr std::chrono::milliseconds pause{5};

/// As many links in a row as the kernel follows.
constexpr int mostLinks = 40;

template <typename Call>
auto uninterrupted(const Call& call) {
    auto result = call();
    while (result < 0 && errno == EINTR) result = call();
    return result;
}

}  // namespace

class DurableFile::OpenFile {
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

    /// Waits for its turn. Where files cannot be locked, as on some network file systems, it is always this program's.
    [[nodiscard]] bool lock() const {
        const auto end = std::chrono::steady_clock::now() + longestTurn;
        while (uninterrupted([&] { return fileSystem_.lock(descriptor_); }) != 0) {
            if (errno != EWOULDBLOCK) return true;
            if (std::chrono::steady_clock::now() >= end) return false;
            std::this_thread::sleep_for(pause);
        }
        return true;
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

DurableFile::DurableFile(std::filesystem::path path, FileSystem& fileSystem)
    : path_(std::move(path)), fileSystem_(fileSystem) {}

std::filesystem::path DurableFile::realPath() const {
    std::filesystem::path path = path_;
    for (int links = 0; links < mostLinks; ++links) {
        const std::string target = fileSystem_.linkTarget(path.string());
        if (target.empty()) break;
        path = (path.parent_path() / target).lexically_normal();
    }
    return path;
}

std::optional<std::string> DurableFile::read() const { return read(path_); }

std::optional<std::string> DurableFile::read(const std::filesystem::path& path) const {
    // Without waiting for the other end of what turns out to be a pipe.
    const OpenFile file(fileSystem_, path, O_RDONLY | O_NONBLOCK);
    if (!file.isOpen()) return errno == ENOENT ? std::optional<std::string>("") : std::nullopt;
    return file.isRegular() ? file.readAll() : std::nullopt;
}

bool DurableFile::update(const std::function<std::string(const std::string& content)>& change) const {
    const std::filesystem::path path = realPath();
    if (!makeFolders(path)) return false;
    // Opened first, because whatever can fail must do so before the file changes. Its lock is that of the file, which is
    // another one after each change.
    const OpenFile folder(fileSystem_, path.parent_path(), O_RDONLY | O_DIRECTORY);
    if (!folder.isOpen() || !folder.lock()) return false;
    const auto before = read(path);
    if (!before || !replace(path, change(*before))) return false;
    if (folder.sync()) return true;
    if (replace(path, *before)) (void)folder.sync();
    return false;
}

/// An earlier run may have made a folder and ended before its name was on the disk, so all of them are looked after.
/// It costs little where nothing has changed.
bool DurableFile::makeFolders(const std::filesystem::path& path) const {
    std::filesystem::path folder;
    for (const std::filesystem::path& part : path.parent_path()) {
        const std::filesystem::path above = std::exchange(folder, folder / part);
        const bool isNew = fileSystem_.mkdir(folder.string(), 0700) == 0;
        if (above.empty()) continue;
        // A name in a folder is on the disk once the folder is.
        const OpenFile parent(fileSystem_, above, O_RDONLY | O_DIRECTORY);
        if (parent.isOpen() && parent.sync()) continue;
        // Folders that this user may not look into, or of systems that cannot do this, are none of this program's making.
        if (isNew || (errno != EACCES && errno != EINVAL)) return false;
    }
    return true;
}

/// Writes the text aside, and lets that take the file's place.
bool DurableFile::replace(const std::filesystem::path& path, std::string_view text) const {
    const std::string aside = path.string() + ".new";
    // What a crash has left behind, or a link to anywhere else, is not written into.
    (void)fileSystem_.unlink(aside);
    const bool isWritten = [&] {
        const OpenFile file(fileSystem_, aside, O_WRONLY | O_CREAT | O_EXCL);
        return file.isOpen() && file.write(text) && file.sync();
    }();
    if (isWritten && fileSystem_.rename(aside, path.string()) == 0) return true;
    (void)fileSystem_.unlink(aside);
    return false;
}

}  // namespace ovin
