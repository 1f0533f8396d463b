#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "tests/support/MenuBarScene.h"
#include "tests/support/ViewSearch.h"

namespace ovin {

/// A session with a menu bar in which one item of three is not drawn, and a display that has a wider mode.
class AppTestWorld {
public:
    static constexpr DisplayMode usualMode{1, 1512, 982, 3024, true};
    static constexpr DisplayMode widerMode{2, 2048, 1280, 4096, true};

    MenuBarScene scene;
    MemoryWorld& world = scene.world;
    std::vector<MemoryElement> items;

    AppTestWorld() {
        scene.launchAgent();
        items = scene.launchWithItems(10, "Full", {"a", "b", "c"});
        scene.draw({items[0], items[1]});
        scene.hide({items[2]});
        world.displays.displays = {{1, {{0, 0}, {1512, 982}}, {usualMode, widerMode}, usualMode, false}};
    }

    /// Lets the menu bar draw everything.
    void drawEverything() {
        scene.launchAgent();
        scene.setWindows({scene.window()});
        world.accessibility.quit(10);
        world.workspace.quit(10);
    }

    [[nodiscard]] DisplayMode currentMode() const { return world.displays.currentMode(1).value(); }
    [[nodiscard]] bool isCardShown() const { return world.windows.floatingPanel().has_value(); }
    [[nodiscard]] std::vector<MemoryWindows::Information> windows() const { return world.windows.informationWindows(); }
};

}  // namespace ovin
