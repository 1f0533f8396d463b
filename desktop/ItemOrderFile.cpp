#include "desktop/ItemOrderFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace ovin {
namespace {

constexpr std::uintmax_t largestFile = 1 << 20;

bool writeAll(int file, const std::string& text) {
    std::size_t written = 0;
    while (written < text.size()) {
        const ssize_t count = write(file, text.data() + written, text.size() - written);
        if (count < 0) return false;
        written += static_cast<std::size_t>(count);
    }
    return true;
}

bool writeDurably(const std::string& path, const std::string& text) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file < 0) return false;
    const bool isWritten = writeAll(file, text) && fsync(file) == 0;
    return close(file) == 0 && isWritten;
}

}  // namespace

std::vector<std::string> ItemOrderFile::load() const {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path_, error)) return {};
    if (std::filesystem::file_size(path_, error) > largestFile || error) return {};

    std::vector<std::string> keys;
    std::ifstream file(path_);
    for (std::string line; std::getline(file, line);) {
        if (!line.empty()) keys.push_back(line);
    }
    return keys;
}

bool ItemOrderFile::save(const std::vector<std::string>& keys) const {
    std::error_code error;
    std::filesystem::create_directories(std::filesystem::path(path_).parent_path(), error);

    std::string text;
    for (const auto& key : keys) text += key + '\n';
    const std::string aside = path_ + ".new";
    return writeDurably(aside, text) && std::rename(aside.c_str(), path_.c_str()) == 0;
}

}  // namespace ovin
