#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "organize/ArrangeSession.h"
#include "organize/DisplayWidener.h"
#include "tests/support/MenuBarScene.h"

namespace ovin {

/// Where within an effect the program dies. In both of the middle cases a mode that was being applied is in force.
enum class CrashPhase { before, duringAndTheOldSurvives, duringAndTheNewSurvives, after };
inline constexpr CrashPhase crashPhases[] = {CrashPhase::before, CrashPhase::duringAndTheOldSurvives,
                                             CrashPhase::duringAndTheNewSurvives, CrashPhase::after};

struct CrashPoint {
    /// The effects of one run of the program are numbered from 0.
    int effect = 0;
    CrashPhase phase = CrashPhase::before;
};

/// Thrown out of an effect, through the program: it is dead.
struct Crash {};

/// Thrown wherever something has happened that must never happen.
struct Violation {
    std::string what;
};

/// A computer with displays, settings and a user, on which the program is launched, used, quit, and crashes. It knows in
/// which mode each display ought to be and what the program may do by now, and watches every effect that it has.
class SimulatedComputer {
public:
    using Display = MemoryDisplays::Display;
    using Values = std::map<std::string, UserDefaults::Value, std::less<>>;

    /// What outlives the program.
    struct Hardware {
        /// The first is the main one.
        std::vector<Display> connected;
        std::vector<Display> unplugged;
        Values settings;
    };

    enum class Items { withoutMenuBar, allDrawn, needRoom, neverAllDrawn };

    /// What becomes of the effect that is about to happen.
    struct Fault {
        bool settingsRefuse = false;
        MemoryDisplays::Answer answer = MemoryDisplays::Answer::switches;
    };

    struct Counts {
        long launches = 0;
        long effects = 0;
        long crashes = 0;
        /// Launches that found a widening on record.
        long recoveries = 0;
        long starts = 0;
    };

    /// Of two displays, each has modes and ids of its own; some ids mean one mode on the one and another on the other.
    explicit SimulatedComputer(int displayCount = 1);

    /// Faults of the effect with this number; none by default.
    std::function<Fault(int effect)> faults;
    /// After how long the program hears of the change of the screens that is happening; at once by default.
    std::function<std::chrono::milliseconds()> noticeDelay;
    /// How long each question to an application takes, in the runs of the program that are launched from now on.
    std::chrono::milliseconds latency{0};
    /// Where the program is to die; nowhere by default. Cleared by the crash.
    std::optional<CrashPoint> crashPoint;
    Counts counts;

    // The program. Each of these calls may throw `Crash`; then `die` must follow.

    /// Starts the program, which ends any session that an earlier run left.
    void launch();
    void begin();
    void end();
    void pass(std::chrono::milliseconds time);
    void passUntilIdle();
    void die();
    [[nodiscard]] bool isRunning() const { return program_ != nullptr; }
    [[nodiscard]] bool isActive() const { return isRunning() && program_->session->isActive(); }
    [[nodiscard]] int effectCount() const { return effectCount_; }

    // The user and the hardware. The program is told when time passes, `noticeDelay` later.

    void unplugMainDisplay();
    void makeMain(std::size_t display);
    /// Plugs in the display that has been away longest: in the mode that it had last or in its usual one, under its old id
    /// or another one.
    void plugIn(bool inItsOwnMode, bool underAnotherID);
    void setMirrored(bool isMirrored);
    void chooseMode(std::size_t display, std::size_t mode);
    void setItems(Items items);
    [[nodiscard]] std::size_t displayCount() { return connected().size(); }
    [[nodiscard]] std::size_t unpluggedCount() const { return hardware_.unplugged.size(); }
    /// Plugs everything in, also a display that is on record under its lost id.
    void plugEverythingIn();

    // What is looked at.

    /// What must hold between any two steps.
    void check();
    /// What must hold when everything has worked since the last launch.
    void checkNothingIsOwed();
    /// When everything works and every display is plugged in, a session starts, and tells what is still missing, whatever
    /// has happened before. It is active in the end.
    void checkOrganizingIsPossible();
    [[nodiscard]] bool hasRecord() { return settings().contains(modeKey); }
    /// The state of what outlives the program, in one line; equal for equal states.
    [[nodiscard]] std::string description();

private:
    static constexpr const char* modeKey = "OvinOriginalDisplayModeID";
    static constexpr const char* displayKey = "OvinOriginalDisplayID";

    struct Program {
        MenuBarScene scene;
        DisplayWidener widener{scene.world.platform()};
        std::shared_ptr<ArrangeSession> session = ArrangeSession::create(scene.world.platform(), widener);
        std::vector<MemoryElement> slots;
    };
    struct Record {
        DisplayID display = 0;
        std::int32_t mode = 0;
    };
    /// What the user wants of a display.
    struct Wish {
        std::int32_t mode = 0;
        /// The user has chosen another mode while the display was widened: then either mode is right.
        bool isChangedByHand = false;
    };
    /// What has become of a display that has lost its id.
    struct Loss {
        DisplayID newID = 0;
        /// The mode that it was in.
        DisplayMode mode;
    };

    [[nodiscard]] std::vector<Display>& connected();
    [[nodiscard]] Values& settings();
    [[nodiscard]] static std::optional<Record> recordIn(const Values& values);
    [[nodiscard]] bool isOnRecord(DisplayID display, std::int32_t mode);
    /// Nothing when no connected display has this id.
    [[nodiscard]] Display* find(DisplayID id);
    [[nodiscard]] bool isRight(const Display& display) const;

    void unsettle();
    void buildMenuBar();
    void layOut();
    void tellOfChange();
    void effect(EffectMoment moment, bool isSetting);
    void beginEffect();
    void crashAt(CrashPhase phase, bool isSetting);
    void checkSettingChange();
    void checkNewRecord(const Record& record);
    void checkRemoval(const Record& record);
    void checkModeChange();
    void checkOwed();
    void forgetChangesByHand();

    Hardware hardware_;
    std::map<DisplayID, Wish> wishes_;
    /// By the ids that were lost.
    std::map<DisplayID, Loss> lost_;
    DisplayID nextID_ = 1;
    Items items_ = Items::needRoom;
    std::unique_ptr<Program> program_;

    int effectCount_ = 0;
    /// The record on file owes nothing: this run of the program was right to remove it, and could not.
    bool isSettled_ = false;
    Values settingsBefore_;
    std::vector<std::optional<DisplayMode>> modesBefore_;
    /// Counts the ends: a begin before an end must not lead to anything after it.
    int endCount_ = 0;
    /// A begin has been accepted, has not been ended, and has led to nothing yet.
    bool mayWiden_ = false;
    /// The program is being told to end its session, or that the screens have changed. Nothing else lets it put a mode back.
    bool mayRestore_ = false;
    /// A begin has been accepted and is still finding out what it has to know.
    bool isStarting_ = false;
    /// When the session was reported, until it has ended or warned.
    std::optional<std::chrono::nanoseconds> startTime_;
};

}  // namespace ovin
