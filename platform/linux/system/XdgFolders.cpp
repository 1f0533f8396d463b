#include "platform/linux/system/XdgFolders.h"

#include <sstream>

#include "platform/linux/system/Environment.h"

namespace ovin {

std::filesystem::path userFolder(const std::string& variable, std::string_view otherwise) {
    const std::filesystem::path folder = environmentVariable(variable).value_or("");
    if (folder.is_absolute()) return folder;
    const std::filesystem::path home = environmentVariable("HOME").value_or("");
    return (home.is_absolute() ? home : "/") / otherwise;
}

std::vector<std::filesystem::path> systemFolders(const std::string& variable, const std::string& otherwise) {
    const std::string list = environmentVariable(variable).value_or("");
    std::vector<std::filesystem::path> folders;
    for (const std::filesystem::path folder : partsOf(list.empty() ? otherwise : list)) {
        if (folder.is_absolute()) folders.push_back(folder);
    }
    return folders;
}

std::vector<std::string> partsOf(const std::string& list) {
    std::istringstream stream(list);
    std::vector<std::string> parts;
    for (std::string part; std::getline(stream, part, ':');) {
        if (!part.empty()) parts.push_back(part);
    }
    return parts;
}

}  // namespace ovin
