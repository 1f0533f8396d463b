#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>
#include <system_error>

#include "platform/Downloads.h"

namespace ovin {

/// A file that grows in a private folder. Where the file system can do that it has no name, and is gone with the process
/// however that ends; elsewhere it has one that `clear` knows. It goes with this object.
class TemporaryFile final : public DownloadedFile {
public:
    /// In a folder that is made if need be, readable by nobody else, with room for `length` bytes. Null with an error.
    [[nodiscard]] static std::shared_ptr<TemporaryFile> create(const std::filesystem::path& folder, std::uint64_t length,
                                                               std::error_code& error);
    TemporaryFile(int descriptor, std::filesystem::path name) : descriptor_(descriptor), name_(std::move(name)) {}
    ~TemporaryFile() override;

    [[nodiscard]] std::error_code append(std::string_view bytes);

    /// For reading; belongs to this object.
    [[nodiscard]] int descriptor() const { return descriptor_; }
    [[nodiscard]] std::uint64_t size() const { return size_; }

    /// Removes what earlier processes have left in the folder: unfinished files and copies, and others that are older than a
    /// day.
    static void clear(const std::filesystem::path& folder);

private:
    const int descriptor_;
    const std::filesystem::path name_;
    std::uint64_t size_ = 0;
};

/// Copies all of a file to where `path` is, as `replaceFile` puts files in place, after what earlier copies have left.
[[nodiscard]] std::error_code copyInPlace(int descriptor, const std::filesystem::path& path, unsigned permissions);

}  // namespace ovin
