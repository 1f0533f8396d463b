#include "desktop/ItemOrderFile.h"

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "platform/linux/system/ReplaceFile.h"

namespace ovin {
namespace {

constexpr std::uintmax_t largestFile = 1 << 20;
constexpr mode_t permissions = 0600;

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
    removeUnfinishedReplacements(path_);
    return !replaceFile(path_, text, permissions);
}

}  // namespace ovin
