#include "organize/DisplayWidener.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>

#include "platform/memory/MemoryWorld.h"
#include "tests/support/LoudLog.h"

namespace ovin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Value = UserDefaults::Value;

constexpr const char* modeKey = "OvinOriginalDisplayModeID";
constexpr const char* displayKey = "OvinOriginalDisplayID";
constexpr const char* serverKey = "OvinOriginalDisplayServer";

class DisplayWidenerTest : public testing::Test {
protected:
    static constexpr DisplayMode usual{11, 1512, 982, 3024, true};
    static constexpr DisplayMode wide{12, 1800, 1169, 3600, true};
    static constexpr DisplayMode widest{13, 2048, 1330, 4096, true};

    MemoryWorld world;
    MemoryDisplays& displays = world.displays;
    DisplayWidener widener{world.platform()};

    void SetUp() override { displays.displays = {{7, {{0, 0}, {1512, 982}}, {usual, wide, widest}, usual, false}}; }

    [[nodiscard]] MemoryDisplays::Display& display() { return displays.displays.at(0); }
    [[nodiscard]] std::int32_t modeInForce() { return display().current ? display().current->id : 0; }

    [[nodiscard]] bool hasRecord() const {
        return world.defaults.values.contains(modeKey) || world.defaults.values.contains(displayKey);
    }
    void expectRecord() const {
        EXPECT_EQ(world.defaults.object(modeKey), Value(std::int64_t{11}));
        EXPECT_EQ(world.defaults.object(displayKey), Value(std::int64_t{7}));
    }
    void record(const Value& mode, const Value& ofDisplay) {
        world.defaults.values.insert_or_assign(modeKey, mode);
        world.defaults.values.insert_or_assign(displayKey, ofDisplay);
    }

    /// Lets the store refuse the changes from the one with this number on, counted from 1.
    void refuseChangesFrom(int first) {
        world.defaults.onEffect = [this, first, count = 0](EffectMoment moment) mutable {
            if (moment == EffectMoment::before) world.defaults.refusesChanges = ++count >= first;
        };
    }
    void acceptChanges() {
        world.defaults.onEffect = nullptr;
        world.defaults.refusesChanges = false;
    }
};

// Widening

TEST_F(DisplayWidenerTest, TheMainDisplaySwitchesToTheNarrowestModeThatIsWideEnough) {
    EXPECT_EQ(widener.widen(1700), WidenResult::widened);
    EXPECT_EQ(display().current, wide);
    EXPECT_TRUE(widener.isWidened());
    expectRecord();
    EXPECT_DOUBLE_EQ(widener.scale(), 1800.0 / 1512.0);
    EXPECT_THAT(world.log.lines(), ElementsAre("Ovin: widened display to 1800x1169 for arranging"));
}

TEST_F(DisplayWidenerTest, AModeThatDoesNotFitEverythingIsBetterThanNone) {
    EXPECT_EQ(widener.widen(5000), WidenResult::widened);
    EXPECT_EQ(display().current, widest);
}

TEST_F(DisplayWidenerTest, OnlyTheMainDisplayIsWidened) {
    displays.displays.push_back({8, {{1512, 0}, {1512, 982}}, {usual, wide}, usual, false});
    EXPECT_EQ(widener.widen(1700), WidenResult::widened);
    EXPECT_EQ(displays.displays.at(1).current, usual);
}

TEST_F(DisplayWidenerTest, TheModeIsOnRecordBeforeTheDisplayChanges) {
    bool hasLooked = false;
    displays.onEffect = [&](EffectMoment moment) {
        if (moment != EffectMoment::before) return;
        hasLooked = true;
        expectRecord();
        EXPECT_EQ(display().current, usual);
    };
    EXPECT_EQ(widener.widen(1700), WidenResult::widened);
    EXPECT_TRUE(hasLooked);
}

TEST_F(DisplayWidenerTest, NoModeIsEverOnRecordWithoutItsDisplay) {
    world.defaults.values.insert_or_assign(displayKey, std::int64_t{99});
    world.defaults.onEffect = [this](EffectMoment) {
        if (world.defaults.values.contains(modeKey)) expectRecord();
    };
    EXPECT_EQ(widener.widen(1700), WidenResult::widened);
    EXPECT_TRUE(widener.restore());
    displays.answer = MemoryDisplays::Answer::refuses;
    EXPECT_EQ(widener.widen(1700), WidenResult::failed);
}

