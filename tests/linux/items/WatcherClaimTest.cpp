#include "platform/linux/items/WatcherClaim.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "platform/memory/SimulatedTime.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;

/// A bus with one name. As on a real one, news of the name arrives later, and nobody is told of the queue.
class WatcherClaimTest : public testing::Test {
protected:
    SimulatedTime time;
    std::string owner;
    std::string waiting;
    std::set<std::string> connected{"bar", "other"};
    int looks = 0;
    bool busAnswers = true;
    WatcherClaim claim{time,
                       "ovin",
                       {[this] { return busAnswers && owner.empty() && (setOwner("ovin"), true); },
                        [this] { setOwner(std::exchange(waiting, "")); },
                        [this] {
                            ++looks;
                            time.async([this] { claim.told(!waiting.empty()); });
                        },
                        [this](const std::string& program) { return connected.contains(program); }}};

    void setOwner(const std::string& name) {
        owner = name;
        time.async([this, name] { claim.ownerChanged(name); });
    }

    void begin(WatcherClaim::Begin when = WatcherClaim::Begin::afterGrace) {
        claim.begin(owner, when);
        time.advance(0s);
    }

    void beginAsOwner() {
        begin(WatcherClaim::Begin::atOnce);
        time.runUntilIdle();
        ASSERT_EQ(owner, "ovin");
        looks = 0;
    }

    /// The program disconnects, and the bus tells of its names, in either order.
    void end(const std::string& program, bool namesFirst = true) {
        connected.erase(program);
        if (namesFirst && owner == program) setOwner("");
        time.async([this, program] { claim.isNoRival(program); });
        if (!namesFirst && owner == program) setOwner("");
    }
};

TEST_F(WatcherClaimTest, AFreeNameIsAskedForAgainWhereTheBusDidNotAnswer) {
    busAnswers = false;
    begin(WatcherClaim::Begin::atOnce);
    EXPECT_EQ(owner, "");
    busAnswers = true;
    time.advance(WatcherClaim::grace);
    EXPECT_EQ(owner, "ovin");
}

TEST_F(WatcherClaimTest, AFreeNameIsTakenAfterTheGrace) {
    begin();
    time.advance(WatcherClaim::grace - 1ms);
    EXPECT_EQ(owner, "");
    EXPECT_FALSE(claim.isOwner());
    time.advance(1ms);
    EXPECT_EQ(owner, "ovin");
    EXPECT_TRUE(claim.isOwner());
}

TEST_F(WatcherClaimTest, AProgramThatLooksOnceTakesItAtOnce) {
    begin(WatcherClaim::Begin::atOnce);
    EXPECT_EQ(owner, "ovin");
}

TEST_F(WatcherClaimTest, ABarTakesItAtOnceAndNeverLooksWhoWaits) {
    waiting = "other";
    begin(WatcherClaim::Begin::asBar);
    claim.barMayCome("bar");
    time.runUntilIdle();
    EXPECT_EQ(owner, "ovin");
    EXPECT_EQ(looks, 0);
}

TEST_F(WatcherClaimTest, ABarThatStartsInTheGraceKeepsTheName) {
    begin();
    time.advance(2s);
    setOwner("bar");
    time.runUntilIdle();
    EXPECT_EQ(owner, "bar");
}

TEST_F(WatcherClaimTest, AnOwnersNameIsLeftAlone) {
    owner = "bar";
    begin(WatcherClaim::Begin::atOnce);
    time.runUntilIdle();
    EXPECT_EQ(owner, "bar");
}

TEST_F(WatcherClaimTest, ItComesBackAfterTheBarThatReplacedIt) {
    beginAsOwner();
    setOwner("bar");
    time.advance(1min);
    EXPECT_FALSE(claim.isOwner());
    end("bar");
    time.advance(WatcherClaim::grace - 1ms);
    EXPECT_EQ(owner, "");
    time.advance(1ms);
    EXPECT_EQ(owner, "ovin");
}

TEST_F(WatcherClaimTest, ABarThatRestartsWithinTheGraceHasItsNameBack) {
    owner = "bar";
    begin();
    end("bar");
    time.advance(WatcherClaim::grace - 1ms);
    setOwner("other");
    time.runUntilIdle();
    EXPECT_EQ(owner, "other");
}

TEST_F(WatcherClaimTest, AProgramThatGaveTheNameUpAndStillRunsMayHaveItBackForAMinute) {
    owner = "bar";
    begin();
    for (int i = 0; i < 2; ++i) {
        setOwner("");
        time.advance(WatcherClaim::longestGrace - 1ms);
        EXPECT_EQ(owner, "");
        setOwner("bar");
        time.advance(1s);
    }
    setOwner("");
    time.advance(WatcherClaim::longestGrace);
    EXPECT_EQ(owner, "ovin");
}

TEST_F(WatcherClaimTest, OnceThatProgramHasEndedItIsAwaitedNoLonger) {
    owner = "bar";
    begin();
    setOwner("");
    time.advance(10s);
    end("bar");
    time.advance(WatcherClaim::grace);
    EXPECT_EQ(owner, "ovin");
}

TEST_F(WatcherClaimTest, ItFindsTheNameFreeWhenItComesBackLater) {
    owner = "bar";
    begin();
    setOwner("");
    time.advance(1h);
    ASSERT_EQ(owner, "ovin");
    claim.rivalIsComing();
    EXPECT_EQ(owner, "");
    setOwner("bar");
    time.runUntilIdle();
    EXPECT_EQ(owner, "bar");
}

