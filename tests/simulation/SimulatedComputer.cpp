#include "tests/simulation/SimulatedComputer.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace ovin {
namespace {

using namespace std::chrono_literals;
using Outcome = BeginResult::Outcome;

/// Of each display; the first is the one that it begins in.
const std::vector<std::vector<DisplayMode>> modesOfDisplays{
    {{1, 1512, 982, 3024, true}, {2, 1800, 1169, 3600, true}, {3, 2048, 1330, 2048, true}, {4, 1512, 945, 3024, true}},
    {{5, 1680, 1050, 1680, true}, {2, 2560, 1440, 2560, true}, {3, 1920, 1200, 1920, true}, {6, 1280, 800, 2560, true}}};

/// Wider than what any display begins in, and not wider than what two items make the program choose.
constexpr int roomyWidth = 1700;
constexpr double itemWidth = 600;
constexpr auto timeUntilWarning = 1500ms;

void require(bool holds, const char* what) {
    if (!holds) throw Violation{what};
}

}  // namespace

SimulatedComputer::SimulatedComputer(int displayCount) {
    for (int i = 0; i < displayCount; ++i) {
        const auto& modes = modesOfDisplays.at(static_cast<std::size_t>(i));
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
    buildMenuBar();
    program_->session->onItemsStillDoNotFit = [this] {
        require(isActive(), "a warning without an active session");
        require(startTime_ && program_->scene.world.time.now() >= *startTime_ + timeUntilWarning,
                "a warning that is not of this session, or a second one");
        startTime_.reset();
    };
    end();
}

void SimulatedComputer::begin() {
    const bool isInTheWay = isActive() || isStarting_;
    const bool mightWidenBefore = std::exchange(mayWiden_, true);
    const auto reports = std::make_shared<int>(0);
    const auto isWithinCall = std::make_shared<bool>(true);
    program_->session->begin(
        [this, reports, isWithinCall, isInTheWay, mightWidenBefore, expected = endCount_](const BeginResult& result) {
            require(++*reports == 1, "a second report");
            if (*isWithinCall) {
                require(result.outcome == Outcome::superseded, "a result within the call");
                require(isInTheWay, "superseded, and nothing was in the way");
                mayWiden_ = mightWidenBefore;
                return;
            }
            isStarting_ = false;
            require((result.outcome == Outcome::superseded) == (expected != endCount_), "a report of what has been ended");
            require(result.outcome != Outcome::started || isActive(), "a start without a session");
            if (expected == endCount_) mayWiden_ = false;
            if (result.outcome != Outcome::started) return;
            ++counts.starts;
            startTime_ = program_->scene.world.time.now();
        });
    *isWithinCall = false;
    require(*reports == 1 || !isInTheWay, "two sessions at once");
    isStarting_ = isStarting_ || *reports == 0;
}

void SimulatedComputer::end() {
    ++endCount_;
    mayWiden_ = false;
    startTime_.reset();
    // A session that is ended before its report is never reported.
    if (isActive()) isStarting_ = false;
    mayRestore_ = true;
    program_->session->end();
    mayRestore_ = false;
    require(!isActive(), "an active session after its end");
}

void SimulatedComputer::pass(std::chrono::milliseconds time) { program_->scene.world.time.advance(time); }

void SimulatedComputer::passUntilIdle() { program_->scene.world.time.runUntilIdle(); }

void SimulatedComputer::die() {
    hardware_.connected = std::move(connected());
    hardware_.settings = std::move(settings());
    // The destructors must have no effect.
    MemoryWorld& world = program_->scene.world;
    const auto noEffect = [](EffectMoment) { throw Violation{"an effect of a dead program"}; };
    world.defaults.onEffect = noEffect;
    world.displays.onEffect = noEffect;
    program_.reset();
    ++endCount_;
    mayWiden_ = false;
    mayRestore_ = false;
    isStarting_ = false;
    startTime_.reset();
    if (std::exchange(isSettled_, false)) unsettle();
}

/// The next run of the program cannot know that the record owes nothing.
void SimulatedComputer::unsettle() {
    const auto record = recordIn(settings());
    for (const auto* displays : {&connected(), &hardware_.unplugged}) {
        for (const Display& display : *displays) {
            if (!record || display.id != record->display) continue;
            wishes_[display.id] = {record->mode, display.current->id != record->mode};
        }
    }
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
    const auto before = recordIn(settingsBefore_);
    const auto now = recordIn(settings());
    if (before && now) require(settingsBefore_ == settings(), "a record is overwritten");
    if (before) return checkRemoval(*before);
    if (now) checkNewRecord(*now);
}

void SimulatedComputer::checkNewRecord(const Record& record) {
    require(mayWiden_, "a record without a session that may widen");
    require(!connected().empty() && connected().front().current, "a record without a display");
    const Display& main = connected().front();
    require(record.display == main.id && record.mode == main.current->id,
            "a record of something else than the mode in force");
    isSettled_ = false;
}

void SimulatedComputer::checkRemoval(const Record& record) {
    const Display* display = find(record.display);
    require(isSettled_ || (display != nullptr && display->current->id == record.mode),
            "a record is removed although its mode is not in force");
    isSettled_ = true;
}

void SimulatedComputer::checkModeChange() {
    for (std::size_t i = 0; i < connected().size(); ++i) {
        const Display& display = connected()[i];
        if (display.current == modesBefore_[i]) continue;
        tellOfChange();
        layOut();
        if (isOnRecord(display.id, display.current->id)) {
            require(mayRestore_, "a mode is put back that nobody has asked for");
            require(!isSettled_, "a mode is put back that is not owed any more");
            continue;
        }
        // The mode is a widening then, and the session has what it wanted.
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

void SimulatedComputer::makeMain(std::size_t display) {
    const auto chosen = connected().begin() + static_cast<std::ptrdiff_t>(display);
    std::rotate(connected().begin(), chosen, chosen + 1);
    tellOfChange();
    if (isRunning()) layOut();
}

void SimulatedComputer::plugIn(bool inItsOwnMode, bool underAnotherID) {
    if (hardware_.unplugged.empty()) return;
    Display display = hardware_.unplugged.front();
    hardware_.unplugged.erase(hardware_.unplugged.begin());
    Wish& wish = wishes_[display.id];
    if (underAnotherID) lost_[display.id] = {nextID_, *display.current};
    // To the system a display under another id is another display, which never had the mode that was only for a session.
    if (inItsOwnMode || underAnotherID) {
        display.current = *std::find_if(display.modes.begin(), display.modes.end(),
                                        [&](const DisplayMode& mode) { return mode.id == wish.mode; });
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
    const auto record = recordIn(settings());
    if (!record || find(record->display) != nullptr) return;
    // The display has lost its id, and gets it back along with the mode that it had.
    const Loss& loss = lost_.at(record->display);
    DisplayID id = loss.newID;
    while (lost_.contains(id)) id = lost_.at(id).newID;
    Display& display = *find(id);
    display.id = record->display;
    display.current = loss.mode;
    wishes_[display.id] = {isSettled_ ? loss.mode.id : record->mode, false};
    tellOfChange();
}

void SimulatedComputer::setMirrored(bool isMirrored) {
    for (Display& display : connected()) display.isMirrored = isMirrored;
    tellOfChange();
}

void SimulatedComputer::chooseMode(std::size_t display, std::size_t mode) {
    Display& chosen = connected().at(display);
    chosen.current = chosen.modes.at(mode);
    Wish& wish = wishes_[chosen.id];
    if (isOnRecord(chosen.id, wish.mode) && !isSettled_) {
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
    // A menu bar costs more time than all the rest, so it is built only where something depends on it.
    if (items_ == Items::withoutMenuBar) return;
    scene.launchAgent();
    for (const MemoryElement& item : scene.launchWithItems(512, "App", {"one", "two"})) {
        program_->slots.push_back(scene.addSlot(1000, itemWidth, item));
    }
    scene.world.accessibility.setLatency(512, latency);
    layOut();
}

void SimulatedComputer::layOut() {
    const auto& displays = program_->scene.world.displays.displays;
    const bool hasRoom = !displays.empty() && displays.front().current && displays.front().current->width >= roomyWidth;
    const bool isDrawn = items_ == Items::allDrawn || (items_ == Items::needRoom && hasRoom);
    double x = 1000;
    for (const MemoryElement& slot : program_->slots) {
        slot.setFrame({{x, 0}, {itemWidth, 24}});
        if (isDrawn) x += itemWidth;
    }
}

void SimulatedComputer::tellOfChange() {
    if (!isRunning()) return;
    program_->scene.world.time.happen(noticeDelay ? noticeDelay() : 0ms, [this] {
        mayRestore_ = true;
        program_->scene.world.screens.change();
        mayRestore_ = false;
    });
}

// What is looked at

void SimulatedComputer::check() {
    checkOwed();
    forgetChangesByHand();
    if (!isRunning()) return;
    const auto observers = program_->scene.world.screens.observerCount();
    require(observers <= 1, "more than one observer of the screens");
    require(observers == 0 || (hasRecord() && !isActive() && !isSettled_), "somebody waits for what is not owed");
    require(!isActive() || hasRecord(), "an active session without a record");
    const auto isWrong = [this](const Display& display) { return !isRight(display); };
    const bool isOwed = std::any_of(connected().begin(), connected().end(), isWrong) ||
                        std::any_of(hardware_.unplugged.begin(), hardware_.unplugged.end(), isWrong);
    require(!isOwed || isActive() || observers == 1, "nobody waits for what is owed");
    require(!hasRecord() || isActive() || observers == 1 || isSettled_, "a record that nobody waits for");
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

void SimulatedComputer::checkOrganizingIsPossible() {
    setMirrored(false);
    setItems(Items::neverAllDrawn);
    chooseMode(0, 0);
    passUntilIdle();
    check();
    const long startsBefore = counts.starts;
    begin();
    passUntilIdle();
    require(counts.starts == startsBefore + 1 && isActive(), "organizing is not possible any more");
    require(program_->slots.empty() || !startTime_, "nobody is told that items are still missing");
    check();
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

std::optional<SimulatedComputer::Record> SimulatedComputer::recordIn(const Values& values) {
    const auto mode = values.find(modeKey);
    if (mode == values.end()) return std::nullopt;
    const auto display = values.find(displayKey);
    require(display != values.end(), "a mode is on record without its display");
    return Record{static_cast<DisplayID>(std::get<std::int64_t>(display->second)),
                  static_cast<std::int32_t>(std::get<std::int64_t>(mode->second))};
}

bool SimulatedComputer::isOnRecord(DisplayID display, std::int32_t mode) {
    const auto record = recordIn(settings());
    return record && record->display == display && record->mode == mode;
}

SimulatedComputer::Display* SimulatedComputer::find(DisplayID id) {
    const auto found =
        std::find_if(connected().begin(), connected().end(), [id](const Display& display) { return display.id == id; });
    return found == connected().end() ? nullptr : &*found;
}

bool SimulatedComputer::isRight(const Display& display) const {
    const Wish& wish = wishes_.at(display.id);
    return wish.isChangedByHand || display.current->id == wish.mode;
}

}  // namespace ovin
