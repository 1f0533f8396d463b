#include "app/ControlItem.h"

#include <gtest/gtest.h>

#include "platform/memory/MemoryWorld.h"

namespace ovin {
namespace {

class ControlItemTest : public testing::Test {
protected:
    MemoryWorld world;
    std::shared_ptr<ItemsPanel> panel = ItemsPanel::create(world.platform());
    MemoryStatusBar& item = world.statusBar;
    ControlItem control{world.platform(), *panel};
};

TEST_F(ControlItemTest, TheItemShowsOvinsIcon) {
    ASSERT_TRUE(item.image);
    EXPECT_EQ(item.image->accessibilityDescription, "Ovin");
}

TEST_F(ControlItemTest, ALeftClickOpensAndClosesTheLedgeOnTheItemsScreen) {
    item.itemScreen = Screen{{{2000, 0}, {800, 600}}, {{2000, 30}, {800, 570}}};
    item.click(StatusItemClick::leftMouseUp);
    ASSERT_TRUE(world.windows.ledge());
    const Rect frame = world.windows.ledge()->frame;
    EXPECT_EQ(frame.origin.x + frame.size.width, 2792);
    EXPECT_EQ(frame.origin.y, 36);
    item.click(StatusItemClick::leftMouseUp);
    EXPECT_FALSE(world.windows.ledge());
}

TEST_F(ControlItemTest, ARightClickClosesTheLedgeBeforeTheMenuShows) {
    item.click(StatusItemClick::leftMouseUp);
    item.click(StatusItemClick::rightMouseUp);
    EXPECT_FALSE(panel->isOpen());
    ASSERT_TRUE(item.menu);
    EXPECT_EQ(item.menu->back()->title, "Quit Ovin");
    EXPECT_EQ(item.menu->back()->keyEquivalent, "q");
}

TEST_F(ControlItemTest, QuitTerminatesTheApplication) {
    item.click(StatusItemClick::rightMouseUp);
    item.menu->back()->action();
    EXPECT_EQ(world.application.terminationCount, 1);
}

}  // namespace
}  // namespace ovin
