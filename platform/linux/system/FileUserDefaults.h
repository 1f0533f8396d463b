#pragma once

#include <filesystem>
#include <string>

#include "platform/UserDefaults.h"
#include "platform/linux/system/DurableFile.h"

namespace ovin {

/// User defaults in a file, a line for each key: the key, a letter for the type (b, i, d or s) and the value, separated by
/// tabs. Whatever happens, the file holds either the old settings or the new ones. It is read at each question, because
/// other programs of this user, a preview or Ovin in a second session, change it as well; a change leaves all other keys as
/// they are at that moment.
class FileUserDefaults final : public UserDefaults {
public:
    /// A file that does not exist has no settings, and lines that make no sense are dropped at the next change.
    /// `fileSystem` must outlive them.
    explicit FileUserDefaults(std::filesystem::path path, FileSystem& fileSystem = FileSystem::real());

    /// False when there is something in the file's place that cannot be read, or is no such file. There are no settings
    /// then, and every change is refused, as it would put an end to those that nobody could read.
    [[nodiscard]] bool isReadable() const;

    [[nodiscard]] std::optional<Value> object(std::string_view key) const override;
    [[nodiscard]] bool set(std::string_view key, const Value& value) override;
    [[nodiscard]] bool remove(std::string_view key) override;
    [[nodiscard]] std::string place() const override;

private:
    const DurableFile file_;
    mutable std::string lastContent_;
};

/// Where the settings of this user's Ovin are, by the XDG rules.
[[nodiscard]] std::filesystem::path userDefaultsPath();

}  // namespace ovin
