#include "tests/simulation/SimulatedComputer.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace ovin {
namespace {

using namespace std::chrono_literals;
using Outcome = BeginResult::Outcome;

const std::vector<DisplayMode> modes{
    {1, 1512, 982, 3024, true}, {2, 1800, 1169, 3600, true}, {3, 2048, 1330, 2048, true}, {4, 1512, 945, 3024, true}};

constexpr int roomyWidth = 1700;

void require(bool holds, const char* what) {
    if (!holds) throw Violation{what};
}

}  // namespace

SimulatedComputer::SimulatedComputer(int displayCount) {
    for (; displayCount > 0; --displayCount) {
        hardware_.connected.push_back({nextID_, {}, modes, modes.front(), false});
        wishes_[nextID_++] = {modes.front().id, false};
    }
}

// The program

void SimulatedComputer::launch() {
    ++counts.launches;
    counts.recoveries += hasRecord() ? 1 : 0;
    auto program = std::make_unique<Program>();
    MemoryWorld& world = program->scene.world;
    world.displays.displays = std::move(hardware_.connected);
    world.defaults.values = std::move(hardware_.settings);
    world.defaults.onEffect = [this](EffectMoment moment) { effect(moment, true); };
    world.displays.onEffect = [this](EffectMoment moment) { effect(moment, false); };
    program_ = std::move(program);
    effectCount_ = 0;
    hasRefused_ = false;
    buildMenuBar();
    program_->session->onItemsStillDoNotFit = [this] { require(isActive(), "a warning without an active session"); };
    end();
}

void SimulatedComputer::begin() {
    const bool mightWidenBefore = std::exchange(mayWiden_, true);
    const auto reports = std::make_shared<int>(0);
    const auto isWithinCall = std::make_shared<bool>(true);
    program_->session->begin(
        [this, reports, isWithinCall, mightWidenBefore, expected = endCount_](const BeginResult& result) {
            require(++*reports == 1, "a second report");
            if (*isWithinCall) {
                require(result.outcome == Outcome::superseded, "a result within the call");
                mayWiden_ = mightWidenBefore;
                return;
            }
            require((result.outcome == Outcome::superseded) == (expected != endCount_), "a report of what has been ended");
            require(result.outcome != Outcome::started || isActive(), "a start without a session");
            counts.starts += result.outcome == Outcome::started ? 1 : 0;
            if (expected == endCount_) mayWiden_ = false;
        });
    *isWithinCall = false;
}

void SimulatedComputer::end() {
    ++endCount_;
    mayWiden_ = false;
    program_->session->end();
    require(!isActive(), "an active session after its end");
}

void SimulatedComputer::pass(std::chrono::milliseconds time) { program_->scene.world.time.advance(time); }

void SimulatedComputer::passUntilIdle() { program_->scene.world.time.runUntilIdle(); }

void SimulatedComputer::die() {
    hardware_.connected = std::move(connected());
    hardware_.settings = std::move(settings());
    // What is destroyed has no effect any more.
    MemoryWorld& world = program_->scene.world;
    const auto noEffect = [](EffectMoment) { throw Violation{"an effect of a dead program"}; };
    world.defaults.onEffect = noEffect;
    world.displays.onEffect = noEffect;
    program_.reset();
    ++endCount_;
    mayWiden_ = false;
}

// Effects

void SimulatedComputer::effect(EffectMoment moment, bool isSetting) {
    switch (moment) {
        case EffectMoment::before:
            return beginEffect();
        case EffectMoment::during:
            if (isSetting) {
                checkSettingChange();
            } else {
                checkModeChange();
            }
            checkOwed();
            crashAt(CrashPhase::duringAndTheOldSurvives, isSetting);
            return crashAt(CrashPhase::duringAndTheNewSurvives, isSetting);
        case EffectMoment::after:
            crashAt(CrashPhase::after, isSetting);
            ++effectCount_;
    }
}

void SimulatedComputer::beginEffect() {
    ++counts.effects;
    settingsBefore_ = settings();
    modesBefore_.clear();
    for (const Display& display : connected()) modesBefore_.push_back(display.current);
    const Fault fault = faults ? faults(effectCount_) : Fault{};
    hasRefused_ = hasRefused_ || fault.settingsRefuse;
    program_->scene.world.defaults.refusesChanges = fault.settingsRefuse;
    program_->scene.world.displays.answer = fault.answer;
    crashAt(CrashPhase::before, true);
}

