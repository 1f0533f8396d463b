#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "platform/Deployment.h"
#include "platform/memory/MemoryUpdates.h"
#include "platform/memory/MemoryWorld.h"
#include "tests/support/ViewSearch.h"
#include "updates/FeedUpdates.h"
#include "updates/UpdatePages.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

const std::string feedURL(deployment::feedURL);
const std::string packageURL = "https://ovin.example/ovin-2.package";
const std::string content = "the new program";
const std::string signature = std::string(86, 's') + "==";
constexpr DownloadFailure everyFailure[] = {
    DownloadFailure::unreachable, DownloadFailure::untrusted, DownloadFailure::insecure, DownloadFailure::refused,
    DownloadFailure::tooLong,     DownloadFailure::tooShort,  DownloadFailure::noRoom,   DownloadFailure::unwritable};

/// An Ovin 1.0 whose feed offers 2.0.
class UpdateCheckerTest : public testing::Test {
protected:
    UpdateCheckerTest() {
        services.downloads.answers = {{feedURL, "feed"}, {packageURL, content}};
        services.reader.feeds["feed"] = {item()};
        services.packages.genuine = {{content, signature}};
    }
    ~UpdateCheckerTest() override {
        controller.reset();
        EXPECT_EQ(services.downloads.transferCount, 0);
        EXPECT_EQ(MemoryFile::count(), 0);
    }

    MemoryWorld world;
    MemoryUpdateServices services{world.time};
    FeedUpdates updates{world.platform(), services.services()};
    std::unique_ptr<UpdateFramework::Controller> controller;
    std::optional<std::string> testFeed;
    bool isGentle = true;
    int willShowCount = 0;

    static FeedItem item() {
        FeedItem item;
        item.version = "2";
        item.shortVersion = "2.0";
        item.operatingSystem = "linux";
        item.url = packageURL;
        item.length = content.size();
        item.edSignature = signature;
        item.notes = "<p>Faster.</p>";
        return item;
    }

    void start() {
        controller = updates.start({[this] { return testFeed; }, [this] { return isGentle; }, [this] { ++willShowCount; }});
    }
    /// The user asks, and the feed comes in.
    void ask() {
        controller->checkForUpdates();
        world.time.advance(2s);
    }
    void click(int tag) { world.windows.click("Software Update", tag); }
    /// Started a while ago, and has looked.
    void startChecked() {
        world.defaults.values["OvinLastUpdateCheck"] = std::int64_t{services.wallClock.date().count()};
        start();
    }
    void install() {
        startChecked();
        ask();
        click(UpdatePages::install);
        world.time.advance(2s);
    }

    [[nodiscard]] std::size_t feedReads() const {
        std::size_t count = 0;
        for (const auto& source : services.downloads.requests) count += source.url == packageURL ? 0U : 1U;
        return count;
    }
    [[nodiscard]] std::vector<std::string> texts() const {
        const auto windows = world.windows.informationWindows();
        return windows.empty() ? std::vector<std::string>() : labelTexts(windows.front().content);
    }
    [[nodiscard]] std::vector<std::string> buttons() const {
        std::vector<std::string> titles;
        for (const auto& window : world.windows.informationWindows()) {
            for (const PushButton& button : viewsOf<PushButton>(window.content)) titles.push_back(button.title);
        }
        return titles;
    }
    [[nodiscard]] std::string alert() const {
        return world.alerts.shown.size() == 1 ? world.alerts.shown.front().message : "not one alert";
    }
    void expectSilence() const {
        EXPECT_THAT(world.windows.informationWindows(), IsEmpty());
        EXPECT_FALSE(world.windows.floatingPanel().has_value());
        EXPECT_THAT(world.alerts.shown, IsEmpty());
    }
};

TEST_F(UpdateCheckerTest, NothingIsCheckedWithinTheStart) {
    start();
    EXPECT_EQ(feedReads(), 0);
    world.time.advance(0s);
    EXPECT_EQ(feedReads(), 1);
}

TEST_F(UpdateCheckerTest, ItChecksOnceADayHoweverOftenItStarts) {
    services.reader.feeds["feed"] = {};
    for (int hour = 0; hour < 71; ++hour) {
        start();
        world.time.advance(1h);
    }
    EXPECT_EQ(feedReads(), 3);
    expectSilence();
}

