#include "platform/linux/applications/DesktopEntryText.h"

#include <algorithm>

namespace ovin {
namespace {

constexpr std::string_view groupName = "[Desktop Entry]";

std::string_view trimmed(std::string_view text) {
    const std::size_t start = text.find_first_not_of(" \t\r");
    if (start == std::string_view::npos) return {};
    return text.substr(start, text.find_last_not_of(" \t\r") - start + 1);
}

std::string_view keyOf(std::string_view line) {
    const std::size_t equals = line.find('=');
    if (line.starts_with('#') || equals == std::string_view::npos) return {};
    return trimmed(line.substr(0, equals));
}

std::string escaped(std::string_view text) {
    std::string result;
    for (const char character : text) {
        // Blanks elsewhere than in front are what they are.
        if (character == ' ' && result.empty()) {
            result += "\\s";
        } else if (character == '\n') {
            result += "\\n";
        } else if (character == '\t') {
            result += "\\t";
        } else if (character == '\r') {
            result += "\\r";
        } else if (character == '\\') {
            result += "\\\\";
        } else {
            result += character;
        }
    }
    return result;
}

char escape(char letter) {
    switch (letter) {
        case 's':
            return ' ';
        case 'n':
            return '\n';
        case 't':
            return '\t';
        case 'r':
            return '\r';
        default:
            return letter;
    }
}

/// Letters that mean nothing after a backslash, and a backslash at the very end, stay as they are.
std::string unescaped(std::string_view text) {
    constexpr std::string_view letters = "sntr\\";
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscape = text[i] == '\\' && i + 1 < text.size() && letters.find(text[i + 1]) != std::string_view::npos;
        result += isEscape ? escape(text[++i]) : text[i];
    }
    return result;
}

}  // namespace

DesktopEntryText::DesktopEntryText(std::string_view text) {
    if (text.find("\r\n") != std::string_view::npos) lineEnd_ = "\r\n";
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r')) line.remove_suffix(1);
        if (!group_ && trimmed(line) == groupName) group_ = lines_.size();
        lines_.emplace_back(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

/// The line behind the last one of the group.
std::size_t DesktopEntryText::groupEnd() const {
    if (!group_) return 0;
    const auto start = lines_.begin() + static_cast<std::ptrdiff_t>(*group_) + 1;
    const auto next =
        std::find_if(start, lines_.end(), [](const std::string& line) { return trimmed(line).starts_with('['); });
    return static_cast<std::size_t>(next - lines_.begin());
}

/// The first one counts.
std::optional<std::size_t> DesktopEntryText::lineOf(const std::string& key) const {
    const std::size_t end = groupEnd();
    for (std::size_t line = group_.value_or(0); line < end; ++line) {
        if (keyOf(lines_[line]) == key) return line;
    }
    return std::nullopt;
}

std::optional<std::string> DesktopEntryText::value(const std::string& key) const {
    const auto line = lineOf(key);
    if (!line) return std::nullopt;
    const std::string_view text = lines_[*line];
    return unescaped(trimmed(text.substr(text.find('=') + 1)));
}

std::vector<std::string> DesktopEntryText::list(const std::string& key) const {
    const std::string text = value(key).value_or("");
    std::vector<std::string> members;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find(';', start), text.size());
        if (end > start) members.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return members;
}

void DesktopEntryText::set(const std::string& key, std::string_view value) {
    std::string text = key + "=" + escaped(value);
    if (!group_) {
        group_ = lines_.size();
        lines_.emplace_back(groupName);
    }
    if (const auto line = lineOf(key)) {
        lines_[*line] = std::move(text);
        return;
    }
    std::size_t end = groupEnd();
    while (end > *group_ + 1 && trimmed(lines_[end - 1]).empty()) --end;
    lines_.insert(lines_.begin() + static_cast<std::ptrdiff_t>(end), std::move(text));
}

void DesktopEntryText::remove(const std::string& key) {
    while (const auto line = lineOf(key)) lines_.erase(lines_.begin() + static_cast<std::ptrdiff_t>(*line));
}

std::string DesktopEntryText::text() const {
    std::string result;
    for (const std::string& line : lines_) result += line + lineEnd_;
    return result;
}

std::string execCommand(const std::string& program) {
    constexpr std::string_view needBackslash = "\"`$\\";
    std::string result = "\"";
    for (const char character : program) {
        if (needBackslash.find(character) != std::string_view::npos) result += '\\';
        // One alone would stand for what the program is to open.
        if (character == '%') result += '%';
        result += character;
    }
    return result + "\"";
}

std::string programOfExec(std::string_view command) {
    command = trimmed(command);
    const bool isQuoted = command.starts_with('"');
    std::string result;
    for (std::size_t i = isQuoted ? 1 : 0; i < command.size(); ++i) {
        const char character = command[i];
        if (isQuoted ? character == '"' : character == ' ' || character == '\t') return result;
        const bool isEscape = i + 1 < command.size() && ((isQuoted && character == '\\') || command.substr(i, 2) == "%%");
        result += isEscape ? command[++i] : character;
    }
    return isQuoted ? std::string() : result;
}

}  // namespace ovin
