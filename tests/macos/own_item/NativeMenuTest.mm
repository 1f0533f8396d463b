#include "platform/macos/own_item/NativeMenu.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/macos/system/Strings.h"

namespace ovin {
namespace {

class NativeMenuTest : public testing::Test {
protected:
    static void SetUpTestSuite() { (void)NSApplication.sharedApplication; }

    [[nodiscard]] MenuEntry entry(const std::string& title, const std::string& key = "", bool isOn = false) {
        return {title, key, isOn, [this, title] { chosen.push_back(title); }};
    }

    static void turnRunLoop() { [NSRunLoop.mainRunLoop runUntilDate:[NSDate dateWithTimeIntervalSinceNow:0.05]]; }

    std::vector<std::string> chosen;
    const Menu described{entry("Organize…"), std::nullopt, entry("Launch at Login", "", true),
                         entry("Ende & <Schluss>", "q")};
    NSMenu* const menu = nativeMenu(described);
};

TEST_F(NativeMenuTest, EachEntryIsAsDescribedAndEnabled) {
    EXPECT_FALSE(menu.autoenablesItems);
    ASSERT_EQ(menu.numberOfItems, static_cast<NSInteger>(described.size()));
    for (std::size_t i = 0; i < described.size(); ++i) {
        NSMenuItem* item = [menu itemAtIndex:static_cast<NSInteger>(i)];
        EXPECT_EQ(item.separatorItem, !described[i]) << i;
        if (!described[i]) continue;
        EXPECT_EQ(toString(item.title), described[i]->title);
        EXPECT_EQ(toString(item.keyEquivalent), described[i]->keyEquivalent);
        EXPECT_EQ(item.keyEquivalentModifierMask, NSEventModifierFlagCommand);
        EXPECT_EQ(item.state, described[i]->isOn ? NSControlStateValueOn : NSControlStateValueOff);
        EXPECT_TRUE(item.enabled);
        EXPECT_FALSE(item.hidden);
        EXPECT_NE(item.target, nil);
    }
}

TEST_F(NativeMenuTest, EachEntryRunsItsOwnActionOnceTheMenuHasClosed) {
    [menu performActionForItemAtIndex:3];
    [menu performActionForItemAtIndex:0];
    EXPECT_TRUE(chosen.empty());
    turnRunLoop();
    EXPECT_EQ(chosen, (std::vector<std::string>{"Ende & <Schluss>", "Organize…"}));
}

TEST_F(NativeMenuTest, AnEntryMayHaveNothingToDo) {
    NSMenu* idle = nativeMenu({MenuEntry{"Nothing", "", false, {}}});
    [idle performActionForItemAtIndex:0];
    turnRunLoop();
    EXPECT_TRUE([idle itemAtIndex:0].enabled);
}

}  // namespace
}  // namespace ovin
