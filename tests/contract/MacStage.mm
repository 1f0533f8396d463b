#include "tests/contract/MacStage.h"

#import <AppKit/AppKit.h>
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <stdexcept>
#include <thread>
#include <utility>

#include "platform/macos/MacUserDefaults.h"
#include "platform/macos/Strings.h"

/// Programs declare it themselves there.
extern char** environ;

namespace ovin {
namespace {

using namespace std::chrono_literals;

/// Nothing that works takes this long.
constexpr auto longTime = 20s;

/// Where the settings of the stage are.
constexpr std::string_view suite = "org.ovin.contract";

/// Set once, before any stage.
std::string statusItemProgram;

void require(bool holds, const std::string& what) {
    if (!holds) throw std::runtime_error(what);
}

[[noreturn]] void refuse(const char* what) { throw std::logic_error(std::string("A test forgot that nobody can ") + what); }

/// Starts the program of status items, with the given ends of pipes where it reads and writes.
ProcessID startProgram(std::vector<std::string> words, int input, int output) {
    words.insert(words.begin(), statusItemProgram);
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (input >= 0) posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    if (output >= 0) posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
    pid_t pid = 0;
    const int error = posix_spawn(&pid, statusItemProgram.c_str(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    require(error == 0, "The program of status items cannot be started.");
    return pid;
}

std::array<int, 2> makePipe() {
    std::array<int, 2> ends{};
    require(pipe(ends.data()) == 0, "There are no pipes.");
    for (const int end : ends) fcntl(end, F_SETFD, FD_CLOEXEC);
    return ends;
}

}  // namespace

MacStatusItems::MacStatusItems(const std::vector<std::string>& titles) {
    const auto input = makePipe();
    const auto output = makePipe();
    pid_ = startProgram(titles, input[0], output[1]);
    close(input[0]);
    close(output[1]);
    commands_ = input[1];
    output_ = output[0];
    fcntl(output_, F_SETFL, O_NONBLOCK);
}

MacStatusItems::~MacStatusItems() {
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
    close(commands_);
    close(output_);
}

/// Returns when the program has stopped.
void MacStatusItems::setStopped(bool stopped) const {
    kill(pid_, stopped ? SIGSTOP : SIGCONT);
    if (stopped) waitpid(pid_, nullptr, WUNTRACED);
}

/// Titles are of one line.
void MacStatusItems::rename(std::size_t item, const std::string& title) const {
    const std::string command = std::to_string(item) + " " + title + "\n";
    require(write(commands_, command.data(), command.size()) == static_cast<ssize_t>(command.size()),
            "The program of status items takes no command.");
}

std::vector<std::size_t> MacStatusItems::presses() {
    readOutput();
    return presses_;
}

/// A line for each press, with the index of the item.
void MacStatusItems::readOutput() {
    std::array<char, 4096> buffer{};
    for (ssize_t count = 0; (count = read(output_, buffer.data(), buffer.size())) > 0;) {
        unread_.append(buffer.data(), static_cast<std::size_t>(count));
    }
    for (std::size_t end = 0; (end = unread_.find('\n')) != std::string::npos; unread_.erase(0, end + 1)) {
        presses_.push_back(std::stoul(unread_.substr(0, end)));
    }
}

void MacStage::prepareProcess(const std::string& program) {
    statusItemProgram = program;
    [NSApplication.sharedApplication setActivationPolicy:NSApplicationActivationPolicyAccessory];
    [NSApplication.sharedApplication finishLaunching];
}

MacStage::MacStage() {
    [NSUserDefaults.standardUserDefaults removePersistentDomainForName:toNSString(suite)];
    reopenDefaults();
    const DisplayServices& displays = world_.platform().displays;
    firstMode_ = displays.currentMode(displays.mainDisplay());
}

/// The next test finds the display as this one found it.
MacStage::~MacStage() {
    DisplayServices& displays = world_.platform().displays;
    const DisplayID main = displays.mainDisplay();
    if (firstMode_ && displays.currentMode(main) != firstMode_) (void)displays.apply(*firstMode_, main);
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

void MacStage::wait(Duration duration) { std::this_thread::sleep_for(duration); }

WallClock& MacStage::wallClock() { refuse("set an alarm"); }

Stage::Duration MacStage::margin() const { return 900ms; }

bool MacStage::isRunning(ProcessID pid) {
    for (const RunningApplication& application : platform().workspace.runningApplications()) {
        if (application.pid == pid) return true;
    }
    return false;
}

std::size_t MacStage::itemCount(ProcessID pid) {
    const Accessibility& accessibility = platform().accessibility;
    const AttributeAnswer extras =
        accessibility.copyAttributeValue(accessibility.applicationElement(pid), "AXExtrasMenuBar");
    const auto* container = std::get_if<AccessibilityElement>(&extras.value.content);
    if (extras.error != AccessibilityError::success || container == nullptr) return 0;
    const AttributeAnswer children = accessibility.copyAttributeValue(*container, "AXChildren");
    const auto* items = std::get_if<AttributeValue::Array>(&children.value.content);
    return items == nullptr ? 0 : items->size();
}

/// The system names the program after its file, whatever the test would like.
ProcessID MacStage::start(const StagedApplication& application) {
    auto program = std::make_unique<MacStatusItems>(application.itemTitles);
    const ProcessID pid = program->pid();
    applications_[pid] = std::move(program);
    const auto isThere = [&] { return isRunning(pid) && itemCount(pid) == application.itemTitles.size(); };
    require(runUntil(isThere, longTime), "A program of status items does not come.");
    return pid;
}

void MacStage::quit(ProcessID pid) {
    applications_.erase(pid);
    require(runUntil([&] { return !isRunning(pid) && itemCount(pid) == 0; }, longTime), "An application does not go.");
}

/// The system gives no process a number of six digits.
ProcessID MacStage::unusedProcessID() { return 999999; }

void MacStage::setTrusted(bool) { refuse("give trust"); }

void MacStage::reopenDefaults() { defaults_ = makeMacUserDefaults(suite); }

void MacStage::setRefusesChanges(bool) { refuse("keep the preferences from changing"); }

void MacStage::setEnvironment(const std::string& name, const std::optional<std::string>& value) {
    value ? setenv(name.c_str(), value->c_str(), 1) : unsetenv(name.c_str());
}

void MacStage::switchOffLaunchAtLogin() { refuse("switch off a login item"); }

void MacStage::setRefusesLaunchAtLogin(bool) { refuse("refuse a login item"); }

DisplayID MacStage::plugDisplay() { refuse("plug a display in"); }

void MacStage::unplugDisplay(DisplayID) { refuse("unplug a display"); }

void MacStage::mirror(DisplayID) { refuse("mirror a display"); }

void MacStage::switchElsewhere(const DisplayMode& mode) {
    const ProcessID pid = startProgram({"--switch", std::to_string(mode.id)}, -1, -1);
    int status = 0;
    require(waitpid(pid, &status, 0) == pid && status == 0, "Another program cannot switch the display.");
}

Downloads& MacStage::downloads() { refuse("fetch anything"); }

Downloads::Source MacStage::offer(const std::string&) { refuse("offer anything"); }

std::vector<std::string> MacStage::logLines() { refuse("read the log"); }

}  // namespace ovin
