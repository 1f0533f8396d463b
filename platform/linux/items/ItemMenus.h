#pragma once

#include <chrono>
#include <string>

#include "platform/Geometry.h"

namespace ovin {

/// Shows the menus of status items, which their programs only describe. Any thread.
class ItemMenus {
public:
    virtual ~ItemMenus() = default;

    /// Shows the menu that a program describes at `path` of its connection `destination`, and returns when it opens. False
    /// when there is none to open: it is missing, has no entries, or its program has not described it within half a
    /// second. True, too, when that is not known after `limit`. Not on the main thread.
    [[nodiscard]] virtual bool show(const std::string& destination, const std::string& path,
                                    std::chrono::nanoseconds limit) = 0;

    /// Where a window that a program opens by itself should appear, in screen coordinates.
    [[nodiscard]] virtual Point position() = 0;
};

}  // namespace ovin