TEST_F(DisplayWidenerTest, AMirroredDisplayIsLeftAlone) {
    display().isMirrored = true;
    EXPECT_EQ(widener.widen(1700), WidenResult::mirrored);
    EXPECT_EQ(displays.applyCount, 0);
    EXPECT_FALSE(hasRecord());
    EXPECT_THAT(world.log.lines(), IsEmpty());
}

TEST_F(DisplayWidenerTest, AMirroredDisplayIsToldBeforeItsModeIsRead) {
    display().isMirrored = true;
    display().current.reset();
    EXPECT_EQ(widener.widen(1700), WidenResult::mirrored);
}

TEST_F(DisplayWidenerTest, ADisplayWithoutACurrentModeCannotBeWidened) {
    display().current.reset();
    EXPECT_EQ(widener.widen(1700), WidenResult::failed);
    EXPECT_EQ(displays.applyCount, 0);
    EXPECT_FALSE(hasRecord());
}

TEST_F(DisplayWidenerTest, WithoutADisplayNothingCanBeWidened) {
    displays.displays.clear();
    EXPECT_EQ(widener.widen(1700), WidenResult::failed);
    EXPECT_FALSE(hasRecord());
}

TEST_F(DisplayWidenerTest, ADisplayWithoutAWiderModeHasNoSuitableOne) {
    display().current = widest;
    EXPECT_EQ(widener.widen(1700), WidenResult::noSuitableMode);
    display().modes.clear();
    EXPECT_EQ(widener.widen(1700), WidenResult::noSuitableMode);
    EXPECT_EQ(displays.applyCount, 0);
    EXPECT_FALSE(hasRecord());
    EXPECT_EQ(widener.scale(), 1.0);
    EXPECT_THAT(world.log.lines(), IsEmpty());
}

TEST_F(DisplayWidenerTest, WhenTheSystemRefusesNothingRemains) {
    displays.answer = MemoryDisplays::Answer::refuses;
    EXPECT_EQ(widener.widen(1700), WidenResult::failed);
    EXPECT_EQ(displays.applyCount, 1);
    EXPECT_FALSE(hasRecord());
    EXPECT_FALSE(widener.isWidened());
    EXPECT_EQ(widener.scale(), 1.0);
    EXPECT_THAT(world.log.lines(), IsEmpty());
}

TEST_F(DisplayWidenerTest, ARefusalThatTookEffectIsUndone) {
    displays.answer = MemoryDisplays::Answer::refuses;
    displays.onEffect = [this](EffectMoment moment) {
        if (moment != EffectMoment::after || displays.applyCount > 1) return;
        displays.answer = MemoryDisplays::Answer::switches;
        display().current = wide;
    };
    EXPECT_EQ(widener.widen(1700), WidenResult::failed);
    EXPECT_EQ(display().current, usual);
    EXPECT_FALSE(hasRecord());
    EXPECT_EQ(widener.scale(), 1.0);
}

TEST_F(DisplayWidenerTest, ARefusalThatTookEffectAndCannotBeUndoneStaysOnRecord) {
    displays.answer = MemoryDisplays::Answer::refuses;
    displays.onEffect = [this](EffectMoment moment) {
        if (moment == EffectMoment::after) display().current = wide;
    };
    EXPECT_EQ(widener.widen(1700), WidenResult::failed);
    expectRecord();
}

TEST_F(DisplayWidenerTest, ARecordIsNeverOverwritten) {
    ASSERT_EQ(widener.widen(1700), WidenResult::widened);
    EXPECT_EQ(widener.widen(2000), WidenResult::failed);
    EXPECT_EQ(display().current, wide);
    EXPECT_EQ(displays.applyCount, 1);
    expectRecord();
    EXPECT_DOUBLE_EQ(widener.scale(), 1800.0 / 1512.0);
}

