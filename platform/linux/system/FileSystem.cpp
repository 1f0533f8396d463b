#include "platform/linux/system/FileSystem.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

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
};

}  // namespace

FileSystem& FileSystem::real() {
    static RealFileSystem system;
    return system;
}

}  // namespace ovin
