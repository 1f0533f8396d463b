#pragma once

#include <string>

namespace ovin {

/// What the running bar's user has told it to hide and to show.
class BarSettings {
public:
    virtual ~BarSettings() = default;

    /// Whether the bar draws an item of this Id. May read a file, so not on the main thread.
    [[nodiscard]] virtual bool draws(const std::string& id, bool isPassive) const = 0;
};

}  // namespace ovin
