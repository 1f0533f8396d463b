#include "platform/linux/TemporaryFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <utility>

namespace ovin {
namespace {

constexpr std::string_view unfinished = ".part";
constexpr std::string_view unfinishedCopy = ".new";

std::error_code lastError() { return {errno, std::generic_category()}; }

std::error_code writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(file, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return lastError();
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return {};
}

/// Room is taken before anything comes in, where the file system knows how to.
std::error_code reserve(int file, std::uint64_t length) {
    if (length > static_cast<std::uint64_t>(std::numeric_limits<off_t>::max())) return {EFBIG, std::generic_category()};
    if (length == 0) return {};
    if (fallocate(file, FALLOC_FL_KEEP_SIZE, 0, static_cast<off_t>(length)) == 0 || errno == EOPNOTSUPP) return {};
    return lastError();
}

/// A private folder of this user, and no link to a place of somebody else's choice.
std::error_code makePrivateFolder(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder.parent_path(), error);
    if (error) return error;
    if (mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) return lastError();
    struct stat found {};
    if (lstat(folder.c_str(), &found) != 0) return lastError();
    if (!S_ISDIR(found.st_mode) || found.st_uid != geteuid()) return {EPERM, std::generic_category()};
    return chmod(folder.c_str(), 0700) == 0 ? std::error_code() : lastError();
}

std::error_code copyAll(int from, int to) {
    std::array<char, std::size_t{1} << 16> buffer{};
    for (off_t offset = 0;;) {
        const ssize_t count = pread(from, buffer.data(), buffer.size(), offset);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return lastError();
        if (count == 0) return {};
        if (const auto error = writeAll(to, {buffer.data(), static_cast<std::size_t>(count)})) return error;
        offset += count;
    }
}

/// A name in a folder is on the disk once the folder is. The file is there already, so that a failure changes nothing.
void syncFolder(const std::filesystem::path& folder) {
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    (void)fsync(descriptor);
    close(descriptor);
}

std::string asidePrefix(const std::filesystem::path& path) { return "." + path.filename().string() + "."; }

bool isLeftOver(const std::filesystem::directory_entry& entry) {
    constexpr std::chrono::hours longEnough{24};
    const std::filesystem::path extension = entry.path().extension();
    if (extension == unfinished || extension == unfinishedCopy) return true;
    std::error_code error;
    const auto written = entry.last_write_time(error);
    return !error && std::filesystem::file_time_type::clock::now() - written > longEnough;
}

}  // namespace

std::shared_ptr<TemporaryFile> TemporaryFile::create(const std::filesystem::path& folder, std::uint64_t length,
                                                     std::error_code& error) {
    error = makePrivateFolder(folder);
    if (error) return nullptr;
    std::string name;
    int descriptor = open(folder.c_str(), O_RDWR | O_TMPFILE | O_CLOEXEC, 0600);
    if (descriptor < 0) {
        name = folder / "XXXXXX";
        name += unfinished;
        descriptor = mkostemps(name.data(), static_cast<int>(unfinished.size()), O_CLOEXEC);
    }
    if (descriptor < 0) {
        error = lastError();
        return nullptr;
    }
    auto file = std::make_shared<TemporaryFile>(descriptor, name);
    error = reserve(descriptor, length);
    return error ? nullptr : file;
}

TemporaryFile::~TemporaryFile() {
    if (!name_.empty()) (void)unlink(name_.c_str());
    close(descriptor_);
}

std::error_code TemporaryFile::append(std::string_view bytes) {
    if (const auto error = writeAll(descriptor_, bytes)) return error;
    size_ += bytes.size();
    return {};
}

void TemporaryFile::clear(const std::filesystem::path& folder) {
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        std::error_code ignored;
        if (isLeftOver(entry)) std::filesystem::remove(entry.path(), ignored);
    }
}

void removeUnfinishedCopies(const std::filesystem::path& path) {
    const std::string prefix = asidePrefix(path);
    constexpr std::size_t randomLength = 6;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(path.parent_path(), error)) {
        const std::string name = entry.path().filename().string();
        const bool isCopy = name.size() == prefix.size() + randomLength + unfinishedCopy.size() &&
                            name.starts_with(prefix) && name.ends_with(unfinishedCopy);
        if (isCopy) (void)unlink(entry.path().c_str());
    }
}

std::error_code copyInPlace(int descriptor, const std::filesystem::path& path, unsigned permissions) {
    removeUnfinishedCopies(path);
    // Each copy has a name of its own: another one at the same time could put this one in place before it is whole.
    std::string aside = path.parent_path() / (asidePrefix(path) + "XXXXXX");
    aside += unfinishedCopy;
    const int file = mkostemps(aside.data(), static_cast<int>(unfinishedCopy.size()), O_CLOEXEC);
    if (file < 0) return lastError();
    std::error_code error = copyAll(descriptor, file);
    // Some file systems tell here only that they are full.
    if (!error && (fchmod(file, permissions) != 0 || fsync(file) != 0)) error = lastError();
    if (close(file) != 0 && !error) error = lastError();
    if (!error && std::rename(aside.c_str(), path.c_str()) != 0) error = lastError();
    if (error) {
        (void)unlink(aside.c_str());
        return error;
    }
    syncFolder(path.parent_path());
    return {};
}

}  // namespace ovin