TEST_F(UpdateCheckerTest, ItChecksOnceADayWhileItRuns) {
    services.reader.feeds["feed"] = {};
    start();
    world.time.advance(10 * 24h - 1s);
    EXPECT_EQ(feedReads(), 10);
}

TEST_F(UpdateCheckerTest, NothingWakesUpBetweenTwoChecks) {
    services.reader.feeds["feed"] = {};
    start();
    world.time.advance(10 * 24h - 1s);
    EXPECT_EQ(feedReads(), 10);
    EXPECT_EQ(services.wallClock.alarmCount, 10);
    EXPECT_EQ(services.wallClock.pendingCount(), 1);
}

TEST_F(UpdateCheckerTest, NothingWakesUpWhileTheUserThinks) {
    start();
    world.time.advance(2s);
    ASSERT_TRUE(world.windows.floatingPanel().has_value());
    EXPECT_EQ(services.wallClock.pendingCount(), 0);
    world.windows.clickFloatingPanel(UpdatePages::show);
    EXPECT_EQ(services.wallClock.pendingCount(), 0);
    services.wallClock.changeDate(100h);
    EXPECT_EQ(services.wallClock.pendingCount(), 0);
    world.time.advance(30h);
    click(UpdatePages::later);
    EXPECT_EQ(services.wallClock.pendingCount(), 1);
    world.time.advance(2s);
    EXPECT_EQ(feedReads(), 2) << "a check was due meanwhile";
}

TEST_F(UpdateCheckerTest, AfterASleepTheCheckThatWasDueIsMadeAtOnce) {
    services.reader.feeds["feed"] = {};
    start();
    world.time.advance(1h);
    services.wallClock.sleep(22h);
    world.time.advance(1s);
    EXPECT_EQ(feedReads(), 1) << "it is not due yet";
    services.wallClock.sleep(48h);
    EXPECT_EQ(feedReads(), 1);
    world.time.advance(0s);
    EXPECT_EQ(feedReads(), 2);
    world.time.advance(23h);
    EXPECT_EQ(feedReads(), 2) << "one check for all the days";
}

TEST_F(UpdateCheckerTest, ADateThatIsSetRightAfterTheStartLetsAnOverdueCheckBegin) {
    services.reader.feeds["feed"] = {};
    startChecked();
    world.time.advance(1h);
    EXPECT_EQ(feedReads(), 0);
    services.wallClock.changeDate(30h);
    world.time.advance(0s);
    EXPECT_EQ(feedReads(), 1);
    services.wallClock.changeDate(30h);
    world.time.advance(23h);
    EXPECT_EQ(feedReads(), 1);
}

TEST_F(UpdateCheckerTest, TheUsersCheckCountsToo) {
    services.reader.feeds["feed"] = {};
    startChecked();
    world.time.advance(20h);
    ask();
    world.time.advance(23h);
    EXPECT_EQ(feedReads(), 1);
    world.time.advance(2h);
    EXPECT_EQ(feedReads(), 2);
}

TEST_F(UpdateCheckerTest, OfflineItTriesAgainMoreAndMoreRarelyAndSilently) {
    services.downloads.answers.erase(feedURL);
    start();
    world.time.advance(24h);
    EXPECT_EQ(feedReads(), 7);  // after 0, 1/4, 3/4, 1 3/4, 3 3/4, 7 3/4 and 15 3/4 hours
    expectSilence();
    services.downloads.answers[feedURL] = "feed";
    world.time.advance(24h);
    EXPECT_TRUE(world.windows.floatingPanel().has_value());
}

TEST_F(UpdateCheckerTest, AnUnaskedCheckIsSilentWhateverIsWrong) {
    for (const auto failure : everyFailure) {
        world.defaults.values.clear();
        services.downloads.answers[feedURL] = failure;
        start();
        world.time.advance(10s);
        expectSilence();
    }
    world.defaults.values.clear();
    services.downloads.answers[feedURL] = "no feed";
    start();
    world.time.advance(10s);
    expectSilence();
    EXPECT_EQ(feedReads(), 9);
}

TEST_F(UpdateCheckerTest, WhoAsksIsToldOfEveryFailureInOneMessage) {
    startChecked();
    std::vector<std::string> explanations;
    for (const auto failure : everyFailure) {
        services.downloads.answers[feedURL] = failure;
        world.alerts.shown.clear();
        ask();
        EXPECT_EQ(alert(), "Ovin could not look for updates");
        EXPECT_THAT(explanations, testing::Not(Contains(world.alerts.shown.front().informative)));
        explanations.push_back(world.alerts.shown.front().informative);
        EXPECT_THAT(world.windows.informationWindows(), IsEmpty());
    }
}

