#include "platform/linux/system/FileSystem.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <system_error>

namespace ovin {
namespace {

class RealFileSystem final : public FileSystem {
public:
    int open(const std::string& path, int flags, mode_t permissions) override {
        return ::open(path.c_str(), flags, permissions);
    }
    bool isRegular(int file) override {
        struct stat status {};
        return ::fstat(file, &status) == 0 && S_ISREG(status.st_mode);
    }
    ssize_t read(int file, void* buffer, std::size_t size) override { return ::read(file, buffer, size); }
    ssize_t write(int file, const void* data, std::size_t size) override { return ::write(file, data, size); }
    int fsync(int file) override { return ::fsync(file); }
    void close(int file) override { (void)::close(file); }
    int rename(const std::string& from, const std::string& to) override { return ::rename(from.c_str(), to.c_str()); }
    int unlink(const std::string& path) override { return ::unlink(path.c_str()); }
    int mkdir(const std::string& path, mode_t permissions) override { return ::mkdir(path.c_str(), permissions); }
    int lock(int file) override { return ::flock(file, LOCK_EX | LOCK_NB); }
    std::string linkTarget(const std::string& path) override {
        std::error_code error;
        return std::filesystem::read_symlink(path, error).string();
    }
};

}  // namespace

FileSystem& FileSystem::real() {
    static RealFileSystem system;
    return system;
}

}  // namespace ovin