TEST_F(WatcherClaimTest, TheEndOfTheOwnerMayBeToldBeforeOrAfterTheEndOfItsName) {
    for (const bool namesFirst : {true, false}) {
        owner = "bar";
        connected.insert("bar");
        claim.ownerChanged("bar");
        end("bar", namesFirst);
        time.advance(WatcherClaim::grace);
        EXPECT_EQ(owner, "ovin") << namesFirst;
    }
}

TEST_F(WatcherClaimTest, ItGivesTheNameToABarThatWaitsForIt) {
    beginAsOwner();
    claim.barMayCome("bar");
    time.advance(1s);
    waiting = "bar";  // it has loaded what it shows only now
    time.runUntilIdle();
    EXPECT_EQ(owner, "bar");
    EXPECT_FALSE(claim.isOwner());
}

TEST_F(WatcherClaimTest, ABarThatWaitedBeforeTheNameWasTakenGetsIt) {
    waiting = "bar";
    begin();
    time.runUntilIdle();
    EXPECT_EQ(owner, "bar");
}

TEST_F(WatcherClaimTest, NothingIsLookedAtWhileNothingHappens) {
    beginAsOwner();
    time.advance(24h);
    EXPECT_EQ(looks, 0);
    claim.barMayCome("bar");
    time.advance(1min);
    EXPECT_EQ(looks, 4);
    time.advance(24h);
    EXPECT_EQ(looks, 4);
}

TEST_F(WatcherClaimTest, ProgramsThatConnectEverySecondAndEndAtOnceAreNotLookedAt) {
    beginAsOwner();
    for (int i = 0; i < 1000; ++i) {
        claim.barMayCome("script");
        time.advance(100ms);
        claim.isNoRival("script");
        time.advance(900ms);
    }
    EXPECT_EQ(looks, 0);
}

TEST_F(WatcherClaimTest, AmongSuchProgramsABarIsFoundWithinASecond) {
    beginAsOwner();
    for (int i = 0; i < 10; ++i) {
        claim.barMayCome("script");
        if (i == 5) {
            claim.barMayCome("bar");
            waiting = "bar";
        }
        time.advance(100ms);
        claim.isNoRival("script");
        time.advance(900ms);
        EXPECT_EQ(owner, i < 5 ? "ovin" : "bar");
    }
}

TEST_F(WatcherClaimTest, TheyDoNotPutOffTheLaterLooksForABar) {
    beginAsOwner();
    claim.barMayCome("bar");
    for (int i = 0; i < 60; ++i) {
        time.advance(900ms);
        claim.barMayCome("script");
        time.advance(100ms);
        claim.isNoRival("script");
    }
    EXPECT_EQ(looks, 4);
}

TEST_F(WatcherClaimTest, ABusyBusDoesNotPutTheLookOff) {
    beginAsOwner();
    waiting = "bar";
    for (int i = 0; i < 110; ++i) {
        claim.barMayCome("bar" + std::to_string(i));
        time.advance(10ms);
    }
    EXPECT_EQ(owner, "bar");
}

TEST_F(WatcherClaimTest, WhileAnotherProgramIsTheWatcherNobodyIsLookedFor) {
    owner = "bar";
    begin();
    claim.barMayCome("bar");
    time.runUntilIdle();
    EXPECT_EQ(looks, 0);
}

TEST_F(WatcherClaimTest, ARivalThatAsksOnceFindsTheNameFree) {
    beginAsOwner();
    claim.rivalIsComing();
    EXPECT_EQ(owner, "");
    time.advance(1s);
    setOwner("other");
    time.runUntilIdle();
    EXPECT_EQ(owner, "other");
}

TEST_F(WatcherClaimTest, ItComesBackWhenTheRivalDoesNotAsk) {
    beginAsOwner();
    claim.rivalIsComing();
    time.advance(WatcherClaim::grace - 1ms);
    claim.rivalIsComing();
    time.advance(WatcherClaim::grace - 1ms);
    EXPECT_EQ(owner, "");
    time.advance(1ms);
    EXPECT_EQ(owner, "ovin");
}

TEST_F(WatcherClaimTest, ARivalThatTakesLongToStartFindsTheNameFree) {
    beginAsOwner();
    claim.rivalIsComing("bar");
    time.advance(20s);
    EXPECT_EQ(owner, "");
    setOwner("bar");
    time.advance(1s);
    claim.isNoRival("bar");
    time.runUntilIdle();
    EXPECT_EQ(owner, "bar");
}

TEST_F(WatcherClaimTest, SoDoesOneThatWasStartingBefore) {
    begin();
    claim.rivalIsComing("bar");
    time.advance(20s);
    EXPECT_EQ(owner, "");
    end("bar");
    time.runUntilIdle();
    EXPECT_EQ(owner, "ovin");
}

TEST_F(WatcherClaimTest, ARivalThatHasStartedWithoutAskingIsAwaitedNoLonger) {
    beginAsOwner();
    claim.rivalIsComing("bar");
    time.advance(20s);
    claim.isNoRival("bar");
    time.advance(WatcherClaim::grace - 1ms);
    EXPECT_EQ(owner, "");
    time.advance(1ms);
    EXPECT_EQ(owner, "ovin");
}

TEST_F(WatcherClaimTest, ABarKeepsTheNameFromARivalThatAsksOnce) {
    begin(WatcherClaim::Begin::asBar);
    claim.rivalIsComing("other");
    time.runUntilIdle();
    EXPECT_EQ(owner, "ovin");
}

}  // namespace
}  // namespace ovin