TEST_F(UpdateCheckerTest, WhoAsksIsToldThatTheFeedMakesNoSense) {
    services.downloads.answers[feedURL] = "no feed";
    startChecked();
    ask();
    EXPECT_EQ(alert(), "Ovin could not look for updates");
    EXPECT_THAT(world.alerts.shown.front().informative, HasSubstr("cannot be understood"));
}

TEST_F(UpdateCheckerTest, AFeedOfMoreThanFourMebibytesIsRefused) {
    services.downloads.answers[feedURL] = std::string(4 * 1024 * 1024 + 1, ' ');
    startChecked();
    ask();
    EXPECT_THAT(world.alerts.shown.front().informative, HasSubstr("more than it should"));
}

TEST_F(UpdateCheckerTest, WhoAsksIsToldThatThereIsNothingNewer) {
    services.reader.feeds["feed"] = {};
    startChecked();
    ask();
    EXPECT_EQ(alert(), "You’re up to date");
    EXPECT_THAT(world.alerts.shown.front().informative, HasSubstr("1.0"));
    EXPECT_THAT(world.windows.informationWindows(), IsEmpty());
}

TEST_F(UpdateCheckerTest, WhoAsksSeesThatItLooksAndCanCancel) {
    startChecked();
    controller->checkForUpdates();
    EXPECT_THAT(texts(), Contains("Looking for updates…"));
    click(UpdatePages::cancel);
    world.time.advance(10s);
    expectSilence();
    ask();
    EXPECT_THAT(buttons(), Contains("Install"));
}

TEST_F(UpdateCheckerTest, AnUpdateIsShownWithItsNotesAndAsksFirst) {
    startChecked();
    ask();
    EXPECT_EQ(texts(), (std::vector<std::string>{
                           "A new version of Ovin is available",
                           "Ovin 2.0 is available; you have 1.0. Would you like to download and install it?", "Faster."}));
    EXPECT_THAT(buttons(), ElementsAre("Skip This Version", "Later", "Install"));
    EXPECT_EQ(willShowCount, 1);
    world.time.advance(100h);
    EXPECT_THAT(services.downloads.requests, SizeIs(1)) << "nothing is downloaded unasked, nor asked again";
}

TEST_F(UpdateCheckerTest, NotesTakeTheRoomThatTheyNeedAndScrollWhenThereAreMany) {
    startChecked();
    double shortOnes = 0;
    for (const int lines : {1, 3, 100, 1000}) {
        std::string notes = "<h2>New</h2><ul>";
        for (int i = 0; i < lines; ++i) notes += "<li>Line</li>";
        services.reader.feeds["feed"].front().notes = notes;
        ask();
        const auto scrolls = viewsOf<ScrollView>(world.windows.informationWindows().front().content);
        ASSERT_THAT(scrolls, SizeIs(1));
        const double whole = world.windows.fittingSize(*scrolls.front().content).height;
        EXPECT_EQ(scrolls.front().size.height, std::min(whole, 220.0));
        if (lines == 1) shortOnes = scrolls.front().size.height;
        click(UpdatePages::later);
    }
    EXPECT_LT(shortOnes, 100);
    services.reader.feeds["feed"].front().notes = "<p> </p>";
    ask();
    EXPECT_THAT(viewsOf<ScrollView>(world.windows.informationWindows().front().content), IsEmpty());
}

TEST_F(UpdateCheckerTest, AnUpdateThatNobodyAskedForTakesTheFocusFromNobody) {
    start();
    world.time.advance(2s);
    ASSERT_TRUE(world.windows.floatingPanel().has_value());
    EXPECT_THAT(labelTexts(world.windows.floatingPanel()->content), ElementsAre("Ovin 2.0 is available"));
    EXPECT_THAT(world.windows.informationWindows(), IsEmpty());
    EXPECT_EQ(willShowCount, 0);
    EXPECT_EQ(world.application.activationCount, 0);
}

TEST_F(UpdateCheckerTest, TheReminderIsInTheCornerOfTheScreen) {
    start();
    world.time.advance(2s);
    const auto panel = world.windows.floatingPanel().value();
    const Rect room = world.screens.mainScreen->visibleFrame;
    EXPECT_EQ(panel.origin, (Point{room.size.width - panel.size.width - 16, room.origin.y + 16}));
}

