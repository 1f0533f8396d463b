#pragma once

#include <filesystem>
#include <string>

#include "platform/UserDefaults.h"
#include "platform/linux/system/DurableFile.h"

namespace ovin {

/// User defaults in a file, a line for each key: the key, a letter for the type (b, i, d or s) and the value, separated by
/// tabs. Whatever happens, the file holds either the old settings or the new ones. It is read at each call, because other
/// programs of this user (a preview, Ovin in a second session) change it as well; a change keeps the other keys as they are
/// at that moment.
class FileUserDefaults final : public UserDefaults {
public:
    /// A file that does not exist has no settings; lines that cannot be read are dropped at the next change. `fileSystem`
    /// must outlive this object.
    explicit FileUserDefaults(std::filesystem::path path, FileSystem& fileSystem = FileSystem::real());

    /// False when what is in the file's place cannot be read or is no such file. There are no settings then, and every
    /// change is refused, because it would destroy the settings that could not be read.
    [[nodiscard]] bool isReadable() const;

    [[nodiscard]] std::optional<Value> object(std::string_view key) const override;
    [[nodiscard]] bool set(std::string_view key, const Value& value) override;
    [[nodiscard]] bool remove(std::string_view key) override;
    [[nodiscard]] std::string place() const override;

private:
    const DurableFile file_;
    mutable std::string lastContent_;
};

/// The file with the settings of this user's Ovin, by the XDG rules.
[[nodiscard]] std::filesystem::path userDefaultsPath();

}  // namespace ovin
