#include "platform/linux/system/TemporaryFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <limits>
#include <string>
#include <utility>

#include "platform/linux/system/ReplaceFile.h"

namespace ovin {
namespace {

constexpr std::string_view unfinished = ".part";

/// Room is taken before anything comes in, where the file system knows how to.
std::error_code reserve(int file, std::uint64_t length) {
    if (length > static_cast<std::uint64_t>(std::numeric_limits<off_t>::max())) return {EFBIG, std::generic_category()};
    if (length == 0) return {};
    if (fallocate(file, FALLOC_FL_KEEP_SIZE, 0, static_cast<off_t>(length)) == 0 || errno == EOPNOTSUPP) return {};
    return lastSystemError();
}

/// A private folder of this user, and no link to a place of somebody else's choice.
std::error_code makePrivateFolder(const std::filesystem::path& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder.parent_path(), error);
    if (error) return error;
    if (mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) return lastSystemError();
    struct stat found {};
    if (lstat(folder.c_str(), &found) != 0) return lastSystemError();
    if (!S_ISDIR(found.st_mode) || found.st_uid != geteuid()) return {EPERM, std::generic_category()};
    return chmod(folder.c_str(), 0700) == 0 ? std::error_code() : lastSystemError();
}

std::error_code copyAll(int from, int to) {
    std::array<char, std::size_t{1} << 16> buffer{};
    for (off_t offset = 0;;) {
        const ssize_t count = pread(from, buffer.data(), buffer.size(), offset);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return lastSystemError();
        if (count == 0) return {};
        if (const auto error = writeAll(to, {buffer.data(), static_cast<std::size_t>(count)})) return error;
        offset += count;
    }
}

bool isLeftOver(const std::filesystem::directory_entry& entry) {
    constexpr std::chrono::hours longEnough{24};
    const std::filesystem::path extension = entry.path().extension();
    if (extension == unfinished || extension == unfinishedReplacementEnding) return true;
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
        error = lastSystemError();
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

std::error_code copyInPlace(int descriptor, const std::filesystem::path& path, unsigned permissions) {
    removeUnfinishedReplacements(path);
    return replaceFile(path, permissions, [descriptor](int file) { return copyAll(descriptor, file); });
}

}  // namespace ovin
