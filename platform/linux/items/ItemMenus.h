#pragma once

#include <chrono>
#include <string>

#include "platform/Geometry.h"

namespace ovin {

/// Shows the menus of status items, which their programs only describe. Any thread.
class ItemMenus {
public:
    virtual ~ItemMenus() = default;

    /// Shows the menu that a program describes at `path` of its connection `destination`, and returns when the menu opens.
    /// False when no menu opens: it is missing, has no entries, or its program has not described it within half a second.
    /// Also true when the outcome is not known after `limit`. Not on the main thread.
    [[nodiscard]] virtual bool show(const std::string& destination, const std::string& path,
                                    std::chrono::nanoseconds limit) = 0;

    /// Where a window that the program opens in answer to a click should appear, in screen coordinates.
    [[nodiscard]] virtual Point position() = 0;
};

}  // namespace ovin
