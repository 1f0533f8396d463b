#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string>

namespace ovin {

/// The kernel's file functions that the settings need. They fail as the kernel's do, with -1 and `errno`. Tests use their
/// own, which fail or lose power at any call.
class FileSystem {
public:
    FileSystem() = default;
    FileSystem(const FileSystem&) = delete;
    FileSystem& operator=(const FileSystem&) = delete;
    virtual ~FileSystem() = default;

    [[nodiscard]] virtual int open(const std::string& path, int flags, mode_t permissions) = 0;
    [[nodiscard]] virtual bool isRegular(int file) = 0;
    [[nodiscard]] virtual ssize_t read(int file, void* buffer, std::size_t size) = 0;
    [[nodiscard]] virtual ssize_t write(int file, const void* data, std::size_t size) = 0;
    [[nodiscard]] virtual int fsync(int file) = 0;
    virtual void close(int file) = 0;
    [[nodiscard]] virtual int rename(const std::string& from, const std::string& to) = 0;
    [[nodiscard]] virtual int unlink(const std::string& path) = 0;
    [[nodiscard]] virtual int mkdir(const std::string& path, mode_t permissions) = 0;
    /// Locks an open file exclusively until it is closed. Does not wait for other programs (EWOULDBLOCK).
    [[nodiscard]] virtual int lock(int file) = 0;
    /// The target of a symbolic link as it is written there; empty for anything else.
    [[nodiscard]] virtual std::string linkTarget(const std::string& path) = 0;

    /// The kernel's own.
    [[nodiscard]] static FileSystem& real();
};

}  // namespace ovin