TEST_F(DisplayWidenerTest, ARecordOfAnEarlierRunRefusesWideningWhateverItsType) {
    display().isMirrored = true;
    for (const Value& value : {Value(false), Value(std::int64_t{0}), Value(0.5), Value(std::string())}) {
        world.defaults.values.insert_or_assign(modeKey, value);
        EXPECT_TRUE(widener.isWidened());
        EXPECT_EQ(widener.widen(1700), WidenResult::failed);
        EXPECT_EQ(world.defaults.object(modeKey), value);
    }
    EXPECT_EQ(displays.applyCount, 0);
}

TEST_F(DisplayWidenerTest, ADisplayAloneIsNoRecord) {
    world.defaults.values.insert_or_assign(displayKey, std::int64_t{99});
    EXPECT_FALSE(widener.isWidened());
    EXPECT_TRUE(widener.restore());
    EXPECT_EQ(widener.widen(1700), WidenResult::widened);
    expectRecord();
}

TEST_F(DisplayWidenerTest, TheScaleOfADisplayWithoutWidthIsTheWidthOfTheNewMode) {
    display().current = DisplayMode{11, 0, 982, 0, true};
    EXPECT_EQ(widener.widen(1700), WidenResult::widened);
    EXPECT_EQ(widener.scale(), 1800.0);
}

TEST_F(DisplayWidenerTest, IdsAtTheEndsOfTheirRangesAreRecordedAndRestored) {
    display().id = std::numeric_limits<DisplayID>::max();
    display().modes.at(0).id = std::numeric_limits<std::int32_t>::min();
    display().current = display().modes.at(0);
    ASSERT_EQ(widener.widen(1700), WidenResult::widened);
    EXPECT_EQ(world.defaults.object(displayKey), Value(std::int64_t{4294967295}));
    EXPECT_EQ(world.defaults.object(modeKey), Value(std::int64_t{-2147483648}));
    EXPECT_TRUE(widener.restore());
    EXPECT_EQ(modeInForce(), std::numeric_limits<std::int32_t>::min());
}

// Settings that cannot be written

TEST_F(DisplayWidenerTest, WithoutAPlaceForTheRecordTheDisplayIsNotTouched) {
    for (const int first : {1, 2}) {
        refuseChangesFrom(first);
        EXPECT_EQ(widener.widen(1700), WidenResult::failed) << first;
        EXPECT_EQ(displays.applyCount, 0);
        EXPECT_FALSE(widener.isWidened());
        EXPECT_EQ(display().current, usual);
        acceptChanges();
    }
    EXPECT_EQ(widener.widen(1700), WidenResult::widened);
    expectRecord();
}

TEST_F(DisplayWidenerTest, AHalfWrittenRecordIsRemoved) {
    int changes = 0;
    world.defaults.onEffect = [&](EffectMoment moment) {
        if (moment == EffectMoment::before) world.defaults.refusesChanges = ++changes == 2;
    };
    EXPECT_EQ(widener.widen(1700), WidenResult::failed);
    EXPECT_FALSE(hasRecord());
    EXPECT_THAT(world.log.lines(), ElementsAre("Ovin: could not record the display mode; the display stays as it is"));
}

TEST_F(DisplayWidenerTest, ARecordThatCannotBeRemovedDoesNotUndoWhatTheUserChoosesLater) {
    ASSERT_EQ(widener.widen(1700), WidenResult::widened);
    refuseChangesFrom(1);
    EXPECT_TRUE(widener.restore());
    EXPECT_EQ(display().current, usual);
    EXPECT_EQ(widener.scale(), 1.0);
    EXPECT_TRUE(widener.isWidened());
    EXPECT_EQ(world.log.lines().back(), "Ovin: could not remove the record of the display mode; will retry");

    display().current = wide;
    EXPECT_TRUE(widener.restore());
    EXPECT_EQ(display().current, wide);
    EXPECT_EQ(widener.widen(2000), WidenResult::failed);
    expectRecord();

    acceptChanges();
    EXPECT_TRUE(widener.restore());
    EXPECT_EQ(display().current, wide);
    EXPECT_FALSE(hasRecord());
}

