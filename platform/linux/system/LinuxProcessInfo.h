#pragma once

#include "platform/ProcessInfo.h"

namespace ovin {

/// This process. Its bundle identifier is the id of Ovin's desktop entry.
class LinuxProcessInfo final : public ProcessInfo {
public:
    [[nodiscard]] ProcessID processIdentifier() const override;
    [[nodiscard]] std::string bundleIdentifier() const override;
    [[nodiscard]] std::optional<std::string> environment(std::string_view name) const override;
};

}  // namespace ovin
