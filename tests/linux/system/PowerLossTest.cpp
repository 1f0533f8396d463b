// The settings over a disk that loses power, or the program over them that dies, at every single call to the kernel.

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/linux/system/FileUserDefaults.h"
#include "tests/linux/system/SimulatedDisk.h"

namespace ovin {
namespace {

using Value = UserDefaults::Value;

constexpr const char* path = "/home/user/.config/ovin/defaults";
constexpr const char* modeKey = "OvinOriginalDisplayModeID";
constexpr const char* displayKey = "OvinOriginalDisplayID";
const Value before = std::int64_t{1234567};
const Value after = std::string("after the change");

std::optional<Value> storedOn(SimulatedDisk& disk, const char* key = "key") {
    return FileUserDefaults(path, disk).object(key);
}

/// How often something was looked at, so that a test which never looks does not pass.
struct Counts {
    int deaths = 0;
    int disks = 0;
};

/// Lets `change` die at every call, and `look` at everything that may be on the disk then. `prepare` comes first and does
/// not die. `change` returns whether it succeeded.
template <typename Prepare, typename Change, typename Look>
Counts losePowerEverywhere(const Prepare& prepare, const Change& change, const Look& look) {
    Counts counts;
    for (bool isThrough = false; !isThrough; ++counts.deaths) {
        SimulatedDisk disk;
        prepare(disk);
        const int start = disk.calls;
        disk.diesAt = start + counts.deaths;
        const bool isDone = change(disk);
        isThrough = disk.calls <= disk.diesAt;
        for (const auto& content : disk.afterPowerLoss()) {
            SimulatedDisk left(content);
            look(left, isDone, counts.deaths);
            ++counts.disks;
        }
    }
    return counts;
}

void nothing(SimulatedDisk&) {}

void setBefore(SimulatedDisk& disk) {
    FileUserDefaults defaults(path, disk);
    ASSERT_TRUE(defaults.set("key", before));
    ASSERT_TRUE(defaults.set("other", true));
}

TEST(PowerLoss, TheFirstValueIsThereWholeOrNotAtAll) {
    const Counts counts = losePowerEverywhere(
        nothing, [](SimulatedDisk& disk) { return FileUserDefaults(path, disk).set("key", after); },
        [](SimulatedDisk& disk, bool isDone, int call) {
            const auto found = storedOn(disk);
            EXPECT_TRUE(found == after || (!isDone && !found)) << "call " << call;
        });
    EXPECT_GT(counts.deaths, 15);
    EXPECT_GT(counts.disks, 50);
}

TEST(PowerLoss, ALaterValueReplacesTheOldOneOrDoesNot) {
    const Counts counts = losePowerEverywhere(
        setBefore, [](SimulatedDisk& disk) { return FileUserDefaults(path, disk).set("key", after); },
        [](SimulatedDisk& disk, bool isDone, int call) {
            const auto found = storedOn(disk);
            EXPECT_TRUE(found == after || (!isDone && found == before)) << "call " << call;
            EXPECT_EQ(storedOn(disk, "other"), Value(true)) << "call " << call;
        });
    EXPECT_GT(counts.deaths, 10);
    EXPECT_GT(counts.disks, 30);
}

TEST(PowerLoss, ARemovedValueIsGoneOrThereAsItWas) {
    const Counts counts = losePowerEverywhere(
        setBefore, [](SimulatedDisk& disk) { return FileUserDefaults(path, disk).remove("key"); },
        [](SimulatedDisk& disk, bool isDone, int call) {
            const auto found = storedOn(disk);
            EXPECT_TRUE(!found || (!isDone && found == before)) << "call " << call;
            EXPECT_EQ(storedOn(disk, "other"), Value(true)) << "call " << call;
        });
    EXPECT_GT(counts.deaths, 10);
}

TEST(PowerLoss, AModeIsNeverOnRecordWithoutItsDisplay) {
    const auto writeAndRemove = [](SimulatedDisk& disk) {
        FileUserDefaults defaults(path, disk);
        return defaults.set(displayKey, std::int64_t{7}) && defaults.set(modeKey, std::int64_t{94}) &&
               defaults.remove(modeKey) && defaults.remove(displayKey);
    };
    const Counts counts = losePowerEverywhere(nothing, writeAndRemove, [](SimulatedDisk& disk, bool isDone, int call) {
        const auto mode = storedOn(disk, modeKey);
        const auto display = storedOn(disk, displayKey);
        EXPECT_TRUE(!mode || mode == Value(std::int64_t{94})) << "call " << call;
        EXPECT_TRUE(!display || display == Value(std::int64_t{7})) << "call " << call;
        EXPECT_TRUE(!mode || display) << "call " << call;
        EXPECT_TRUE(!isDone || (!mode && !display)) << "call " << call;
    });
    EXPECT_GT(counts.deaths, 30);
}

TEST(PowerLoss, WhatASuccessorOfADeadProgramHasStoredStays) {
    int disks = 0;
    bool isThrough = false;
    for (int call = 0; !isThrough; ++call) {
        SimulatedDisk disk;
        disk.diesAt = call;
        (void)FileUserDefaults(path, disk).set("key", before);
        isThrough = disk.calls <= disk.diesAt;
        disk.relaunch();
        FileUserDefaults successor(path, disk);
        const auto found = successor.object("key");
        EXPECT_TRUE(!found || found == before) << "call " << call;
        ASSERT_TRUE(successor.set("key", after)) << "call " << call;
        for (const auto& content : disk.afterPowerLoss()) {
            SimulatedDisk left(content);
            EXPECT_EQ(storedOn(left), after) << "call " << call;
            ++disks;
        }
    }
    EXPECT_GT(disks, 20);
}

/// Lets each call of a change fail, alone or with all that follow, and looks at the store and the disk.
void failEverywhere(int error, bool fromThereOn) {
    int refusals = 0;
    for (int call = 0;; ++call) {
        SCOPED_TRACE("error " + std::to_string(error) + " in call " + std::to_string(call) +
                     (fromThereOn ? " and later" : ""));
        SimulatedDisk disk;
        setBefore(disk);
        FileUserDefaults defaults(path, disk);
        disk.error = error;
        const int first = disk.calls + call;
        for (int number = first; number < first + (fromThereOn ? 100 : 1); ++number) disk.failing.insert(number);
        const bool isSet = defaults.set("key", after);
        if (disk.calls <= first) break;
        disk.failing.clear();
        refusals += isSet ? 0 : 1;
        const auto found = storedOn(disk);
        EXPECT_EQ(defaults.object("key"), found);
        if (!fromThereOn) {
            EXPECT_EQ(found, isSet ? after : before);
        }
        EXPECT_TRUE(found == before || found == after);
        for (const auto& content : disk.afterPowerLoss()) {
            SimulatedDisk left(content);
            const auto lost = storedOn(left);
            EXPECT_TRUE(lost == after || (!isSet && lost == before));
            EXPECT_EQ(storedOn(left, "other"), Value(true));
        }
        // And the next change finds nothing in its way.
        EXPECT_TRUE(defaults.set("later", true));
        EXPECT_EQ(storedOn(disk), found);
    }
    EXPECT_GT(refusals, 3);
}

TEST(PowerLoss, AChangeThatFailsAnywhereLeavesTheStoreAsItWas) {
    for (const int error : {EACCES, ENOSPC, EDQUOT, EIO, EROFS}) {
        failEverywhere(error, false);
        failEverywhere(error, true);
    }
}

TEST(PowerLoss, AFirstChangeIsDoneOnlyWhenItsFoldersAreOnTheDisk) {
    for (int call = 0;; ++call) {
        SCOPED_TRACE("call " + std::to_string(call));
        SimulatedDisk disk;
        disk.failing = {call};
        FileUserDefaults defaults(path, disk);
        const bool isSet = defaults.set("key", after);
        if (disk.calls <= call) break;
        for (const auto& content : disk.afterPowerLoss()) {
            SimulatedDisk left(content);
            EXPECT_TRUE(!isSet || storedOn(left) == after);
        }
        if (!defaults.isReadable()) continue;
        ASSERT_TRUE(defaults.set("key", before)) << "the next time";
        for (const auto& content : disk.afterPowerLoss()) {
            SimulatedDisk left(content);
            EXPECT_EQ(storedOn(left), before);
        }
    }
}

TEST(PowerLoss, AnInterruptedCallIsMadeAgain) {
    int refusals = 0;
    int call = 0;
    for (;; ++call) {
        SimulatedDisk disk;
        setBefore(disk);
        const int first = disk.calls + call;
        disk.error = EINTR;
        disk.failing = {first};
        FileUserDefaults defaults(path, disk);
        const bool isSet = defaults.set("key", after);
        if (disk.calls <= first) break;
        refusals += isSet ? 0 : 1;
        EXPECT_EQ(storedOn(disk), isSet ? after : before) << "call " << call;
    }
    // The kernel does not interrupt calls that ask what a file is or rename it.
    EXPECT_EQ(refusals, 2);
    EXPECT_GT(call, 20);
}

TEST(PowerLoss, AFileThatIsWrittenByteByByteIsWrittenWhole) {
    SimulatedDisk disk;
    disk.largestWrite = 1;
    ASSERT_TRUE(FileUserDefaults(path, disk).set("key", after));
    EXPECT_EQ(storedOn(disk), after);
    disk.largestWrite = 0;
    EXPECT_FALSE(FileUserDefaults(path, disk).set("key", before)) << "a disk that takes nothing";
    EXPECT_EQ(storedOn(disk), after);
}

TEST(PowerLoss, SettingsThatCannotBeReadAreNone) {
    for (const int error : {EACCES, EIO}) {
        // Open, look, and read twice.
        for (int call = 0; call < 4; ++call) {
            SimulatedDisk disk;
            setBefore(disk);
            disk.error = error;
            disk.failing = {disk.calls + call};
            FileUserDefaults defaults(path, disk);
            EXPECT_FALSE(defaults.isReadable());
            disk.failing = {disk.calls + call};
            EXPECT_EQ(defaults.object("key"), std::nullopt);
            EXPECT_EQ(defaults.object("key"), before) << "the next time";
        }
    }
}

}  // namespace
}  // namespace ovin
