#pragma once

#include <glib.h>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ovin {

/// The keys of a desktop entry's group "Desktop Entry", as GLib reads and writes them.
class DesktopEntryFile {
public:
    /// Makes an entry without keys.
    DesktopEntryFile() : file_(g_key_file_new(), g_key_file_unref) {}

    /// Nothing when GLib cannot read the file, it lacks that group, or it is longer than a mebibyte. `flags` say what to
    /// keep for `text` beyond what `value` and `localizedValue` need.
    [[nodiscard]] static std::optional<DesktopEntryFile> read(const std::string& path,
                                                              GKeyFileFlags flags = G_KEY_FILE_NONE);
    /// The same with the keys "Exec" and "TryExec" only, in a small part of the time. What is wrong elsewhere in the file is
    /// not noticed.
    [[nodiscard]] static std::optional<DesktopEntryFile> readProgram(const std::string& path);

    /// The value of a key, without its escapes; nothing when the key is missing.
    [[nodiscard]] std::optional<std::string> value(const std::string& key) const;
    /// The same in the user's language, where it is translated.
    [[nodiscard]] std::optional<std::string> localizedValue(const std::string& key) const;
    [[nodiscard]] std::vector<std::string> list(const std::string& key) const;
    /// A Boolean; false when the key is missing or something else.
    [[nodiscard]] bool isTrue(const std::string& key) const;

    void set(const std::string& key, const std::string& value);
    void remove(const std::string& key);

    /// The file with these changes.
    [[nodiscard]] std::string text() const;

private:
    [[nodiscard]] static std::optional<DesktopEntryFile> parsed(const std::string& text, GKeyFileFlags flags);

    std::unique_ptr<GKeyFile, decltype(&g_key_file_unref)> file_;
};

/// A path as the only word of a command line in the key "Exec".
[[nodiscard]] std::string execCommand(const std::string& program);

/// The program that such a command line starts, directly or by `env`; empty when there is none.
[[nodiscard]] std::string programOfExec(const std::string& command);

/// The file that a desktop runs for a program in "Exec" or "TryExec": an absolute path, or a name that is found in PATH.
/// Nothing when there is no such file or this user cannot run it.
[[nodiscard]] std::optional<std::filesystem::path> findProgram(const std::string& program);

}  // namespace ovin