void SimulatedComputer::crashAt(CrashPhase phase, bool isSetting) {
    if (!crashPoint || crashPoint->phase != phase || crashPoint->effect != effectCount_) return;
    crashPoint.reset();
    ++counts.crashes;
    if (phase == CrashPhase::duringAndTheOldSurvives && isSetting) {
        settings() = settingsBefore_;
        checkOwed();
    }
    throw Crash{};
}

void SimulatedComputer::checkSettingChange() {
    const bool hadRecord = settingsBefore_.contains(modeKey);
    if (hadRecord && hasRecord()) require(settingsBefore_ == settings(), "a record is overwritten");
    if (hadRecord || !hasRecord()) return;
    require(mayWiden_, "a record without a session that may widen");
    require(!connected().empty() && connected().front().current, "a record without a display");
    const Display& main = connected().front();
    require(isOnRecord(main.id, main.current->id), "a record of something else than the mode in force");
}

void SimulatedComputer::checkModeChange() {
    for (std::size_t i = 0; i < connected().size(); ++i) {
        const Display& display = connected()[i];
        if (display.current == modesBefore_[i]) continue;
        tellOfChange();
        layOut();
        if (isOnRecord(display.id, display.current->id)) continue;
        // It is a widening then, and the session that wanted it has what it wanted.
        require(std::exchange(mayWiden_, false), "a mode that no session wants any more");
        require(isOnRecord(display.id, modesBefore_[i]->id), "a mode is changed that is not on record");
    }
}

// The user and the hardware

void SimulatedComputer::unplugMainDisplay() {
    if (connected().empty()) return;
    hardware_.unplugged.push_back(connected().front());
    connected().erase(connected().begin());
    tellOfChange();
}

void SimulatedComputer::plugIn(bool inItsOwnMode, bool underAnotherID) {
    if (hardware_.unplugged.empty()) return;
    Display display = hardware_.unplugged.front();
    hardware_.unplugged.erase(hardware_.unplugged.begin());
    Wish& wish = wishes_[display.id];
    // Under another id it is another display to the system, which does not know of the mode that was only for a session.
    if (underAnotherID && !isRight(display)) lostWhileWidened_.insert(display.id);
    if (inItsOwnMode || underAnotherID) {
        display.current = *std::find_if(modes.begin(), modes.end(), [&](const DisplayMode& m) { return m.id == wish.mode; });
        wish.isChangedByHand = false;
    }
    if (underAnotherID) {
        display.id = nextID_++;
        wishes_[display.id] = wish;
    }
    connected().insert(connected().begin(), display);
    tellOfChange();
}

void SimulatedComputer::plugEverythingIn() {
    while (!hardware_.unplugged.empty()) plugIn(false, false);
    if (!hasRecord()) return;
    const auto id = static_cast<DisplayID>(std::get<std::int64_t>(settings().at(displayKey)));
    const auto mode = static_cast<std::int32_t>(std::get<std::int64_t>(settings().at(modeKey)));
    const auto hasID = [id](const Display& display) { return display.id == id; };
    if (std::any_of(connected().begin(), connected().end(), hasID)) return;
    // It has lost its id, and gets it back along with the mode that it had.
    connected().front().id = id;
    connected().front().current =
        lostWhileWidened_.contains(id) ? modes.at(2) : modes.at(static_cast<std::size_t>(mode - 1));
    wishes_[id] = {mode, false};
    tellOfChange();
}

void SimulatedComputer::setMirrored(bool isMirrored) {
    for (Display& display : connected()) display.isMirrored = isMirrored;
    tellOfChange();
}

void SimulatedComputer::chooseMode(std::size_t display, std::size_t mode) {
    Display& chosen = connected().at(display);
    chosen.current = modes.at(mode);
    Wish& wish = wishes_[chosen.id];
    if (isOnRecord(chosen.id, wish.mode)) {
        wish.isChangedByHand = chosen.current->id != wish.mode;
    } else {
        wish = {chosen.current->id, false};
    }
    tellOfChange();
    if (isRunning()) layOut();
}