TEST_F(DisplayWidenerTest, ASettledRecordThatCanBeRemovedAgainIsInNobodysWay) {
    ASSERT_EQ(widener.widen(1700), WidenResult::widened);
    refuseChangesFrom(1);
    EXPECT_TRUE(widener.restore());
    acceptChanges();
    EXPECT_EQ(widener.widen(1700), WidenResult::widened);
    expectRecord();
    EXPECT_TRUE(widener.restore());
    EXPECT_EQ(display().current, usual);
}

TEST_F(DisplayWidenerTest, AfterARefusalARecordThatCannotBeRemovedOwesNothing) {
    displays.answer = MemoryDisplays::Answer::refuses;
    refuseChangesFrom(3);
    EXPECT_EQ(widener.widen(1700), WidenResult::failed);
    EXPECT_TRUE(widener.isWidened());
    display().current = wide;
    EXPECT_TRUE(widener.restore());
    EXPECT_EQ(displays.applyCount, 1);
    EXPECT_EQ(display().current, wide);
}

TEST_F(DisplayWidenerTest, TheNextLaunchFindsARecordThatCouldNotBeRemovedInForce) {
    ASSERT_EQ(widener.widen(1700), WidenResult::widened);
    refuseChangesFrom(1);
    EXPECT_TRUE(widener.restore());
    acceptChanges();
    DisplayWidener relaunched{world.platform()};
    EXPECT_TRUE(relaunched.restore());
    EXPECT_EQ(displays.applyCount, 2);
    EXPECT_FALSE(hasRecord());
}

TEST_F(DisplayWidenerTest, ADisplayThatCannotBeForgottenIsNoRecord) {
    ASSERT_EQ(widener.widen(1700), WidenResult::widened);
    refuseChangesFrom(2);
    EXPECT_TRUE(widener.restore());
    EXPECT_FALSE(widener.isWidened());
    acceptChanges();
    EXPECT_EQ(widener.widen(2000), WidenResult::widened);
    expectRecord();
}

// Restoring

TEST_F(DisplayWidenerTest, TheModeBeforeIsPutBack) {
    ASSERT_EQ(widener.widen(1700), WidenResult::widened);
    EXPECT_TRUE(widener.restore());
    EXPECT_EQ(display().current, usual);
    EXPECT_FALSE(hasRecord());
    EXPECT_FALSE(widener.isWidened());
    EXPECT_EQ(widener.scale(), 1.0);
    EXPECT_THAT(world.log.lines(),
                ElementsAre("Ovin: widened display to 1800x1169 for arranging", "Ovin: restored display to 1512x982"));
}

TEST_F(DisplayWidenerTest, WithoutARecordThereIsNothingToRestore) {
    ASSERT_EQ(widener.widen(1700), WidenResult::widened);
    ASSERT_TRUE(world.defaults.remove(modeKey) && world.defaults.remove(displayKey));
    const double scale = widener.scale();
    EXPECT_TRUE(widener.restore());
    EXPECT_EQ(widener.scale(), scale);
    EXPECT_EQ(displays.applyCount, 1);
    EXPECT_THAT(world.log.lines(), ElementsAre("Ovin: widened display to 1800x1169 for arranging"));
}

TEST_F(DisplayWidenerTest, ALaterLaunchPutsTheModeBack) {
    ASSERT_EQ(widener.widen(1700), WidenResult::widened);
    DisplayWidener relaunched{world.platform()};
    EXPECT_TRUE(relaunched.isWidened());
    EXPECT_EQ(relaunched.scale(), 1.0);
    EXPECT_TRUE(relaunched.restore());
    EXPECT_EQ(display().current, usual);
    EXPECT_FALSE(hasRecord());
}

TEST_F(DisplayWidenerTest, AModeThatTheUserHasPutBackByHandIsLeftAlone) {
    ASSERT_EQ(widener.widen(1700), WidenResult::widened);
    display().current = usual;
    EXPECT_TRUE(widener.restore());
    EXPECT_EQ(displays.applyCount, 1);
    EXPECT_FALSE(hasRecord());
    EXPECT_EQ(widener.scale(), 1.0);
    EXPECT_THAT(world.log.lines(), ElementsAre("Ovin: widened display to 1800x1169 for arranging"));
}

