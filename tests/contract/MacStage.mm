#include "tests/contract/MacStage.h"

#import <AppKit/AppKit.h>
#include <sys/wait.h>

#include <chrono>
#include <stdexcept>

#include "platform/macos/system/MacUserDefaults.h"
#include "platform/macos/system/Strings.h"
#include "tests/contract/MacUser.h"

namespace ovin {
namespace {

/// Where the settings of the stage are.
constexpr std::string_view suite = "org.ovin.contract";

/// Set once, before any stage.
std::string statusItemProgram;

[[noreturn]] void refuse(const char* what) { throw std::logic_error(std::string("A test forgot that nobody can ") + what); }

std::vector<std::string> wordsFor(const std::vector<std::string>& titles) {
    std::vector<std::string> words{statusItemProgram};
    words.insert(words.end(), titles.begin(), titles.end());
    return words;
}

}  // namespace

MacStatusItems::MacStatusItems(const std::vector<std::string>& titles) : StatusItemProgram(wordsFor(titles)) {}

void MacStatusItems::rename(std::size_t item, const std::string& title) { command(std::to_string(item) + " " + title); }

/// The index of an item that was pressed.
void MacStatusItems::take(const std::string& line) { addPress(std::stoul(line)); }

void MacStage::prepareProcess(const std::string& program) {
    statusItemProgram = program;
    [NSApplication.sharedApplication setActivationPolicy:NSApplicationActivationPolicyAccessory];
    [NSApplication.sharedApplication finishLaunching];
}

MacStage::MacStage() : user_(std::make_unique<MacUser>()) {
    [NSUserDefaults.standardUserDefaults removePersistentDomainForName:toNSString(suite)];
    reopenDefaults();
    const DisplayServices& displays = world_.platform().displays;
    firstMode_ = displays.currentMode(displays.mainDisplay());
}

/// The next test finds the display as this one found it.
MacStage::~MacStage() {
    DisplayServices& displays = world_.platform().displays;
    const DisplayID main = displays.mainDisplay();
    if (firstMode_ && displays.currentMode(main) != firstMode_) (void)displays.apply(firstMode_->id, main);
}

std::optional<std::string> MacStage::reasonWithout(Ability ability) const {
    switch (ability) {
        case Ability::withdrawTrust:
            return "Only the user gives and takes trust.";
        case Ability::refuseChanges:
            return "Nobody can keep the system's preferences from changing.";
        case Ability::unplugDisplays:
            return "There is no second display to be had.";
        case Ability::readLog:
            return "What the unified log has taken in is not to be read at once.";
        case Ability::changeLoginItems:
            return "Only an application in a signed bundle can start at login, and only the user switches it off.";
        case Ability::haveResources:
            return "Pictures and versions are in a bundle, which a program of tests does not have.";
        case Ability::makeUpdates:
            return "Updates are a framework's, which fetches and waits by itself, and only within a bundle.";
        case Ability::pressMouse:
            return "A press would hit what somebody has open.";
        case Ability::hangApplications:
        case Ability::reportPresses:
        case Ability::renameItems:
        case Ability::setEnvironment:
            return std::nullopt;
    }
    return std::nullopt;
}

Platform MacStage::platform() {
    const Platform world = world_.platform();
    return {world.accessibility, world.workspace,     world.displays,  *defaults_,      world.process,
            world.text,          world.log,           world.clock,     world.mainQueue, world.tasks,
            world.application,   world.screens,       world.windows,   world.events,    world.statusBar,
            world.alerts,        world.launchAtLogin, world.resources, world.updates};
}

/// As the application object itself would run: what the system tells comes as events.
bool MacStage::runUntil(const std::function<bool()>& condition, Duration limit) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= end) return false;
        @autoreleasepool {
            NSEvent* event = [NSApp nextEventMatchingMask:NSEventMaskAny
                                                untilDate:[NSDate dateWithTimeIntervalSinceNow:0.005]
                                                   inMode:NSDefaultRunLoopMode
                                                  dequeue:YES];
            if (event != nil) [NSApp sendEvent:event];
        }
    }
    return true;
}

WallClock& MacStage::wallClock() { refuse("set an alarm"); }

/// The system names the program after its file, so the test cannot choose the name.
std::unique_ptr<StatusItemProgram> MacStage::launch(const StagedApplication& application) {
    return std::make_unique<MacStatusItems>(application.itemTitles);
}

/// The system gives no process a number of six digits.
ProcessID MacStage::unusedProcessID() { return 999999; }

void MacStage::runCommand() { waitpid(startProgram({"/usr/bin/true"}, -1, -1), nullptr, 0); }

void MacStage::setTrusted(bool) { refuse("give trust"); }

void MacStage::reopenDefaults() { defaults_ = makeMacUserDefaults(suite); }

void MacStage::changeDefaultsElsewhere(const std::string& key, const std::optional<UserDefaults::Value>& value) {
    const auto other = makeMacUserDefaults(suite);
    require(value ? other->set(key, *value) : other->remove(key), "Another program cannot change the settings.");
}

void MacStage::setRefusesChanges(bool) { refuse("keep the preferences from changing"); }

void MacStage::switchOffLaunchAtLogin() { refuse("switch off a login item"); }

void MacStage::setRefusesLaunchAtLogin(bool) { refuse("refuse a login item"); }

DisplayID MacStage::plugDisplay() { refuse("plug a display in"); }

void MacStage::unplugDisplay(DisplayID) { refuse("unplug a display"); }

void MacStage::mirror(DisplayID) { refuse("mirror a display"); }

void MacStage::switchElsewhere(const DisplayMode& mode) {
    const ProcessID pid = startProgram({statusItemProgram, "--switch", std::to_string(mode.id)}, -1, -1);
    int status = 0;
    require(waitpid(pid, &status, 0) == pid && status == 0, "Another program cannot switch the display.");
}

UpdateFeed& MacStage::updateFeed() { refuse("read a feed"); }

std::string MacStage::announce(const std::vector<FeedItem>&) { refuse("announce anything"); }

std::vector<std::string> MacStage::logLines() { refuse("read the log"); }

}  // namespace ovin
