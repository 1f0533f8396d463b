#include "updates/FeedUpdates.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Deployment.h"
#include "platform/memory/MemoryUpdates.h"
#include "platform/memory/MemoryWorld.h"
#include "tests/support/ViewSearch.h"
#include "updates/UpdatePages.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string feedURL = "https://localhost/appcast.xml";
const FeedItem newer{"2", "2.0", "https://ovin.example/2"};

/// An Ovin 1.0 whose feed announces 2.0.
class FeedUpdatesTest : public testing::Test {
protected:
    MemoryWorld world;
    MemoryUpdateFeed feed{world.time};
    MemoryWallClock clock{world.time};
    FeedUpdates updates{world.platform(), feed, clock};
    std::unique_ptr<UpdateFramework::Controller> controller;
    std::optional<std::string> testFeed = feedURL;
    int willShowCount = 0;

    FeedUpdatesTest() { announce({newer}); }

    void announce(const std::vector<FeedItem>& items) { feed.answers[feedURL] = items; }
    void start() {
        controller = updates.start({[this] { return testFeed; }, [this] { ++willShowCount; }});
    }
    /// The user asks, and the feed comes in.
    void ask() {
        controller->checkForUpdates();
        world.time.advance(2s);
    }
    /// Starts right after a check.
    void startChecked() {
        world.defaults.values["OvinLastUpdateCheck"] = std::int64_t{clock.date().count()};
        start();
    }
    void click(int tag) { world.windows.click("Software Update", tag); }
    void clickReminder(int tag) { world.windows.clickFloatingPanel(tag); }

    [[nodiscard]] bool isReminding() const { return world.windows.floatingPanel().has_value(); }
    [[nodiscard]] bool isOffering() const { return !world.windows.informationWindows().empty(); }
    [[nodiscard]] std::string alert() const {
        return world.alerts.shown.size() == 1 ? world.alerts.shown.front().message : "not one alert";
    }
    /// How many answers the user sees.
    [[nodiscard]] std::size_t messageCount() const {
        return world.alerts.shown.size() + world.windows.informationWindows().size();
    }
    void expectSilence() const {
        EXPECT_FALSE(isReminding());
        EXPECT_EQ(messageCount(), 0U);
        EXPECT_EQ(willShowCount, 0);
    }
};

TEST_F(FeedUpdatesTest, NothingIsCheckedWithinTheStart) {
    start();
    EXPECT_THAT(feed.requests, IsEmpty());
    world.time.advance(0s);
    EXPECT_THAT(feed.requests, ElementsAre(feedURL));
}

TEST_F(FeedUpdatesTest, ItChecksOnceADayHoweverOftenItStarts) {
    announce({});
    for (int hour = 0; hour < 71; ++hour) {
        start();
        world.time.advance(1h);
    }
    EXPECT_EQ(feed.requests.size(), 3U);
    expectSilence();
}

TEST_F(FeedUpdatesTest, ItChecksOnceADayWhileItRuns) {
    announce({});
    start();
    world.time.advance(10 * 24h - 1s);
    EXPECT_EQ(feed.requests.size(), 10U);
}

TEST_F(FeedUpdatesTest, AClockThatIsSetChangesNothingWithinARun) {
    announce({});
    start();
    world.time.advance(1h);
    clock.changeDate(1000h);
    world.time.advance(22h);
    EXPECT_EQ(feed.requests.size(), 1U);
    clock.changeDate(-3000h);
    world.time.advance(2h);
    EXPECT_EQ(feed.requests.size(), 2U);
}

TEST_F(FeedUpdatesTest, TheUsersCheckCountsToo) {
    announce({});
    startChecked();
    world.time.advance(20h);
    ask();
    world.time.advance(23h);
    EXPECT_EQ(feed.requests.size(), 1U);
    world.time.advance(2h);
    EXPECT_EQ(feed.requests.size(), 2U);
}

TEST_F(FeedUpdatesTest, ACheckWhoseDateCannotBeStoredIsMadeOnlyWhenAsked) {
    world.defaults.refusesChanges = true;
    start();
    world.time.advance(50h);
    EXPECT_THAT(feed.requests, IsEmpty());
    ask();
    EXPECT_TRUE(isOffering());
}

