#include "platform/linux/system/FileUserDefaults.h"

#include <charconv>
#include <functional>
#include <iterator>
#include <map>
#include <sstream>
#include <system_error>
#include <utility>

#include "platform/linux/system/XdgFolders.h"

namespace ovin {
namespace {

using Value = UserDefaults::Value;
using Values = std::map<std::string, Value, std::less<>>;

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

Values valuesIn(const std::string& text) {
    Values values;
    std::istringstream lines(text);
    std::string line;
    while (std::getline(lines, line)) {
        const std::size_t first = line.find('\t');
        const std::size_t second = first == std::string::npos ? first : line.find('\t', first + 1);
        if (second == std::string::npos) continue;
        const std::string_view whole = line;
        const auto value = valueOf(whole.substr(first + 1, second - first - 1), whole.substr(second + 1));
        if (value) values.insert_or_assign(unescaped(whole.substr(0, first)), *value);
    }
    return values;
}

std::string textOf(const Values& values) {
    std::string text;
    for (const auto& [key, value] : values) text += escaped(key) + "\t" + std::visit(Line{}, value) + "\n";
    return text;
}

}  // namespace

FileUserDefaults::FileUserDefaults(std::filesystem::path path, FileSystem& fileSystem)
    : file_(std::move(path), fileSystem) {}

bool FileUserDefaults::isReadable() const { return file_.read().has_value(); }

std::optional<Value> FileUserDefaults::object(std::string_view key) const {
    // Keeps what was read last when the disk fails, because it may say what must be put back.
    if (auto content = file_.read()) lastContent_ = *std::move(content);
    const Values values = valuesIn(lastContent_);
    const auto found = values.find(key);
    if (found == values.end()) return std::nullopt;
    return found->second;
}

bool FileUserDefaults::set(std::string_view key, const Value& value) {
    return file_.update([&](const std::string& content) {
        Values values = valuesIn(content);
        values.insert_or_assign(std::string(key), value);
        return textOf(values);
    });
}

bool FileUserDefaults::remove(std::string_view key) {
    if (!object(key)) return isReadable();
    return file_.update([&](const std::string& content) {
        Values values = valuesIn(content);
        values.erase(std::string(key));
        return textOf(values);
    });
}

std::string FileUserDefaults::place() const { return file_.path().string(); }

std::filesystem::path userDefaultsPath() { return userFolder("XDG_CONFIG_HOME", ".config") / "ovin" / "defaults"; }

}  // namespace ovin
