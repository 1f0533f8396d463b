#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Drawing.h"
#include "platform/Menu.h"
#include "platform/Screens.h"

namespace ovin {

/// What the user did with the status item. `other` is a press without the mouse, for example by an assistive program.
enum class StatusItemClick { leftMouseUp, rightMouseUp, other };

/// This application's own item in the menu bar, as wide as its image, shown until the object is destroyed. Main thread only.
class StatusItem {
public:
    StatusItem() = default;
    StatusItem(const StatusItem&) = delete;
    StatusItem& operator=(const StatusItem&) = delete;
    virtual ~StatusItem() = default;

    /// The name under which the system remembers where the user put the item.
    virtual void setAutosaveName(const std::string& name) = 0;

    /// Called when a mouse button that was pressed over the item is released, and never at the press. A click has no other
    /// effect.
    virtual void onClick(std::function<void(StatusItemClick)> handler) = 0;

    /// Shows an image, which follows the appearance of the bar, and no title. Does nothing when the item has no place for an
    /// image.
    virtual void setImage(const DrawnImage& image) = 0;

    /// Shows a symbol of the system, and no title; false when the system has no symbol of this name.
    [[nodiscard]] virtual bool setSymbol(std::string_view name, const std::string& accessibilityDescription) = 0;

    /// Shows a menu at the item. May return while the menu is open; the user sees one menu at a time.
    virtual void showMenu(const Menu& menu) = 0;

    /// Sets what makes the menu for a bar that opens the item's menu by itself, some with every click. Does nothing where
    /// the bar passes all clicks on.
    // NOLINTNEXTLINE(performance-unnecessary-value-param): a world that heeds it keeps it
    virtual void setMenu(std::function<Menu()> /*menu*/) {}

    /// Whether a bar draws the item, as far as is known.
    [[nodiscard]] virtual bool isDrawn() const { return true; }

    /// The screen that the item is on; nothing when that is not known.
    [[nodiscard]] virtual std::optional<Screen> screen() const = 0;
};

/// The part of the menu bar that has the status items. Main thread only.
class StatusBar {
public:
    virtual ~StatusBar() = default;

    /// Puts an item into the menu bar. Never null: where there is no bar, the item waits for one.
    [[nodiscard]] virtual std::unique_ptr<StatusItem> makeStatusItem() = 0;
};

}  // namespace ovin
