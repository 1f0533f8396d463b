#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Platform.h"
#include "platform/UpdateFeed.h"
#include "platform/WallClock.h"
#include "tests/contract/StagedUser.h"

namespace ovin {

/// An application to be started on a stage, with one status item for each title.
struct StagedApplication {
    std::string name = "Staged";
    std::vector<std::string> itemTitles;
};

/// A world in which the contract tests arrange what they need. The tests know the interfaces of the platform and this class
/// and nothing else of a world. Made anew for each test, and used on the main thread unless a method says otherwise.
class Stage {
public:
    using Duration = std::chrono::nanoseconds;

    /// What some worlds cannot do.
    enum class Ability {
        hangApplications,
        withdrawTrust,
        reportPresses,
        renameItems,
        refuseChanges,
        unplugDisplays,
        setEnvironment,
        changeLoginItems,
        haveResources,
        makeUpdates,
        readLog,
        pressMouse,
    };

    Stage() = default;
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;
    virtual ~Stage() = default;

    /// Why this world cannot do something; nothing when it can.
    [[nodiscard]] virtual std::optional<std::string> reasonWithout(Ability) const { return std::nullopt; }

    /// The world as the program sees it. `defaults` is the store as it was opened last.
    [[nodiscard]] virtual Platform platform() = 0;

    /// The user of this program.
    [[nodiscard]] virtual StagedUser& user() = 0;

    // Time

    /// Lets the main thread do its work until the condition, asked on the main thread, holds or the time is over. Whether it
    /// holds in the end.
    virtual bool runUntil(const std::function<bool()>& condition, Duration limit) = 0;
    /// Blocks the calling thread or task for so long and lets nothing of the main queue run. Any thread.
    virtual void wait(Duration duration) = 0;
    /// The date and timers that outlast sleep, for a world that makes an update framework from them. [makeUpdates]
    [[nodiscard]] virtual WallClock& wallClock() = 0;
    /// How late things may be in this world, because the machine has other things to do.
    [[nodiscard]] virtual Duration margin() const = 0;

    // Applications

    /// Starts an application that the workspace knows too, and returns when its status items can be read.
    virtual ProcessID start(const StagedApplication& application) = 0;
    /// Ends an application and returns when it is gone.
    virtual void quit(ProcessID pid) = 0;
    /// Runs a program that is no application to its end, as a script does.
    virtual void runCommand() = 0;
    /// A process id that no process has and that none gets soon.
    [[nodiscard]] virtual ProcessID unusedProcessID() = 0;
    /// Lets an application stop answering, or answer again. [hangApplications]
    virtual void setHung(ProcessID pid, bool hung) = 0;
    /// Gives a status item another title. [renameItems]
    virtual void rename(ProcessID pid, std::size_t item, const std::string& title) = 0;
    /// The items that were pressed so far, by their index, as the application saw it. [reportPresses]
    [[nodiscard]] virtual std::vector<std::size_t> presses(ProcessID pid) = 0;
    /// [withdrawTrust]
    virtual void setTrusted(bool trusted) = 0;

    // This program and its surroundings

    /// Opens the user defaults again, as the program does when it is launched the next time.
    virtual void reopenDefaults() = 0;
    /// Another program of this user changes a setting, or removes it.
    virtual void changeDefaultsElsewhere(const std::string& key, const std::optional<UserDefaults::Value>& value) = 0;
    /// Lets the store refuse to change, as on a full disk. [refuseChanges]
    virtual void setRefusesChanges(bool refuses) = 0;
    /// [setEnvironment]
    virtual void setEnvironment(const std::string& name, const std::optional<std::string>& value) = 0;
    /// The user switches this application off among those that start at login. [changeLoginItems]
    virtual void switchOffLaunchAtLogin() = 0;
    /// Lets the system refuse to have this application start at login. [changeLoginItems]
    virtual void setRefusesLaunchAtLogin(bool refuses) = 0;
    /// Plugs a second display in and returns its id; the other takes it away. [unplugDisplays]
    virtual DisplayID plugDisplay() = 0;
    virtual void unplugDisplay(DisplayID display) = 0;
    /// Lets a second display show what the main one shows. [unplugDisplays]
    virtual void mirror(DisplayID display) = 0;
    /// Another program switches the main display to one of its modes.
    virtual void switchElsewhere(const DisplayMode& mode) = 0;
    /// Reads feeds, for a world that makes an update framework from this. [makeUpdates]
    [[nodiscard]] virtual UpdateFeed& updateFeed() = 0;
    /// Announces these versions in a feed on a server of this machine, and returns its address. [makeUpdates]
    virtual std::string announce(const std::vector<FeedItem>& items) = 0;

    /// What was written to the log since the stage was made. [readLog]
    [[nodiscard]] virtual std::vector<std::string> logLines() = 0;
};

/// How to make the stage of one world.
struct NamedStageFactory {
    std::string name;
    std::function<std::unique_ptr<Stage>()> make;
};

/// The worlds of this test program; each program defines it once.
std::vector<NamedStageFactory> contractStages();

}  // namespace ovin
