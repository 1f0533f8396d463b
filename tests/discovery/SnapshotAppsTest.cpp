#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "discovery/ItemProvider.h"
#include "discovery/OuterBundlePath.h"
#include "platform/memory/MemoryWorld.h"

namespace ovin {
namespace {

using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class SnapshotApps : public testing::Test {
protected:
    MemoryWorld world;

    std::vector<AppInfo> apps() { return ItemProvider::snapshotApps(world.platform()); }

    AppInfo onlyApp(RunningApplication application) {
        world.workspace.launch(std::move(application));
        const auto all = apps();
        EXPECT_EQ(all.size(), 1u);
        return all.empty() ? AppInfo{} : all.front();
    }
};

std::optional<std::string> outer(std::optional<std::string> path) {
    return outerBundlePath({1, {}, {}, std::move(path), {}});
}

TEST_F(SnapshotApps, TheExcludedBundleIdentifiersAreFour) {
    EXPECT_THAT(ItemProvider::excludedBundleIDs(world.platform()),
                UnorderedElementsAre("com.apple.controlcenter", "com.apple.systemuiserver", "com.apple.MenuBarAgent",
                                     world.process.bundleID));
}

TEST_F(SnapshotApps, NothingRunningGivesAnEmptyList) { EXPECT_THAT(apps(), IsEmpty()); }

TEST_F(SnapshotApps, ExcludedApplicationsAreSkipped) {
    ProcessID pid = 1;
    for (const std::string& excluded : ItemProvider::excludedBundleIDs(world.platform())) {
        world.workspace.launch({pid++, excluded, "Name", {}, {}});
    }
    EXPECT_THAT(apps(), IsEmpty());
}

TEST_F(SnapshotApps, ExclusionIsExactAndCaseSensitive) {
    world.workspace.launch({1, "com.apple.ControlCenter", "a", {}, {}});
    world.workspace.launch({2, "com.apple.controlcenter.helper", "b", {}, {}});
    EXPECT_THAT(apps(), ElementsAre(Field(&AppInfo::pid, 1), Field(&AppInfo::pid, 2)));
}

TEST_F(SnapshotApps, AnApplicationNamedLikeTheAgentIsSkipped) {
    world.workspace.launch({1, {}, "MenuBarAgent", {}, {}});
    world.workspace.launch({2, {}, "menubaragent", {}, {}});
    world.workspace.launch({3, "com.example.nameless", {}, {}, {}});
    EXPECT_THAT(apps(), ElementsAre(Field(&AppInfo::pid, 2), Field(&AppInfo::pid, 3)));
}

TEST_F(SnapshotApps, TheOrderIsTheWorkspacesAndDuplicatesAreNotMerged) {
    for (const ProcessID pid : {9, 3, 7}) world.workspace.launch({pid, "com.example.same", "Same", {}, {}});
    EXPECT_THAT(apps(), ElementsAre(Field(&AppInfo::pid, 9), Field(&AppInfo::pid, 3), Field(&AppInfo::pid, 7)));
}

TEST_F(SnapshotApps, ABareExecutableHasItsOwnNameAndIcon) {
    const Image icon = MemoryImage::named("own");
    EXPECT_EQ(onlyApp({1, "com.example.tool", "Tool", "/usr/local/bin/tool", icon}),
              (AppInfo{1, "com.example.tool", "Tool", icon}));
}

TEST_F(SnapshotApps, ATopLevelApplicationHasItsOwnNameAndIcon) {
    world.workspace.addFile("/Applications/Tool.app", "Another name", MemoryImage::named("file"));
    const Image icon = MemoryImage::named("own");
    EXPECT_EQ(onlyApp({1, {}, "Tool", "/Applications/Tool.app", icon}), (AppInfo{1, {}, "Tool", icon}));
}

TEST_F(SnapshotApps, ANestedHelperHasTheNameAndIconOfItsOuterApplication) {
    const Image icon = MemoryImage::named("outer");
    world.workspace.addFile("/Applications/Outer.app", "Outer.app", icon);
    EXPECT_EQ(onlyApp({1, "com.example.helper", "Helper", "/Applications/Outer.app/Contents/Library/LoginItems/Helper.app",
                       MemoryImage::named("own")}),
              (AppInfo{1, "com.example.helper", "Outer", icon}));
}

TEST_F(SnapshotApps, AHelperNestedTwoLevelsDeepIsNamedAfterTheOutermost) {
    world.workspace.addFile("/A/Outer.app", "Outer", MemoryImage::named("outer"));
    EXPECT_EQ(onlyApp({1, {}, "Helper", "/A/Outer.app/Middle.app/Helper.app", {}}).name, "Outer");
}

TEST_F(SnapshotApps, ADisplayNameWithoutTheExtensionIsUsedUnchanged) {
    world.workspace.addFile("/A/Outer.app", "Außen.APP", MemoryImage::named("outer"));
    EXPECT_EQ(onlyApp({1, {}, "Helper", "/A/Outer.app/Helper.app", {}}).name, "Außen.APP");
}

TEST_F(SnapshotApps, OnlyOneExtensionIsDropped) {
    world.workspace.addFile("/A/Outer.app", "Outer.app.app", MemoryImage::named("outer"));
    EXPECT_EQ(onlyApp({1, {}, "Helper", "/A/Outer.app/Helper.app", {}}).name, "Outer.app");
}

TEST_F(SnapshotApps, AMissingNameFallsBackToTheBundleIdentifierAndThenToUnknown) {
    world.workspace.launch({1, "com.example.nameless", {}, {}, {}});
    world.workspace.launch({2, {}, {}, {}, {}});
    EXPECT_THAT(apps(),
                ElementsAre(AppInfo{1, "com.example.nameless", "com.example.nameless", {}}, AppInfo{2, {}, "Unknown", {}}));
}

TEST_F(SnapshotApps, AnEmptyNameIsAName) { EXPECT_EQ(onlyApp({1, "com.example.empty", "", {}, {}}).name, ""); }

TEST(OuterBundlePath, IsAbsentWithoutAPathABundleOrANesting) {
    EXPECT_EQ(outer(std::nullopt), std::nullopt);
    EXPECT_EQ(outer(""), std::nullopt);
    EXPECT_EQ(outer("/"), std::nullopt);
    EXPECT_EQ(outer("/usr/bin/tool"), std::nullopt);
    EXPECT_EQ(outer("/A/Tool.app"), std::nullopt);
    EXPECT_EQ(outer("/A/Tool.app/"), std::nullopt);
    EXPECT_EQ(outer("/A/Tool.application/x"), std::nullopt);
    EXPECT_EQ(outer("/A/Tool.APP/x"), std::nullopt);
}

TEST(OuterBundlePath, IsThePathUpToTheFirstBundle) {
    EXPECT_EQ(outer("/A/Outer.app/Contents/Helper"), "/A/Outer.app");
    EXPECT_EQ(outer("/A/Outer.app/Inner.app"), "/A/Outer.app");
    EXPECT_EQ(outer("/.app/x"), "/.app");
    EXPECT_EQ(outer("//A///Outer.app//x"), "/A/Outer.app");
    EXPECT_EQ(outer("A/Outer.app/x"), "A/Outer.app");
    EXPECT_EQ(outer("Outer.app/x"), "Outer.app");
}

}  // namespace
}  // namespace ovin