TEST_F(UpdateCheckerTest, TheReminderLeadsToTheUpdate) {
    start();
    world.time.advance(2s);
    world.windows.clickFloatingPanel(UpdatePages::show);
    EXPECT_FALSE(world.windows.floatingPanel().has_value());
    EXPECT_THAT(buttons(), Contains("Install"));
    EXPECT_EQ(willShowCount, 1);
}

TEST_F(UpdateCheckerTest, TheReminderCanBePutAwayForADay) {
    for (const bool isClosed : {false, true}) {
        world.defaults.values.clear();
        start();
        world.time.advance(2s);
        if (isClosed) {
            world.windows.closeFloatingPanel();
        } else {
            world.windows.clickFloatingPanel(UpdatePages::later);
        }
        expectSilence();
        world.time.advance(23h);
        expectSilence();
        world.time.advance(2h);
        EXPECT_TRUE(world.windows.floatingPanel().has_value());
        controller.reset();
    }
}

TEST_F(UpdateCheckerTest, WhoAsksWhileThereIsAReminderSeesTheUpdate) {
    start();
    world.time.advance(2s);
    controller->checkForUpdates();
    EXPECT_FALSE(world.windows.floatingPanel().has_value());
    EXPECT_THAT(buttons(), Contains("Install"));
    EXPECT_EQ(feedReads(), 1);
}

TEST_F(UpdateCheckerTest, WhoAsksDuringAnUnaskedCheckIsToldItsOutcome) {
    services.reader.feeds["feed"] = {};
    start();
    world.time.advance(0s);
    controller->checkForUpdates();
    EXPECT_THAT(texts(), Contains("Looking for updates…"));
    world.time.advance(2s);
    EXPECT_EQ(alert(), "You’re up to date");
    EXPECT_EQ(feedReads(), 1);
}

TEST_F(UpdateCheckerTest, AnApplicationWithoutRemindersGetsTheWindowAtOnce) {
    isGentle = false;
    start();
    world.time.advance(2s);
    EXPECT_THAT(buttons(), Contains("Install"));
    EXPECT_EQ(willShowCount, 1);
}

TEST_F(UpdateCheckerTest, AskingAgainBringsTheSameWindowForward) {
    startChecked();
    ask();
    const int before = world.windows.informationWindows().front().showCount;
    controller->checkForUpdates();
    EXPECT_THAT(world.windows.informationWindows(), SizeIs(1));
    EXPECT_EQ(world.windows.informationWindows().front().showCount, before + 1);
    EXPECT_EQ(feedReads(), 1);
}

TEST_F(UpdateCheckerTest, ASkippedVersionIsNotOfferedUnaskedAgain) {
    startChecked();
    ask();
    click(UpdatePages::skip);
    expectSilence();
    world.time.advance(25h);
    EXPECT_EQ(feedReads(), 2);
    expectSilence();
    ask();
    EXPECT_THAT(buttons(), Contains("Install")) << "who asks is told";
}

TEST_F(UpdateCheckerTest, ACriticalVersionCannotBeSkipped) {
    services.reader.feeds["feed"].front().isCritical = true;
    startChecked();
    ask();
    EXPECT_THAT(buttons(), ElementsAre("Later", "Install"));
}

TEST_F(UpdateCheckerTest, TheNotesOnTheWebOpenInTheBrowser) {
    services.reader.feeds["feed"].front().notesLink = "https://ovin.example/notes";
    startChecked();
    ask();
    click(UpdatePages::notes);
    EXPECT_THAT(world.workspace.openedURLs, ElementsAre("https://ovin.example/notes"));
    EXPECT_THAT(buttons(), Contains("Install"));
}

TEST_F(UpdateCheckerTest, NotesThatAreNoSafeWebPageAreNotLinked) {
    services.reader.feeds["feed"].front().notesLink = "file:///etc/passwd";
    startChecked();
    ask();
    EXPECT_THAT(viewsOf<TextButton>(world.windows.informationWindows().front().content), IsEmpty());
}

