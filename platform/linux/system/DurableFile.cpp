#include "platform/linux/system/DurableFile.h"

#include <fcntl.h>

#include <cerrno>
#include <chrono>
#include <cstddef>
#include <thread>
#include <utility>

namespace ovin {
namespace {

/// A longer file is no file of this program.
constexpr std::size_t longest = std::size_t{16} << 20U;

/// How long to wait for another program's change, and how long between two attempts. A change takes milliseconds.
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
        // Errors of closing do not matter, because what must be on the disk has been synchronised.
        if (isOpen()) fileSystem_.close(descriptor_);
    }

    [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }
    [[nodiscard]] bool isRegular() const { return fileSystem_.isRegular(descriptor_); }

    [[nodiscard]] bool sync() const {
        return uninterrupted([&] { return fileSystem_.fsync(descriptor_); }) == 0;
    }

    /// Waits for the lock. Succeeds at once where files cannot be locked, as on some network file systems.
    [[nodiscard]] bool lock(std::chrono::nanoseconds patience) const {
        const auto end = std::chrono::steady_clock::now() + patience;
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
        // A folder on the way may be a link as well, so that ".." is for the kernel to follow.
        path = path.parent_path() / target;
    }
    return path;
}

std::optional<std::string> DurableFile::read() const { return read(path_); }

std::optional<std::string> DurableFile::read(const std::filesystem::path& path) const {
    // O_NONBLOCK, because opening a pipe would wait for its other end.
    const OpenFile file(fileSystem_, path, O_RDONLY | O_NONBLOCK);
    if (!file.isOpen()) return errno == ENOENT ? std::optional<std::string>("") : std::nullopt;
    return file.isRegular() ? file.readAll() : std::nullopt;
}

bool DurableFile::update(const std::function<std::string(const std::string& content)>& change) const {
    const std::filesystem::path path = realPath();
    if (!makeFolders(path)) return false;
    // Opened first, because whatever can fail must do so before the file changes. The folder is locked instead of the file,
    // which is a new one after each change.
    const OpenFile folder(fileSystem_, path.parent_path(), O_RDONLY | O_DIRECTORY);
    if (!folder.isOpen()) return false;
    // A program that has kept the lock for a second is stopped: later changes try once and do not wait.
    hasWaitedInVain_ = !folder.lock(hasWaitedInVain_ ? std::chrono::nanoseconds(0) : longestTurn);
    if (hasWaitedInVain_) return false;
    const auto before = read(path);
    if (!before || !replace(path, change(*before))) return false;
    if (folder.sync()) return true;
    if (replace(path, *before)) (void)folder.sync();
    return false;
}

/// Synchronises all folders, because an earlier run may have made one and ended before its name was on the disk. That costs
/// little where nothing has changed.
bool DurableFile::makeFolders(const std::filesystem::path& path) const {
    std::filesystem::path folder;
    for (const std::filesystem::path& part : path.parent_path()) {
        const std::filesystem::path above = std::exchange(folder, folder / part);
        const bool isNew = fileSystem_.mkdir(folder.string(), 0700) == 0;
        if (above.empty()) continue;
        // The new folder's name is on the disk once its parent is synchronised.
        const OpenFile parent(fileSystem_, above, O_RDONLY | O_DIRECTORY);
        if (parent.isOpen() && parent.sync()) continue;
        // This program has not made folders that the user may not read or whose file system cannot do this.
        if (isNew || (errno != EACCES && errno != EINVAL)) return false;
    }
    return true;
}

/// Writes the text to a second file, which then takes the file's place.
bool DurableFile::replace(const std::filesystem::path& path, std::string_view text) const {
    const std::string aside = path.string() + ".new";
    // Removed first, so as not to write into what a crash has left or a link points to.
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
