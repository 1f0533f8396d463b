#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ovin {

/// The text of a desktop entry, of which single keys are changed and everything else stays as it is: other keys, other
/// groups, comments, the ends of its lines.
class DesktopEntryText {
public:
    explicit DesktopEntryText(std::string_view text);

    /// Whether there is a group "Desktop Entry" at all; without one no desktop reads anything of it.
    [[nodiscard]] bool hasGroup() const { return group_.has_value(); }

    /// The value of a key of that group, without its escapes; nothing when the key is missing.
    [[nodiscard]] std::optional<std::string> value(const std::string& key) const;
    /// A Boolean; false for everything but "true".
    [[nodiscard]] bool isTrue(const std::string& key) const { return value(key) == "true"; }
    /// The members of a list, which are separated by semicolons.
    [[nodiscard]] std::vector<std::string> list(const std::string& key) const;

    /// Adds the group where it is missing.
    void set(const std::string& key, std::string_view value);
    void remove(const std::string& key);

    [[nodiscard]] std::string text() const;

private:
    [[nodiscard]] std::size_t groupEnd() const;
    [[nodiscard]] std::optional<std::size_t> lineOf(const std::string& key) const;

    /// Without their ends.
    std::vector<std::string> lines_;
    std::string lineEnd_ = "\n";
    /// The line of the group's name.
    std::optional<std::size_t> group_;
};

/// A path as the only word of a command line in the key "Exec".
[[nodiscard]] std::string execCommand(const std::string& program);

/// The first word of such a command line, which is the program; empty when there is none, or its quotes do not end. What the
/// file has escaped, as in any value, has been undone before, or stays as it is.
[[nodiscard]] std::string programOfExec(std::string_view command);

}  // namespace ovin