void SimulatedComputer::setItems(Items items) {
    items_ = items;
    if (isRunning()) layOut();
}

void SimulatedComputer::buildMenuBar() {
    MenuBarScene& scene = program_->scene;
    // A menu bar costs more than all the rest, so it comes only where something depends on it.
    if (items_ == Items::withoutMenuBar) return;
    scene.launchAgent();
    for (const MemoryElement& item : scene.launchWithItems(512, "App", {"one", "two"})) {
        program_->slots.push_back(scene.addSlot(1000, 30, item));
    }
    layOut();
}

void SimulatedComputer::layOut() {
    const auto& displays = program_->scene.world.displays.displays;
    const bool hasRoom = !displays.empty() && displays.front().current && displays.front().current->width >= roomyWidth;
    const bool isDrawn = items_ == Items::allDrawn || (items_ == Items::needRoom && hasRoom);
    double x = 1000;
    for (const MemoryElement& slot : program_->slots) {
        slot.setFrame({{x, 0}, {30, 24}});
        if (isDrawn) x += 30;
    }
}

void SimulatedComputer::tellOfChange() {
    if (!isRunning()) return;
    MemoryWorld& world = program_->scene.world;
    world.time.happen(0ms, [&world] { world.screens.change(); });
}

// What is looked at

void SimulatedComputer::check() {
    checkOwed();
    forgetChangesByHand();
    if (!isRunning()) return;
    const auto observers = program_->scene.world.screens.observerCount();
    require(observers <= 1, "more than one observer of the screens");
    require(!isActive() || hasRecord(), "an active session without a record");
    const auto isWrong = [this](const Display& display) { return !isRight(display); };
    const bool isOwed = std::any_of(connected().begin(), connected().end(), isWrong) ||
                        std::any_of(hardware_.unplugged.begin(), hardware_.unplugged.end(), isWrong);
    require(!isOwed || isActive() || observers == 1, "nobody waits for what is owed");
    require(!hasRecord() || isActive() || observers == 1 || hasRefused_, "a record that nobody waits for");
}

void SimulatedComputer::checkOwed() {
    const auto checkAll = [this](const std::vector<Display>& displays) {
        for (const Display& display : displays) {
            if (!isRight(display)) {
                require(isOnRecord(display.id, wishes_.at(display.id).mode),
                        "a mode is lost: it is neither in force nor on record");
            }
        }
    };
    checkAll(connected());
    checkAll(hardware_.unplugged);
}

void SimulatedComputer::checkNothingIsOwed() {
    check();
    require(!hasRecord(), "a record is left");
    for (const Display& display : connected()) require(isRight(display), "a display is not in its own mode");
}

void SimulatedComputer::forgetChangesByHand() {
    if (hasRecord()) return;
    for (auto* displays : {&connected(), &hardware_.unplugged}) {
        for (const Display& display : *displays) wishes_[display.id] = {display.current->id, false};
    }
}

std::string SimulatedComputer::description() {
    std::ostringstream text;
    for (const Display& display : connected())
        text << "display " << display.id << " in mode " << display.current->id << ", ";
    for (const Display& display : hardware_.unplugged) {
        text << "unplugged " << display.id << " in mode " << display.current->id << ", ";
    }
    for (const auto& [key, value] : settings()) text << key << " " << std::get<std::int64_t>(value) << ", ";
    text << (isRunning() ? isActive() ? "active" : "running" : "not running");
    return text.str();
}

std::vector<SimulatedComputer::Display>& SimulatedComputer::connected() {
    return program_ ? program_->scene.world.displays.displays : hardware_.connected;
}

SimulatedComputer::Values& SimulatedComputer::settings() {
    return program_ ? program_->scene.world.defaults.values : hardware_.settings;
}

bool SimulatedComputer::isOnRecord(DisplayID display, std::int32_t mode) {
    const auto holds = [this](const char* key, std::int64_t number) {
        const auto found = settings().find(key);
        return found != settings().end() && found->second == UserDefaults::Value(number);
    };
    return holds(modeKey, mode) && holds(displayKey, std::int64_t{display});
}

bool SimulatedComputer::isRight(const Display& display) const {
    const Wish& wish = wishes_.at(display.id);
    return wish.isChangedByHand || display.current->id == wish.mode;
}

}  // namespace ovin
