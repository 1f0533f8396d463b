#pragma once

#include <string>
#include <vector>

#include "platform/Alerts.h"
#include "platform/Geometry.h"
#include "platform/StatusItem.h"

namespace ovin {

/// The user of a stage: sees what this program shows, and uses it. What was asked for may become visible only while the
/// event loop runs. Main thread only.
class StagedUser {
public:
    enum class MouseButton { left, right };

    StagedUser() = default;
    StagedUser(const StagedUser&) = delete;
    StagedUser& operator=(const StagedUser&) = delete;
    virtual ~StagedUser() = default;

    /// What this program's items in the menu bar are called, by their images.
    [[nodiscard]] virtual std::vector<std::string> items() = 0;
    /// Clicks this program's only item with the left or the right button.
    virtual void clickItem(StatusItemClick click) = 0;
    /// Will choose the entry of this title when a menu is next open.
    virtual void willChoose(const std::string& title) = 0;

    /// Presses the button of each alert that is shown and has only one. All alerts that were acknowledged so far.
    [[nodiscard]] virtual std::vector<Alert> acknowledged() = 0;

    /// The frames of this program's windows that are shown.
    [[nodiscard]] virtual std::vector<Rect> windows() = 0;
    /// Clicks the button with this tag in the only window that is shown.
    virtual void click(int tag) = 0;
    /// Moves the only window that is shown, which is a floating panel, or closes it by its close button.
    virtual void moveWindow(Point origin) = 0;
    virtual void closeWindow() = 0;

    /// Presses and releases a mouse button where no window of this program is. [pressMouse]
    virtual void pressElsewhere(MouseButton button) = 0;
};

}  // namespace ovin
