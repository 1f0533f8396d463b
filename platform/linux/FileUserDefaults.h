#pragma once

#include <filesystem>
#include <map>
#include <string>

#include "platform/UserDefaults.h"

namespace ovin {

/// User defaults in a file, a line for each key: the key, a letter for the type (b, i, d or s) and the value, separated by
/// tabs. A change is written to a file beside it, which reaches the disk before it takes the place of the first: whatever
/// happens, the file holds either the old settings or the new ones.
class FileUserDefaults final : public UserDefaults {
public:
    /// Reads the settings; a file that does not exist has none, and lines that make no sense are dropped at the next change.
    explicit FileUserDefaults(std::filesystem::path path);

    [[nodiscard]] std::optional<Value> object(std::string_view key) const override;
    [[nodiscard]] bool set(std::string_view key, const Value& value) override;
    [[nodiscard]] bool remove(std::string_view key) override;

private:
    using Values = std::map<std::string, Value, std::less<>>;

    [[nodiscard]] bool replace(Values values);

    const std::filesystem::path path_;
    Values values_;
};

/// Where the settings of this user's Ovin are, by the XDG rules.
[[nodiscard]] std::filesystem::path userDefaultsPath();

}  // namespace ovin