TEST_F(DisplayWidenerTest, AModeAsWideAsThePreviousOneIsNotThePreviousOne) {
    const DisplayMode belowTheHousing{14, 1512, 945, 3024, true};
    display().modes = {usual, belowTheHousing};
    ASSERT_EQ(widener.widen(1700), WidenResult::widened);
    ASSERT_EQ(display().current, belowTheHousing);
    EXPECT_EQ(widener.scale(), 1.0);
    EXPECT_TRUE(widener.restore());
    EXPECT_EQ(display().current, usual);
    EXPECT_FALSE(hasRecord());
}

TEST_F(DisplayWidenerTest, AModeInForceNeedNotBeListed) {
    ASSERT_EQ(widener.widen(1700), WidenResult::widened);
    display().current = usual;
    display().modes.clear();
    EXPECT_TRUE(widener.restore());
    EXPECT_FALSE(hasRecord());
}

TEST_F(DisplayWidenerTest, ADisplayThatIsAwayIsRestoredWhenItIsBack) {
    ASSERT_EQ(widener.widen(1700), WidenResult::widened);
    const auto unplugged = displays.displays;
    displays.displays = {{8, {}, {usual, wide}, wide, false}};
    EXPECT_FALSE(widener.restore());
    EXPECT_EQ(world.log.lines().back(), "Ovin: the widened display is unavailable; will retry restoring it");
    expectRecord();
    EXPECT_DOUBLE_EQ(widener.scale(), 1800.0 / 1512.0);
    EXPECT_EQ(displays.applyCount, 1);

    displays.displays = unplugged;
    EXPECT_TRUE(widener.restore());
    EXPECT_EQ(display().current, usual);
    EXPECT_FALSE(hasRecord());
}

TEST_F(DisplayWidenerTest, AModeThatTheDisplayHasLostCountsAsUnavailable) {
    ASSERT_EQ(widener.widen(1700), WidenResult::widened);
    display().modes = {wide, widest};
    EXPECT_FALSE(widener.restore());
    EXPECT_EQ(world.log.lines().back(), "Ovin: the widened display is unavailable; will retry restoring it");
    expectRecord();
}

TEST_F(DisplayWidenerTest, WhenTheSystemRefusesOrOnlyPretendsTheModeStaysOnRecord) {
    ASSERT_EQ(widener.widen(1700), WidenResult::widened);
    for (const auto answer : {MemoryDisplays::Answer::refuses, MemoryDisplays::Answer::pretends}) {
        displays.answer = answer;
        EXPECT_FALSE(widener.restore());
        EXPECT_EQ(world.log.lines().back(), "Ovin: could not restore the display mode yet; will retry");
        expectRecord();
        EXPECT_DOUBLE_EQ(widener.scale(), 1800.0 / 1512.0);
    }
    displays.answer = MemoryDisplays::Answer::switches;
    EXPECT_TRUE(widener.restore());
    EXPECT_EQ(display().current, usual);
}

TEST_F(DisplayWidenerTest, ARefusalKeepsTheRecordEvenWhenTheModeIsInForceAfterwards) {
    ASSERT_EQ(widener.widen(1700), WidenResult::widened);
    displays.answer = MemoryDisplays::Answer::refuses;
    displays.onEffect = [this](EffectMoment moment) {
        if (moment == EffectMoment::after) display().current = usual;
    };
    EXPECT_FALSE(widener.restore());
    expectRecord();
}

TEST_F(DisplayWidenerTest, ADisplayThatGoesOffWhileItIsRestoredKeepsItsRecord) {
    ASSERT_EQ(widener.widen(1700), WidenResult::widened);
    displays.onEffect = [this](EffectMoment moment) {
        if (moment == EffectMoment::after) display().current.reset();
    };
    EXPECT_FALSE(widener.restore());
    EXPECT_EQ(world.log.lines().back(), "Ovin: could not restore the display mode yet; will retry");
    expectRecord();
}

