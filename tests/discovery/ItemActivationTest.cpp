#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "tests/support/MenuBarScene.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class ItemActivation : public testing::Test {
protected:
    MenuBarScene scene;
    MemoryElement element = scene.launchWithItems(512, "Net", {"Wi-Fi"})[0];
    std::vector<std::string> performed;

    bool activate(const std::string& title = "Wi-Fi") { return performedBy(ItemProvider::activate, title); }
    bool showMenu() { return performedBy(ItemProvider::showMenu, "Wi-Fi"); }

private:
    bool performedBy(bool (*perform)(const Platform&, const DiscoveredItem&), const std::string& title) {
        performed.clear();
        scene.world.accessibility.observeRequests([this](const MemoryRequest& request) {
            EXPECT_EQ(request.timeout, 1500ms);
            performed.push_back(request.name);
        });
        return perform(scene.world.platform(), {element.element(), "Net", {}, title, 512, {}, {}});
    }
};

TEST_F(ItemActivation, APressThatSucceedsIsAll) {
    element.answer("AXPress", {});
    EXPECT_TRUE(activate());
    EXPECT_THAT(performed, ElementsAre("AXPress"));
    EXPECT_THAT(scene.world.log.lines(), IsEmpty());
}

TEST_F(ItemActivation, APressThatCannotCompleteCountsAsSuccess) {
    element.fail("AXPress", AccessibilityError::cannotComplete);
    EXPECT_TRUE(activate());
    EXPECT_THAT(performed, ElementsAre("AXPress"));
}

TEST_F(ItemActivation, APressWithoutAnAnswerEndsAfterASecondAndAHalf) {
    element.answer("AXPress", {{}, AccessibilityError::success, 0ms, true});
    EXPECT_TRUE(activate());
    EXPECT_EQ(scene.world.time.now(), 1500ms);
}

TEST_F(ItemActivation, ARefusedPressIsFollowedByShowMenu) {
    element.fail("AXPress", AccessibilityError::actionUnsupported);
    element.answer("AXShowMenu", {});
    EXPECT_TRUE(activate());
    EXPECT_THAT(performed, ElementsAre("AXPress", "AXShowMenu"));
    EXPECT_THAT(scene.world.log.lines(), IsEmpty());
}

TEST_F(ItemActivation, AShowMenuThatCannotCompleteCountsAsSuccess) {
    element.fail("AXPress", AccessibilityError::failure);
    element.fail("AXShowMenu", AccessibilityError::cannotComplete);
    EXPECT_TRUE(activate());
}

TEST_F(ItemActivation, BothRefusedIsAFailureAndOneLine) {
    EXPECT_FALSE(activate());
    EXPECT_THAT(performed, ElementsAre("AXPress", "AXShowMenu"));
    EXPECT_THAT(scene.world.log.lines(), ElementsAre("Ovin: Net — Wi-Fi rejected AXPress and AXShowMenu"));
}

TEST_F(ItemActivation, AnEmptyTitleLeavesNothingBetweenTheSeparatorAndTheVerdict) {
    EXPECT_FALSE(activate(""));
    EXPECT_THAT(scene.world.log.lines(), ElementsAre("Ovin: Net —  rejected AXPress and AXShowMenu"));
}

TEST_F(ItemActivation, AMenuIsAskedForAndNoPress) {
    element.answer("AXPress", {});
    element.answer("AXShowMenu", {});
    EXPECT_TRUE(showMenu());
    EXPECT_THAT(performed, ElementsAre("AXShowMenu"));
    EXPECT_THAT(scene.world.log.lines(), IsEmpty());
}

TEST_F(ItemActivation, AMenuThatCannotCompleteCountsAsSuccess) {
    element.fail("AXShowMenu", AccessibilityError::cannotComplete);
    EXPECT_TRUE(showMenu());
}

TEST_F(ItemActivation, AMenuThatIsRefusedIsAFailureAndOneLine) {
    element.answer("AXPress", {});
    EXPECT_FALSE(showMenu());
    EXPECT_THAT(performed, ElementsAre("AXShowMenu"));
    EXPECT_THAT(scene.world.log.lines(), ElementsAre("Ovin: Net — Wi-Fi rejected AXShowMenu"));
}

TEST_F(ItemActivation, AnItemWhoseApplicationQuitIsRefused) {
    scene.world.accessibility.quit(512);
    EXPECT_FALSE(activate());
    EXPECT_EQ(scene.world.log.lines().size(), 1u);
}

}  // namespace
}  // namespace ovin
