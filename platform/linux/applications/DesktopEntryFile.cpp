#include "platform/linux/applications/DesktopEntryFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

namespace ovin {
namespace {

constexpr const char* group = G_KEY_FILE_DESKTOP_GROUP;
/// Entries take a few kilobytes, translations included.
constexpr off_t longestFile = 1U << 20U;

/// Copies and frees a text of GLib's.
std::optional<std::string> taken(char* text) {
    if (text == nullptr) return std::nullopt;
    std::string result = text;
    g_free(text);
    return result;
}

/// Copies and frees a list of texts of GLib's.
std::vector<std::string> taken(char** texts) {
    std::vector<std::string> result;
    for (char** text = texts; text != nullptr && *text != nullptr; ++text) result.emplace_back(*text);
    g_strfreev(texts);
    return result;
}

/// Nothing when it is no regular file, because opening anything else might block, or cannot be read.
std::optional<std::string> contentOf(const std::string& path) {
    struct stat info {};
    if (stat(path.c_str(), &info) != 0 || !S_ISREG(info.st_mode) || info.st_size > longestFile) return std::nullopt;
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0) return std::nullopt;
    std::string content(static_cast<std::size_t>(info.st_size), '\0');
    const ssize_t length = ::read(file, content.data(), content.size());
    close(file);
    content.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
    return length < 0 ? std::nullopt : std::optional(std::move(content));
}

/// The lines that begin groups, and those of keys that begin like "Exec" and "TryExec".
std::string linesOfProgram(std::string_view text) {
    std::string result;
    for (std::size_t start = 0, end = 0; start < text.size(); start = end) {
        end = std::min(text.find('\n', start), text.size() - 1) + 1;
        // As GLib does, which looks for keys and groups after blanks.
        std::size_t first = start;
        while (first < end && g_ascii_isspace(text[first])) ++first;
        const std::string_view line = text.substr(first, end - first);
        if (line.starts_with('[') || line.starts_with("Exec") || line.starts_with("TryExec")) result += line;
    }
    return result;
}

}  // namespace

std::optional<DesktopEntryFile> DesktopEntryFile::read(const std::string& path, GKeyFileFlags flags) {
    const auto text = contentOf(path);
    return text ? parsed(*text, flags) : std::nullopt;
}

std::optional<DesktopEntryFile> DesktopEntryFile::readProgram(const std::string& path) {
    const auto text = contentOf(path);
    return text ? parsed(linesOfProgram(*text), G_KEY_FILE_NONE) : std::nullopt;
}

std::optional<DesktopEntryFile> DesktopEntryFile::parsed(const std::string& text, GKeyFileFlags flags) {
    DesktopEntryFile entry;
    const bool isRead = g_key_file_load_from_data(entry.file_.get(), text.data(), text.size(), flags, nullptr) != FALSE;
    if (!isRead || g_key_file_has_group(entry.file_.get(), group) == FALSE) return std::nullopt;
    return entry;
}

std::optional<std::string> DesktopEntryFile::value(const std::string& key) const {
    return taken(g_key_file_get_string(file_.get(), group, key.c_str(), nullptr));
}

std::optional<std::string> DesktopEntryFile::localizedValue(const std::string& key) const {
    return taken(g_key_file_get_locale_string(file_.get(), group, key.c_str(), nullptr, nullptr));
}

std::vector<std::string> DesktopEntryFile::list(const std::string& key) const {
    return taken(g_key_file_get_string_list(file_.get(), group, key.c_str(), nullptr, nullptr));
}

bool DesktopEntryFile::isTrue(const std::string& key) const {
    return g_key_file_get_boolean(file_.get(), group, key.c_str(), nullptr) != FALSE;
}

void DesktopEntryFile::set(const std::string& key, const std::string& value) {
    g_key_file_set_string(file_.get(), group, key.c_str(), value.c_str());
}

void DesktopEntryFile::remove(const std::string& key) { g_key_file_remove_key(file_.get(), group, key.c_str(), nullptr); }

std::string DesktopEntryFile::text() const { return taken(g_key_file_to_data(file_.get(), nullptr, nullptr)).value_or(""); }

std::string execCommand(const std::string& program) {
    constexpr std::string_view needBackslash = "\"`$\\";
    std::string result = "\"";
    for (const char character : program) {
        if (needBackslash.find(character) != std::string_view::npos) result += '\\';
        // A single "%" would begin a field code, which stands for the files to open.
        if (character == '%') result += '%';
        result += character;
    }
    return result + "\"";
}

std::string programOfExec(const std::string& command) {
    char** parsed = nullptr;
    // Quoting in entries means what GLib, and many desktops with it, makes of it.
    if (g_shell_parse_argv(command.c_str(), nullptr, &parsed, nullptr) == FALSE) return {};
    const std::vector<std::string> words = taken(parsed);
    auto word = words.begin();
    if (std::filesystem::path(*word).filename() == "env") {
        word = std::find_if(word + 1, words.end(), [](const std::string& argument) {
            return !argument.starts_with('-') && argument.find('=') == std::string::npos;
        });
    }
    std::string program = word == words.end() ? std::string() : *word;
    for (std::size_t at = 0; (at = program.find("%%", at)) != std::string::npos; ++at) program.erase(at, 1);
    return program;
}

std::optional<std::filesystem::path> findProgram(const std::string& program) {
    const std::filesystem::path path = program;
    // Relative to a folder that cannot be known: the one in which the session starts programs.
    if (path.is_relative() && path.has_parent_path()) return std::nullopt;
    return taken(g_find_program_in_path(program.c_str()));
}

}  // namespace ovin