TEST_F(DisplayWidenerTest, ADisplayThatIsOffIsRestoredNevertheless) {
    ASSERT_EQ(widener.widen(1700), WidenResult::widened);
    display().current.reset();
    EXPECT_TRUE(widener.restore());
    EXPECT_EQ(display().current, usual);
}

TEST_F(DisplayWidenerTest, OfModesWithOneIdTheFirstListedIsPutBack) {
    ASSERT_EQ(widener.widen(1700), WidenResult::widened);
    display().modes = {wide, usual, DisplayMode{11, 1, 1, 1, true}};
    EXPECT_TRUE(widener.restore());
    EXPECT_EQ(display().current, usual);
}

TEST_F(DisplayWidenerTest, TheRecordedDisplayIsRestoredAlsoWhenItIsNotTheMainOneAnyMore) {
    ASSERT_EQ(widener.widen(1700), WidenResult::widened);
    displays.displays.insert(displays.displays.begin(), {8, {}, {usual, wide}, wide, false});
    EXPECT_TRUE(widener.restore());
    EXPECT_EQ(displays.displays.at(0).current, wide);
    EXPECT_EQ(displays.displays.at(1).current, usual);
}

TEST_F(DisplayWidenerTest, APretendedWideningIsFoundUndone) {
    displays.answer = MemoryDisplays::Answer::pretends;
    EXPECT_EQ(widener.widen(1700), WidenResult::widened);
    expectRecord();
    EXPECT_TRUE(widener.restore());
    EXPECT_FALSE(hasRecord());
}

TEST_F(DisplayWidenerTest, ARecordOfAnotherTypeCountsAsItsInteger) {
    for (const auto& [mode, ofDisplay] : {std::pair<Value, Value>{11.9, 7.9},
                                          {std::string(" 11 of them"), std::string("+7")},
                                          {std::string("11"), std::int64_t{7}}}) {
        display().current = wide;
        record(mode, ofDisplay);
        EXPECT_TRUE(widener.restore());
        EXPECT_EQ(display().current, usual);
        EXPECT_FALSE(hasRecord());
    }
}

TEST_F(DisplayWidenerTest, ARecordThatIsNoNumberCountsAsZero) {
    record(std::string("mode"), std::string("display"));
    EXPECT_FALSE(widener.restore());
    EXPECT_EQ(world.log.lines().back(), "Ovin: the widened display is unavailable; will retry restoring it");
    display().id = 0;
    display().modes.push_back({0, 1000, 600, 1000, true});
    EXPECT_TRUE(widener.restore());
    EXPECT_EQ(modeInForce(), 0);
}

TEST_F(DisplayWidenerTest, ARecordWithoutADisplayMeansTheDisplayZero) {
    world.defaults.values.insert_or_assign(modeKey, std::int64_t{11});
    display().current = wide;
    EXPECT_FALSE(widener.restore());
    EXPECT_TRUE(widener.isWidened());
    display().id = 0;
    EXPECT_TRUE(widener.restore());
    EXPECT_EQ(display().current, usual);
}

// Records that cannot be

void restoreFrom(const Value& mode, const Value& ofDisplay) {
    MemoryWorld world;
    world.defaults.values = {{modeKey, mode}, {displayKey, ofDisplay}};
    LoudLog log;
    DisplayWidener widener(world.platform(log));
    (void)widener.restore();
}

TEST(DisplayWidenerDeathTest, AModeThatIsNo32BitNumberEndsTheProgram) {
    const Value display = std::int64_t{1};
    EXPECT_DEATH(restoreFrom(std::int64_t{2147483648}, display),
                 "Ovin: fatal: OvinOriginalDisplayModeID is out of range: 2147483648; remove it from the settings, and");
    EXPECT_DEATH(restoreFrom(std::int64_t{-2147483649}, display),
                 "Ovin: fatal: OvinOriginalDisplayModeID is out of range: -2147483649");
    EXPECT_DEATH(restoreFrom(1e300, display), "OvinOriginalDisplayModeID is out of range");
    EXPECT_DEATH(restoreFrom(std::string("99999999999999999999"), display), "OvinOriginalDisplayModeID is out of range");
}