TEST_F(UpdateCheckerTest, AnUpdateIsDownloadedVerifiedInstalledAndStarted) {
    startChecked();
    ask();
    click(UpdatePages::install);
    EXPECT_THAT(texts(), Contains("Downloading Ovin 2.0…"));
    world.time.advance(2s);
    EXPECT_THAT(services.packages.actions, ElementsAre("verify", "install"));
    EXPECT_THAT(services.packages.installed, ElementsAre(std::pair(content, std::string("ovin-2.package"))));
    EXPECT_THAT(texts(), Contains("Ovin 2.0 is installed"));
    EXPECT_EQ(world.application.terminationCount, 0) << "nothing ends unasked";
    click(UpdatePages::restart);
    EXPECT_EQ(services.packages.restartCount, 1);
    EXPECT_EQ(world.application.terminationCount, 1);
    EXPECT_THAT(world.alerts.shown, IsEmpty());
}

TEST_F(UpdateCheckerTest, TheProgressOfADownloadIsShown) {
    services.reader.feeds["feed"].front().length = 4'000'000;
    services.downloads.answers[packageURL] = std::string(4'000'000, 'x');
    startChecked();
    ask();
    click(UpdatePages::install);
    EXPECT_THAT(texts(), Contains("0.0 of 4.0 MB"));
    world.time.advance(600ms);
    EXPECT_THAT(texts(), Contains("2.0 of 4.0 MB"));
}

