#pragma once

#include <string>

#include "platform/Geometry.h"

namespace ovin {

/// Shows the menus of status items, which their programs only describe. Any thread.
class ItemMenus {
public:
    virtual ~ItemMenus() = default;

    /// Shows the menu that a program describes at `path` of its connection `destination`, and returns at once; false when
    /// no menus can be shown here.
    [[nodiscard]] virtual bool show(const std::string& destination, const std::string& path) = 0;

    /// Where a window that a program opens by itself should appear, in screen coordinates.
    [[nodiscard]] virtual Point position() = 0;
};

}  // namespace ovin