TEST(DisplayWidenerDeathTest, ADisplayThatIsNoUnsigned32BitNumberEndsTheProgram) {
    const Value mode = std::int64_t{1};
    EXPECT_DEATH(restoreFrom(mode, std::int64_t{4294967296}),
                 "Ovin: fatal: OvinOriginalDisplayID is out of range: 4294967296");
    EXPECT_DEATH(restoreFrom(mode, std::int64_t{-1}), "Ovin: fatal: OvinOriginalDisplayID is out of range: -1");
}

TEST(DisplayWidenerDeathTest, TheEndsOfTheRangesAreInside) {
    restoreFrom(std::int64_t{2147483647}, std::int64_t{4294967295});
    restoreFrom(std::int64_t{-2147483648}, std::int64_t{0});
}

// Several sessions of one user, each with a display server of its own

TEST_F(DisplayWidenerTest, TheRecordSaysWhoseDisplayItIs) {
    displays.server = "own";
    ASSERT_EQ(widener.widen(1700), WidenResult::widened);
    expectRecord();
    EXPECT_EQ(world.defaults.object(serverKey), Value("own"));
    EXPECT_TRUE(widener.restore());
    EXPECT_EQ(modeInForce(), 11);
    EXPECT_THAT(world.defaults.values, IsEmpty());
}

TEST_F(DisplayWidenerTest, WhereThereIsOneServerTheRecordNamesNone) {
    world.defaults.values.insert_or_assign(serverKey, "of an earlier record");
    ASSERT_EQ(widener.widen(1700), WidenResult::widened);
    EXPECT_EQ(world.defaults.object(serverKey), std::nullopt);
}

TEST_F(DisplayWidenerTest, WhatAnotherSessionOwesIsLeftToIt) {
    displays.server = "own";
    displays.otherServers = {"other"};
    record(std::int64_t{11}, std::int64_t{7});
    world.defaults.values.insert_or_assign(serverKey, "other");
    for (const DisplayMode& mode : {usual, wide}) {
        display().current = mode;
        EXPECT_TRUE(widener.restore());
        EXPECT_EQ(display().current, mode);
        EXPECT_EQ(widener.widen(2000), WidenResult::failed);
        expectRecord();
        EXPECT_EQ(world.defaults.object(serverKey), Value("other"));
    }
    EXPECT_THAT(world.log.lines(),
                testing::Each("Ovin: a display of another session is widened; that session will restore it"));
    EXPECT_EQ(displays.applyCount, 0);
}

TEST_F(DisplayWidenerTest, WhatASessionOwedThatHasEndedIsPaidByTheNextOne) {
    displays.server = "own";
    record(std::int64_t{11}, std::int64_t{7});
    world.defaults.values.insert_or_assign(serverKey, "ended");
    display().current = wide;
    EXPECT_TRUE(widener.restore());
    EXPECT_EQ(modeInForce(), 11);
    EXPECT_THAT(world.defaults.values, IsEmpty());
}

TEST_F(DisplayWidenerTest, ASessionThatEndsMeanwhileLeavesNobodyUnableToWiden) {
    displays.server = "own";
    displays.otherServers = {"other"};
    record(std::int64_t{11}, std::int64_t{7});
    world.defaults.values.insert_or_assign(serverKey, "other");
    EXPECT_TRUE(widener.restore());
    EXPECT_EQ(widener.widen(1700), WidenResult::failed);
    displays.otherServers.clear();
    EXPECT_EQ(widener.widen(1700), WidenResult::widened);
    expectRecord();
    EXPECT_EQ(world.defaults.object(serverKey), Value("own"));
}

TEST_F(DisplayWidenerTest, WithoutAPlaceForTheServersNameTheDisplayIsNotTouched) {
    displays.server = "own";
    for (int change = 1; change <= 3; ++change) {
        refuseChangesFrom(change);
        EXPECT_EQ(widener.widen(1700), WidenResult::failed) << change;
        EXPECT_FALSE(widener.isWidened());
        acceptChanges();
    }
    EXPECT_EQ(displays.applyCount, 0);
    EXPECT_EQ(widener.widen(1700), WidenResult::widened);
    EXPECT_EQ(world.defaults.object(serverKey), Value("own"));
}

}  // namespace
}  // namespace ovin