TEST_F(FeedUpdatesTest, WhoWasNotReachedIsTriedAgainMoreAndMoreSeldom) {
    feed.answers.clear();
    start();
    world.time.advance(14min);
    EXPECT_EQ(feed.requests.size(), 1U);
    world.time.advance(2min);
    EXPECT_EQ(feed.requests.size(), 2U);
    world.time.advance(29min);
    EXPECT_EQ(feed.requests.size(), 2U);
    announce({newer});
    world.time.advance(2min);
    EXPECT_TRUE(isReminding());
}

TEST_F(FeedUpdatesTest, AnAnswerThatIsOfNoUseIsNotAskedForAgainBeforeTheNextDay) {
    for (const FeedFailure failure : {FeedFailure::insecure, FeedFailure::unusable}) {
        feed.answers[feedURL] = failure;
        startChecked();
        const std::size_t before = feed.requests.size();
        world.time.advance(47h);
        EXPECT_EQ(feed.requests.size(), before + 1);
    }
    expectSilence();
}

TEST_F(FeedUpdatesTest, ANewerVersionThatNobodyAskedForIsToldByAPanelAlone) {
    start();
    world.time.advance(2s);
    ASSERT_TRUE(isReminding());
    EXPECT_THAT(labelTexts(world.windows.floatingPanel()->content), ElementsAre("Ovin 2.0 is available"));
    EXPECT_TRUE(world.windows.floatingPanel()->origin.has_value());
    EXPECT_EQ(messageCount(), 0U);
    EXPECT_EQ(willShowCount, 0) << "the application must not come forward";
    EXPECT_EQ(world.application.activationCount, 0);
}

TEST_F(FeedUpdatesTest, ThePanelLeadsToTheOfferOnceTheApplicationHasComeForward) {
    start();
    world.time.advance(2s);
    clickReminder(UpdatePages::show);
    EXPECT_FALSE(isReminding());
    ASSERT_TRUE(isOffering());
    EXPECT_EQ(willShowCount, 1);
    EXPECT_THAT(labelTexts(world.windows.informationWindows().front().content),
                Contains(HasSubstr("You have Ovin 1.0, and Ovin 2.0 is out.")));
}

TEST_F(FeedUpdatesTest, LaterOrClosingThePanelWaitsForTheNextDay) {
    start();
    world.time.advance(2s);
    clickReminder(UpdatePages::later);
    EXPECT_FALSE(isReminding());
    world.time.advance(23h);
    EXPECT_FALSE(isReminding());
    world.time.advance(1h);
    EXPECT_TRUE(isReminding());
    world.windows.closeFloatingPanel();
    EXPECT_FALSE(isReminding());
    world.time.advance(24h);
    EXPECT_TRUE(isReminding());
}

TEST_F(FeedUpdatesTest, APanelThatNobodyHeedsStaysAndTellsOfTheNewest) {
    start();
    world.time.advance(2s);
    world.windows.moveFloatingPanel({5, 5});
    world.time.advance(24h);
    EXPECT_EQ(world.windows.floatingPanel()->origin, (Point{5, 5})) << "it comes anew each day";
    announce({newer, {"3", "3.0", ""}});
    world.time.advance(24h);
    EXPECT_THAT(labelTexts(world.windows.floatingPanel()->content), ElementsAre("Ovin 3.0 is available"));
    EXPECT_FALSE(world.windows.hadTwoFloatingPanels());
}

TEST_F(FeedUpdatesTest, WhoAsksGetsTheOfferInPlaceOfThePanel) {
    start();
    world.time.advance(2s);
    ask();
    EXPECT_FALSE(isReminding());
    EXPECT_TRUE(isOffering());
    EXPECT_EQ(messageCount(), 1U);
    EXPECT_EQ(willShowCount, 1);
}

