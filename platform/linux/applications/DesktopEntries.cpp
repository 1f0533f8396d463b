#include "platform/linux/applications/DesktopEntries.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

#include "platform/linux/applications/DesktopEntryFile.h"
#include "platform/linux/system/Environment.h"
#include "platform/linux/system/XdgFolders.h"

namespace ovin {
namespace {

using Group = std::map<std::string, std::string>;

std::string_view trimmed(std::string_view text) {
    const std::size_t start = text.find_first_not_of(" \t\r");
    if (start == std::string_view::npos) return {};
    return text.substr(start, text.find_last_not_of(" \t\r") - start + 1);
}

/// The name of the program that a command line starts, without its folder. Variables before the program are as rare in
/// entries as they are legal.
std::string executableOf(std::string_view command) {
    const std::string program = programOfExec(std::string(command));
    return program.substr(program.rfind('/') + 1);
}

/// "de_DE.UTF-8@euro" is tried as "de_DE" and then as "de"; without either the untranslated value counts.
std::string localizedValue(const Group& group, const std::string& key, const std::string& language) {
    const std::string territory = language.substr(0, language.find_first_of(".@"));
    for (const std::string& locale : {territory, territory.substr(0, territory.find('_'))}) {
        const auto value = group.find(key + "[" + locale + "]");
        if (value != group.end()) return value->second;
    }
    const auto value = group.find(key);
    return value == group.end() ? std::string() : value->second;
}

/// What stands in the group "Desktop Entry".
Group groupIn(std::string_view text) {
    Group group;
    bool isInGroup = false;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = trimmed(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.starts_with('[')) isInGroup = line == "[Desktop Entry]";
        const std::size_t equals = line.find('=');
        if (!isInGroup || line.starts_with('#') || equals == std::string_view::npos) continue;
        group.emplace(trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
    }
    return group;
}

Group readGroup(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return groupIn(std::string(std::istreambuf_iterator<char>(file), {}));
}

}  // namespace

DesktopEntries::DesktopEntries(const std::vector<std::filesystem::path>& dataFolders, const std::string& language) {
    for (const std::filesystem::path& folder : dataFolders) {
        std::error_code error;
        std::filesystem::directory_iterator files(folder / "applications", error);
        for (; !error && files != std::filesystem::directory_iterator(); files.increment(error)) {
            if (files->path().extension() != ".desktop") continue;
            const Group group = readGroup(files->path());
            const auto command = group.find("Exec");
            const std::string executable = command == group.end() ? std::string() : executableOf(command->second);
            // A process whose program is not to be known is none of these.
            if (executable.empty()) continue;
            byExecutable_.emplace(executable,
                                  DesktopEntry{files->path().stem().string(), localizedValue(group, "Name", language),
                                               localizedValue(group, "Icon", language)});
        }
    }
}

std::optional<DesktopEntry> DesktopEntries::entryFor(const std::string& executable) const {
    const auto found = byExecutable_.find(executable);
    if (found == byExecutable_.end()) return std::nullopt;
    return found->second;
}

std::vector<std::filesystem::path> dataFolders() {
    auto folders = systemFolders("XDG_DATA_DIRS", "/usr/local/share:/usr/share");
    folders.insert(folders.begin(), userFolder("XDG_DATA_HOME", ".local/share"));
    return folders;
}

std::string messageLanguage() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        if (auto value = environmentVariable(name); value && !value->empty()) return *std::move(value);
    }
    return {};
}

}  // namespace ovin
