#pragma once

#include "platform/memory/MemoryWorld.h"
#include "tests/contract/StagedUser.h"

namespace ovin {

/// The user of the in-memory world, where everything is visible at once.
class MemoryUser final : public StagedUser {
public:
    explicit MemoryUser(MemoryWorld& world) : world_(world) {}

    [[nodiscard]] std::vector<std::string> items() override {
        return {static_cast<std::size_t>(world_.statusBar.itemCount), world_.statusBar.accessibilityDescription};
    }
    void clickItem(StatusItemClick click) override { world_.statusBar.click(click); }
    void willChoose(const std::string& title) override {
        world_.statusBar.showingMenu = [this, title] {
            world_.time.async([this, title] { world_.statusBar.choose(title); });
        };
    }

    [[nodiscard]] std::vector<Alert> acknowledged() override { return world_.alerts.shown; }

    [[nodiscard]] std::vector<Rect> windows() override;
    void click(int tag) override;
    void moveWindow(Point origin) override { world_.windows.moveFloatingPanel(origin); }
    void closeWindow() override { world_.windows.closeFloatingPanel(); }

    void pressElsewhere(MouseButton) override { world_.events.press(); }

private:
    MemoryWorld& world_;
};

}  // namespace ovin
