#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/memory/MemoryDisplays.h"
#include "platform/memory/MemoryUserDefaults.h"
#include "platform/memory/MemoryWindows.h"
#include "platform/memory/MemoryWorkspace.h"
#include "platform/memory/MemoryWorld.h"

namespace ovin {
namespace {

RunningApplication application(ProcessID pid, const std::string& name) {
    RunningApplication result;
    result.pid = pid;
    result.localizedName = name;
    return result;
}

TEST(MemoryWindows, ACharacterIsSevenPointsWideHoweverManyBytesItTakes) {
    const MemoryWindows windows;
    for (const char* text : {"abc", "⌘ü…", "日本語"}) {
        EXPECT_EQ(windows.fittingSize({Label{{{text, {}, {}}}, {}}}), (Size{21, 16})) << text;
    }
}

TEST(MemoryWorkspace, ApplicationsAreListedInTheOrderOfTheirLaunch) {
    MemoryWorkspace workspace;
    for (const ProcessID pid : {30, 10, 20}) workspace.launch(application(pid, "App"));
    workspace.quit(10);
    const auto running = workspace.runningApplications();
    ASSERT_EQ(running.size(), 2U);
    EXPECT_EQ(running[0].pid, 30);
    EXPECT_EQ(running[1].pid, 20);
}

TEST(MemoryWorkspace, APidThatIsLaunchedAgainIsListedOnce) {
    MemoryWorkspace workspace;
    workspace.launch(application(10, "Old"));
    workspace.launch(application(20, "Other"));
    workspace.launch(application(10, "New"));
    const auto running = workspace.runningApplications();
    ASSERT_EQ(running.size(), 2U);
    EXPECT_EQ(running[0].localizedName, "Other");
    EXPECT_EQ(running[1].localizedName, "New");
}

TEST(MemoryWorkspace, FilesAreShownAsTheyWereAdded) {
    MemoryWorkspace workspace;
    const Image icon = MemoryImage::named("safe");
    workspace.addFile("/Applications/Safe.app", "Tresor", icon);
    EXPECT_EQ(workspace.displayName("/Applications/Safe.app"), "Tresor");
    EXPECT_EQ(workspace.icon("/Applications/Safe.app"), icon);
    EXPECT_EQ(workspace.icon("/Applications/Other.app"), std::nullopt);
}

TEST(MemoryWorkspace, AMissingPathIsShownAsItsLastComponent) {
    const MemoryWorkspace workspace;
    EXPECT_EQ(workspace.displayName("/a/b.app"), "b.app");
    EXPECT_EQ(workspace.displayName("/a/b.app//"), "b.app");
    EXPECT_EQ(workspace.displayName("b"), "b");
    EXPECT_EQ(workspace.displayName("/"), "/");
    EXPECT_EQ(workspace.displayName(""), "");
}

TEST(MemoryDisplays, WithoutADisplayNothingHasAnArea) {
    MemoryDisplays displays;
    displays.displays.clear();
    EXPECT_EQ(displays.bounds(displays.mainDisplay()), Rect{});
}

TEST(MemoryUserDefaults, AnEffectIsSeenBeforeInAndAfterIt) {
    MemoryUserDefaults defaults;
    std::vector<bool> seen;
    defaults.onEffect = [&](EffectMoment) { seen.push_back(defaults.values.contains("key")); };
    EXPECT_TRUE(defaults.set("key", true));
    EXPECT_TRUE(defaults.remove("key"));
    EXPECT_EQ(seen, (std::vector<bool>{false, true, true, true, false, false}));
}

TEST(MemoryUserDefaults, ARefusalAtTheLastMomentHolds) {
    MemoryUserDefaults defaults;
    defaults.onEffect = [&](EffectMoment moment) { defaults.refusesChanges = moment == EffectMoment::before; };
    EXPECT_FALSE(defaults.set("key", true));
    EXPECT_TRUE(defaults.values.empty());
}

TEST(MemoryDisplays, AnEffectIsSeenBeforeInAndAfterIt) {
    MemoryDisplays displays;
    const DisplayMode other{2, 800, 500, 800, true};
    displays.displays.front().modes.push_back(other);
    std::vector<bool> seen;
    displays.onEffect = [&](EffectMoment) { seen.push_back(displays.currentMode(1) == other); };
    EXPECT_TRUE(displays.apply(other.id, 1));
    EXPECT_EQ(seen, (std::vector<bool>{false, true, true}));
    EXPECT_EQ(displays.bounds(1).size, (Size{800, 500}));
}

TEST(MemoryDisplays, AnExceptionGoesThroughAndLeavesWhatHasHappened) {
    MemoryDisplays displays;
    const DisplayMode other{2, 800, 500, 800, true};
    displays.displays.front().modes.push_back(other);
    for (const auto last : {EffectMoment::before, EffectMoment::during}) {
        displays.onEffect = [last](EffectMoment moment) {
            if (moment == last) throw 1;
        };
        EXPECT_THROW((void)displays.apply(other.id, 1), int);
        EXPECT_EQ(displays.currentMode(1) == other, last == EffectMoment::during);
    }
}

TEST(MemoryWorld, ThePlatformIsTheWorld) {
    MemoryWorld world;
    const Platform platform = world.platform();
    world.accessibility.launch(5).answer("AXTitle",
                                         {{std::string("App")}, AccessibilityError::success, std::chrono::milliseconds(3)});
    (void)platform.accessibility.copyAttributeValue(platform.accessibility.applicationElement(5), "AXTitle");
    EXPECT_EQ(platform.clock.now(), std::chrono::milliseconds(3));
    platform.log.write("line");
    EXPECT_EQ(world.log.lines(), std::vector<std::string>{"line"});
}

}  // namespace
}  // namespace ovin