TEST_F(FeedUpdatesTest, WhoAsksGetsOneAnswerWhateverItIs) {
    const struct {
        UpdateFeed::Answer answer;
        std::string message;
    } cases[] = {{std::vector<FeedItem>{}, "You’re up to date"},
                 {std::vector<FeedItem>{{"1", "1.0", ""}, {"0.9", "", ""}}, "You’re up to date"},
                 {FeedFailure::unreachable, "Ovin could not look for updates"},
                 {FeedFailure::insecure, "Ovin could not look for updates"},
                 {FeedFailure::unusable, "Ovin could not look for updates"}};
    for (const auto& [answer, message] : cases) {
        world.alerts.shown.clear();
        feed.answers[feedURL] = answer;
        startChecked();
        ask();
        EXPECT_EQ(alert(), message);
        EXPECT_EQ(messageCount(), 1U);
    }
    EXPECT_EQ(willShowCount, 0);
}

TEST_F(FeedUpdatesTest, WhoAsksOftenOrDuringACheckGetsOneAnswerToo) {
    announce({});
    start();
    world.time.advance(0s);
    controller->checkForUpdates();
    ask();
    EXPECT_EQ(alert(), "You’re up to date");
    EXPECT_EQ(feed.requests.size(), 1U);
}

TEST_F(FeedUpdatesTest, AfterAnAnswerTheScheduledChecksAreSilentAgain) {
    announce({});
    startChecked();
    ask();
    world.alerts.shown.clear();
    world.time.advance(72h);
    EXPECT_EQ(feed.requests.size(), 4U);
    expectSilence();
}

TEST_F(FeedUpdatesTest, TheWebPageIsOpenedAndTheOfferGoes) {
    startChecked();
    ask();
    click(UpdatePages::open);
    EXPECT_THAT(world.workspace.openedURLs, ElementsAre("https://ovin.example/2"));
    EXPECT_FALSE(isOffering());
}

TEST_F(FeedUpdatesTest, WithoutAWebPageTheProductsIsOpened) {
    announce({{"2", "2.0", "file:///etc/passwd"}});
    startChecked();
    ask();
    click(UpdatePages::open);
    EXPECT_THAT(world.workspace.openedURLs, ElementsAre(std::string(deployment::siteURL)));
}

TEST_F(FeedUpdatesTest, ASkippedVersionIsToldOfToWhoAsksAlone) {
    startChecked();
    ask();
    click(UpdatePages::skip);
    EXPECT_FALSE(isOffering());
    world.time.advance(48h);
    EXPECT_FALSE(isReminding());
    start();
    world.time.advance(48h);
    EXPECT_FALSE(isReminding());
    ask();
    EXPECT_TRUE(isOffering());
    click(UpdatePages::later);
    announce({newer, {"2.1", "", ""}});
    world.time.advance(24h);
    EXPECT_TRUE(isReminding());
}

TEST_F(FeedUpdatesTest, NonsenseInTheSettingsSkipsNothing) {
    world.defaults.values["OvinSkippedUpdateVersion"] = std::int64_t{7};
    start();
    world.time.advance(2s);
    EXPECT_TRUE(isReminding());
}

TEST_F(FeedUpdatesTest, AScheduledCheckGoesOnThoughAnOfferStaysOpen) {
    startChecked();
    ask();
    world.time.advance(24h);
    EXPECT_EQ(feed.requests.size(), 2U);
}

TEST_F(FeedUpdatesTest, AFeedOfThisMachineIsReadInPlaceOfTheConfiguredOne) {
    testFeed = "http://localhost/test.xml";
    start();
    world.time.advance(2s);
    EXPECT_THAT(feed.requests, ElementsAre("http://localhost/test.xml"));
}

TEST_F(FeedUpdatesTest, WithoutAnyFeedNothingIsReadAndWhoAsksIsTold) {
    if (!deployment::feedURL.empty()) GTEST_SKIP() << "this build has one";
    testFeed.reset();
    start();
    world.time.advance(72h);
    ask();
    EXPECT_THAT(feed.requests, IsEmpty());
    EXPECT_EQ(alert(), "Ovin does not look for updates here");
    EXPECT_EQ(messageCount(), 1U);
    EXPECT_THAT(world.defaults.values, IsEmpty());
}

TEST_F(FeedUpdatesTest, WithoutItsControllerNothingIsShown) {
    start();
    world.time.advance(0s);
    controller.reset();
    world.time.advance(48h);
    expectSilence();
    EXPECT_EQ(feed.requests.size(), 1U);
}

}  // namespace
}  // namespace ovin
