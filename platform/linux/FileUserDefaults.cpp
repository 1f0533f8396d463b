#include "platform/linux/FileUserDefaults.h"

#include <fcntl.h>
#include <unistd.h>

#include <charconv>
#include <cstdio>
#include <fstream>
#include <functional>
#include <iterator>
#include <system_error>
#include <utility>

#include "platform/linux/Environment.h"

namespace ovin {
namespace {

using Value = UserDefaults::Value;

std::string escaped(std::string_view text) {
    std::string result;
    for (const char character : text) {
        switch (character) {
            case '\\':
                result += "\\\\";
                break;
            case '\t':
                result += "\\t";
                break;
            case '\n':
                result += "\\n";
                break;
            default:
                result += character;
        }
    }
    return result;
}

std::string unescaped(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\' || i + 1 == text.size()) {
            result += text[i];
            continue;
        }
        ++i;
        result += text[i] == 't' ? '\t' : text[i] == 'n' ? '\n' : text[i];
    }
    return result;
}

template <typename Number>
std::optional<Value> parsed(std::string_view text) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

template <typename Number>
std::string printed(Number number) {
    // The shortest text that reads back as the same number.
    char buffer[64];
    return {buffer, std::to_chars(std::begin(buffer), std::end(buffer), number).ptr};
}

struct Line {
    std::string operator()(bool value) const { return value ? "b\t1" : "b\t0"; }
    std::string operator()(std::int64_t value) const { return "i\t" + printed(value); }
    std::string operator()(double value) const { return "d\t" + printed(value); }
    std::string operator()(const std::string& value) const { return "s\t" + escaped(value); }
};

std::optional<Value> valueOf(std::string_view type, std::string_view text) {
    if (type == "b" && (text == "0" || text == "1")) return text == "1";
    if (type == "i") return parsed<std::int64_t>(text);
    if (type == "d") return parsed<double>(text);
    if (type == "s") return unescaped(text);
    return std::nullopt;
}

/// Writes a file and waits until it is on the disk.
bool writeDurably(const std::filesystem::path& path, const std::string& text) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file < 0) return false;
    std::size_t written = 0;
    while (written < text.size()) {
        const ssize_t count = write(file, text.data() + written, text.size() - written);
        if (count <= 0) break;
        written += static_cast<std::size_t>(count);
    }
    const bool isOnDisk = written == text.size() && fsync(file) == 0;
    return close(file) == 0 && isOnDisk;
}

/// A folder that is kept open, because whatever can fail must do so before the settings change.
class Folder {
public:
    explicit Folder(const std::filesystem::path& path)
        : descriptor_(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() {
        if (isOpen()) close(descriptor_);
    }

    [[nodiscard]] bool isOpen() const { return descriptor_ >= 0; }

    /// A name in a folder is on the disk once the folder is.
    [[nodiscard]] bool sync() const { return fsync(descriptor_) == 0; }

private:
    const int descriptor_;
};

}  // namespace

FileUserDefaults::FileUserDefaults(std::filesystem::path path) : path_(std::move(path)) {
    std::ifstream file(path_, std::ios::binary);
    std::string line;
    while (std::getline(file, line)) {
        const std::size_t first = line.find('\t');
        const std::size_t second = first == std::string::npos ? first : line.find('\t', first + 1);
        if (second == std::string::npos) continue;
        const std::string_view text = line;
        const auto value = valueOf(text.substr(first + 1, second - first - 1), text.substr(second + 1));
        if (value) values_.insert_or_assign(unescaped(text.substr(0, first)), *value);
    }
}

std::optional<Value> FileUserDefaults::object(std::string_view key) const {
    const auto found = values_.find(key);
    if (found == values_.end()) return std::nullopt;
    return found->second;
}

bool FileUserDefaults::set(std::string_view key, const Value& value) {
    Values values = values_;
    values.insert_or_assign(std::string(key), value);
    return replace(std::move(values));
}

bool FileUserDefaults::remove(std::string_view key) {
    if (!values_.contains(key)) return true;
    Values values = values_;
    values.erase(values.find(key));
    return replace(std::move(values));
}

bool FileUserDefaults::replace(Values values) {
    std::string text;
    for (const auto& [key, value] : values) text += escaped(key) + "\t" + std::visit(Line{}, value) + "\n";

    std::error_code error;
    std::filesystem::create_directories(path_.parent_path(), error);
    const Folder folder(path_.parent_path());
    const std::filesystem::path aside = path_.string() + ".new";
    if (!folder.isOpen() || !writeDurably(aside, text) || std::rename(aside.c_str(), path_.c_str()) != 0) {
        std::filesystem::remove(aside, error);
        return false;
    }
    values_ = std::move(values);
    return folder.sync();
}

std::filesystem::path userDefaultsPath() {
    const std::string folder = environmentVariable("XDG_CONFIG_HOME").value_or("");
    // The rules have no place for relative ones, which would be another folder for every way to start the program.
    const std::filesystem::path base = folder.starts_with('/')
                                           ? std::filesystem::path(folder)
                                           : std::filesystem::path(environmentVariable("HOME").value_or("")) / ".config";
    return base / "ovin" / "defaults";
}

}  // namespace ovin