TEST_F(UpdateCheckerTest, TheProgressOfALargeDownloadIsNotShownMoreOftenThanItIsSeen) {
    const auto page = [this](std::uint64_t received) {
        return UpdatePages::downloading("2.0", received, 1'000'000'000, world.resources);
    };
    std::size_t pages = 1;
    for (std::uint64_t received = 0; received < 1'000'000'000; received += 100'000) {
        pages += page(received) == page(received + 100'000) ? 0U : 1U;
    }
    EXPECT_EQ(pages, 101U);
    EXPECT_THAT(labelTexts(page(1'000'000'000)), Contains("1000.0 of 1000.0 MB"));
    EXPECT_THAT(labelTexts(page(509'999'999)), Contains("500.0 of 1000.0 MB"));
    EXPECT_THAT(labelTexts(UpdatePages::downloading("2.0", 0, 0, world.resources)), Contains("0.0 of 0.0 MB"));
}

TEST_F(UpdateCheckerTest, ARestartCanWait) {
    install();
    click(UpdatePages::later);
    EXPECT_EQ(world.application.terminationCount, 0);
    expectSilence();
}

TEST_F(UpdateCheckerTest, ARestartThatCannotBeArrangedEndsNothing) {
    services.packages.canRestart = false;
    install();
    click(UpdatePages::restart);
    EXPECT_EQ(world.application.terminationCount, 0);
    EXPECT_EQ(alert(), "Ovin could not be started again");
}

TEST_F(UpdateCheckerTest, APackageForTheInstallerIsAnnouncedWithItsPlace) {
    services.packages.installation = {UpdatePackages::Installation::Outcome::handedOver, "/x/ovin.deb"};
    install();
    EXPECT_EQ(alert(), "Ovin 2.0 is ready to be installed");
    EXPECT_THAT(world.alerts.shown.front().informative, HasSubstr("/x/ovin.deb"));
    EXPECT_THAT(world.windows.informationWindows(), IsEmpty());
}

TEST_F(UpdateCheckerTest, AWrongSignatureEndsItBeforeAnythingTouchesTheFile) {
    services.packages.genuine.clear();
    install();
    EXPECT_THAT(services.packages.actions, ElementsAre("verify"));
    EXPECT_EQ(alert(), "The update is not genuine");
    EXPECT_EQ(MemoryFile::count(), 0);
}

TEST_F(UpdateCheckerTest, AFailedInstallationIsExplained) {
    services.packages.installation = {UpdatePackages::Installation::Outcome::failed, "Because."};
    install();
    EXPECT_EQ(alert(), "The update could not be installed");
    EXPECT_THAT(world.alerts.shown.front().informative, HasSubstr("Because."));
}

TEST_F(UpdateCheckerTest, AFailedDownloadIsExplainedAlsoWhenTheCheckWasNotAskedFor) {
    services.downloads.answers[packageURL] = content + "!";
    start();
    world.time.advance(2s);
    world.windows.clickFloatingPanel(UpdatePages::show);
    click(UpdatePages::install);
    world.time.advance(2s);
    EXPECT_EQ(alert(), "The update could not be downloaded");
    EXPECT_THAT(services.packages.actions, IsEmpty());
    EXPECT_THAT(world.windows.informationWindows(), IsEmpty());
}

TEST_F(UpdateCheckerTest, ADownloadCanBeCancelled) {
    startChecked();
    ask();
    click(UpdatePages::install);
    world.time.advance(500ms);
    click(UpdatePages::cancel);
    EXPECT_EQ(services.downloads.transferCount, 0);
    world.time.advance(10s);
    EXPECT_THAT(services.packages.actions, IsEmpty());
    expectSilence();
    ask();
    EXPECT_THAT(buttons(), Contains("Install")) << "it can be asked for again";
}

TEST_F(UpdateCheckerTest, AWindowThatIsClosedByOtherMeansIsLaterOrCancel) {
    for (const std::chrono::milliseconds moment : {500ms, 1500ms, 2500ms}) {
        startChecked();
        controller->checkForUpdates();
        world.time.happen(2s, [this] { click(UpdatePages::install); });
        world.time.advance(moment);
        ASSERT_EQ(world.windows.informationWindows().size(), 1U);
        world.windows.closeInformationWindow("Software Update");
        EXPECT_EQ(services.downloads.transferCount, 0);
        EXPECT_THAT(services.packages.actions, IsEmpty());
        EXPECT_EQ(services.wallClock.pendingCount(), 1) << "there are no more checks";
        world.time.advance(5s);
        expectSilence();
        ask();
        EXPECT_THAT(buttons(), Contains("Install")) << "it can be asked for again";
        controller.reset();
    }
}

TEST_F(UpdateCheckerTest, WhatIsInstalledMeanwhileIsShownAlsoWhenTheWindowWasClosed) {
    install();
    world.windows.closeInformationWindow("Software Update");
    expectSilence();
    EXPECT_EQ(services.wallClock.pendingCount(), 1);

    ask();
    click(UpdatePages::install);
    // The file comes in, and the task that installs it ends, at the same time.
    while (services.downloads.transferCount > 0) world.time.runNext();
    EXPECT_THAT(texts(), Contains("Installing Ovin 2.0…"));
    world.windows.closeInformationWindow("Software Update");
    expectSilence();
    world.time.advance(1s);
    EXPECT_THAT(texts(), Contains("Ovin 2.0 is installed"));
}

TEST_F(UpdateCheckerTest, ClicksOnWhatIsNoLongerShownDoNothing) {
    install();
    for (const int tag : std::vector<int>{UpdatePages::install, UpdatePages::cancel, UpdatePages::skip, UpdatePages::notes,
                                          UpdatePages::show, 99}) {
        click(tag);
    }
    EXPECT_THAT(texts(), Contains("Ovin 2.0 is installed"));
    EXPECT_THAT(services.downloads.requests, SizeIs(2));
}

TEST_F(UpdateCheckerTest, ATestFeedReplacesTheConfiguredOneAndLeadsToThisMachineOnly) {
    testFeed = "http://127.0.0.1:8000/appcast.xml";
    services.downloads.answers[*testFeed] = "feed";
    startChecked();
    ask();
    click(UpdatePages::install);
    world.time.advance(2s);
    EXPECT_THAT(services.downloads.requests,
                ElementsAre(Downloads::Source{*testFeed, true}, Downloads::Source{packageURL, true}));
}

TEST_F(UpdateCheckerTest, TheConfiguredFeedMayNotLeadToThisMachine) {
    services.reader.feeds["feed"].front().url = "http://127.0.0.1/a.package";
    startChecked();
    ask();
    EXPECT_THAT(services.downloads.requests, ElementsAre(Downloads::Source{feedURL, false}));
    EXPECT_EQ(alert(), "You’re up to date");
}

TEST_F(UpdateCheckerTest, AProgramThatEndsLeavesNothingBehindAtAnyMoment) {
    for (const std::chrono::milliseconds moment : {0ms, 500ms, 1000ms, 1500ms, 2500ms, 3500ms, 5000ms}) {
        world.defaults.values.clear();
        start();
        controller->checkForUpdates();
        world.time.happen(2s, [this] { click(UpdatePages::install); });
        world.time.advance(moment);
        controller.reset();
        EXPECT_EQ(services.downloads.transferCount, 0);
        expectSilence();
        world.time.runUntilIdle();
        EXPECT_EQ(MemoryFile::count(), 0);
        expectSilence();
    }
}

}  // namespace
}  // namespace ovin
