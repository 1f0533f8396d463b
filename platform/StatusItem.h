#pragma once

#include <functional>
#include <optional>

#include "platform/Drawing.h"
#include "platform/Menu.h"
#include "platform/Screens.h"

namespace ovin {

/// What the user did with the status item.
enum class StatusItemClick { leftMouseUp, rightMouseUp };

/// This application's own item in the menu bar, there from its making until its destruction. The system remembers where the
/// user put it. Main thread only.
class StatusItem {
public:
    StatusItem() = default;
    StatusItem(const StatusItem&) = delete;
    StatusItem& operator=(const StatusItem&) = delete;
    virtual ~StatusItem() = default;

    /// Called for every click; nothing happens by itself.
    virtual void onClick(std::function<void(StatusItemClick)> handler) = 0;

    /// Shows an image, which follows the appearance of the bar.
    virtual void setImage(const DrawnImage& image) = 0;

    /// Shows a menu at the item. May return while the menu is open; the user sees one menu at a time.
    virtual void showMenu(const Menu& menu) = 0;

    /// The screen that the item is on; nothing when that is not known.
    [[nodiscard]] virtual std::optional<Screen> screen() const = 0;
};

}  // namespace ovin
