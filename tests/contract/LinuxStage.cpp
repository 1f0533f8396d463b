#include "tests/contract/LinuxStage.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QEventLoop>
#include <QTimer>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <system_error>
#include <thread>
#include <utility>

namespace ovin {
namespace {

using namespace std::chrono_literals;

/// Nothing that works takes this long.
constexpr auto longTime = 20s;

void require(bool holds, const std::string& what) {
    if (!holds) throw std::runtime_error(what);
}

/// The letter by which the kernel names what a process is doing.
char processState(ProcessID pid) {
    std::ifstream file("/proc/" + std::to_string(pid) + "/stat");
    std::string text;
    std::getline(file, text);
    const std::size_t state = text.rfind(')') + 2;
    return state < text.size() ? text[state] : 'X';
}

void runTool(const std::string& command) { require(std::system(command.c_str()) == 0, command + " failed"); }

}  // namespace

StatusItemProcess::StatusItemProcess(const std::string& name, const std::vector<std::string>& titles) {
    std::vector<std::string> words{OVIN_STATUS_ITEM, "--commands", "--name", name, "--items", std::to_string(titles.size())};
    for (const std::string& title : titles) words.insert(words.end(), {"--title", title});
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);

    int input[2];
    int output[2];
    require(pipe2(input, O_CLOEXEC) == 0 && pipe2(output, O_CLOEXEC) == 0, "There are no pipes.");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output[1], STDOUT_FILENO);
    const int error = posix_spawn(&pid_, OVIN_STATUS_ITEM, &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(input[0]);
    close(output[1]);
    commands_ = input[1];
    output_ = output[0];
    fcntl(output_, F_SETFL, O_NONBLOCK);
    require(error == 0, "status-item cannot be started.");
}

StatusItemProcess::~StatusItemProcess() {
    kill(pid_, SIGKILL);
    waitpid(pid_, nullptr, 0);
    close(commands_);
    close(output_);
}

void StatusItemProcess::setStopped(bool stopped) const {
    kill(pid_, stopped ? SIGSTOP : SIGCONT);
    while (stopped && processState(pid_) != 'T') std::this_thread::sleep_for(1ms);
}

void StatusItemProcess::rename(std::size_t item, const std::string& title) const {
    const std::string command = "title " + std::to_string(item + 1) + " " + title + "\n";
    require(write(commands_, command.data(), command.size()) == static_cast<ssize_t>(command.size()),
            "status-item takes no command.");
}

std::size_t StatusItemProcess::registrations() {
    readOutput();
    return registrations_;
}

std::vector<std::size_t> StatusItemProcess::presses() {
    readOutput();
    return presses_;
}

void StatusItemProcess::readOutput() {
    char buffer[4096];
    for (ssize_t count = 0; (count = read(output_, buffer, sizeof buffer)) > 0;) {
        unfinishedLine_.append(buffer, static_cast<std::size_t>(count));
    }
    for (std::size_t end = 0; (end = unfinishedLine_.find('\n')) != std::string::npos; unfinishedLine_.erase(0, end + 1)) {
        take(unfinishedLine_.substr(0, end));
    }
}

/// "activate 0 0" is the first item, or the only one; "activate 0 0 /StatusNotifierItem/2" is the second.
void StatusItemProcess::take(const std::string& line) {
    if (line.starts_with("registered")) ++registrations_;
    if (!line.starts_with("activate ")) return;
    const std::string path = line.substr(line.rfind(' ') + 1);
    const std::size_t slash = path.rfind('/');
    const bool isNumbered = slash != std::string::npos && slash > 0;
    presses_.push_back(isNumbered ? std::stoul(path.substr(slash + 1)) - 1 : 0);
}

LinuxStage::LinuxStage()
    : logFile_(open((folder_.path() / "log").c_str(), O_RDWR | O_CREAT | O_APPEND | O_CLOEXEC, 0600)),
      launchAtLogin_([this] { return autostartPlaces(); }),
      log_(logFile_) {
    setTrusted(true);
    world_ = LinuxWorld::open();
    require(world_ != nullptr, "There is no session bus.");
    require(world_->platform().accessibility.isProcessTrusted(), "Accessibility is not to be had here.");
    reopenDefaults();
    const DisplayServices& displays = world_->platform().displays;
    firstMode_ = displays.currentMode(displays.mainDisplay()).value();
}

LinuxStage::~LinuxStage() {
    putDisplaysBack();
    world_.reset();
    close(logFile_);
}

Platform LinuxStage::platform() {
    const Platform world = world_->platform();
    return {
        world.accessibility, world.workspace, world.displays, *defaults_,        world.process, world.text,    log_,
        world.clock,         world.mainQueue, world.tasks,    world.application, world.screens, world.windows, world.events,
        world.statusBar,     world.alerts,    launchAtLogin_, world.resources,   world.updates};
}

/// Nothing tells that a condition has come to hold, so the loop is left to look at it again and again.
bool LinuxStage::runUntil(const std::function<bool()>& condition, Duration limit) {
    const auto end = std::chrono::steady_clock::now() + limit;
    bool holds = condition();
    if (holds) return true;
    QEventLoop loop;
    QTimer look;
    look.setTimerType(Qt::PreciseTimer);
    QObject::connect(&look, &QTimer::timeout, &loop, [&] {
        holds = condition();
        if (holds || std::chrono::steady_clock::now() >= end) loop.quit();
    });
    look.start(1ms);
    loop.exec();
    return holds;
}

Downloads::Source LinuxStage::offer(const std::string& text) { return {server_.offer(text), true}; }

void LinuxStage::wait(Duration duration) { std::this_thread::sleep_for(duration); }

/// The machine may be busy with a compiler; many waiting threads start one after the other then.
Stage::Duration LinuxStage::margin() const { return 900ms; }

bool LinuxStage::isRunning(ProcessID pid) {
    for (const RunningApplication& application : platform().workspace.runningApplications()) {
        if (application.pid == pid) return true;
    }
    return false;
}

std::size_t LinuxStage::itemCount(ProcessID pid) {
    const Accessibility& accessibility = platform().accessibility;
    const AttributeAnswer extras =
        accessibility.copyAttributeValue(accessibility.applicationElement(pid), "AXExtrasMenuBar");
    const auto* container = std::get_if<AccessibilityElement>(&extras.value.content);
    if (extras.error != AccessibilityError::success || container == nullptr) return 0;
    const AttributeAnswer children = accessibility.copyAttributeValue(*container, "AXChildren");
    const auto* items = std::get_if<AttributeValue::Array>(&children.value.content);
    return items == nullptr ? 0 : items->size();
}

ProcessID LinuxStage::start(const StagedApplication& application) {
    auto process = std::make_unique<StatusItemProcess>(application.name, application.itemTitles);
    StatusItemProcess& started = *process;
    const ProcessID pid = started.pid();
    applications_[pid] = std::move(process);
    const std::size_t count = application.itemTitles.size();
    const auto isThere = [&] { return started.registrations() == count && isRunning(pid) && itemCount(pid) == count; };
    require(runUntil(isThere, longTime), application.name + " does not come.");
    return pid;
}

void LinuxStage::quit(ProcessID pid) {
    applications_.erase(pid);
    require(runUntil([&] { return !isRunning(pid) && itemCount(pid) == 0; }, longTime), "An application does not go.");
}

ProcessID LinuxStage::unusedProcessID() {
    std::ifstream file("/proc/sys/kernel/pid_max");
    ProcessID most = 0;
    file >> most;
    return most + 1;
}

void LinuxStage::setTrusted(bool trusted) {
    auto call = QDBusMessage::createMethodCall("org.a11y.Bus", "/org/a11y/bus", "org.freedesktop.DBus.Properties", "Set");
    call.setArguments({"org.a11y.Status", "IsEnabled", QVariant::fromValue(QDBusVariant(trusted))});
    const QDBusMessage answer = QDBusConnection::sessionBus().call(call);
    require(answer.type() == QDBusMessage::ReplyMessage, "Accessibility cannot be switched.");
    if (!world_) return;
    // The session tells everybody, one after the other.
    Accessibility& accessibility = world_->platform().accessibility;
    require(runUntil([&] { return accessibility.isProcessTrusted() == trusted; }, 5s), "Nothing tells of the switch.");
}

void LinuxStage::reopenDefaults() { defaults_ = std::make_unique<FileUserDefaults>(defaultsPath()); }

/// Whoever runs as root may write to any folder, but nobody writes a file where a folder is that is not empty.
void LinuxStage::setRefusesChanges(bool refuses) {
    const std::filesystem::path obstacle = defaultsPath().string() + ".new";
    refuses ? void(std::filesystem::create_directories(obstacle / "obstacle")) : void(std::filesystem::remove_all(obstacle));
}

void LinuxStage::setEnvironment(const std::string& name, const std::optional<std::string>& value) {
    value ? setenv(name.c_str(), value->c_str(), 1) : unsetenv(name.c_str());
}

/// This program and its desktop, with entries in a folder of the stage's own.
AutostartPlaces LinuxStage::autostartPlaces() const {
    AutostartPlaces places = ovin::autostartPlaces();
    places.userFolder = folder_.path() / "autostart";
    places.systemFolders.clear();
    return places;
}

/// As the settings of desktops do it.
void LinuxStage::switchOffLaunchAtLogin() {
    std::ofstream(autostartPlaces().userFolder / "org.ovin.Ovin.desktop", std::ios::app) << "Hidden=true\n";
}

/// As with settings, a file in place of a folder stops root too.
void LinuxStage::setRefusesLaunchAtLogin(bool refuses) {
    const std::filesystem::path folder = autostartPlaces().userFolder;
    std::filesystem::remove_all(folder);
    if (refuses) std::ofstream(folder) << "in the way";
}

/// The next test finds the desktop as this one found it.
void LinuxStage::putDisplaysBack() {
    const DisplayServices& displays = world_->platform().displays;
    if (hasSecondDisplay_) unplugDisplay(0);
    if (displays.currentMode(displays.mainDisplay()) != firstMode_) switchElsewhere(firstMode_);
}

DisplayID LinuxStage::plugDisplay() {
    hasSecondDisplay_ = true;
    const DisplayServices& displays = platform().displays;
    runTool("xrandr >/dev/null && xrandr --addmode DUMMY1 1920x1080");
    runTool("xrandr --output DUMMY1 --mode 1920x1080 --right-of DUMMY0");
    DisplayID second = 0;
    // Ids are small, so that the new one is to be found without knowing how.
    const auto isThere = [&] {
        for (DisplayID id = 1; id < 4096 && second == 0; ++id) {
            if (id != displays.mainDisplay() && displays.bounds(id) != Rect{}) second = id;
        }
        return second != 0;
    };
    require(runUntil(isThere, longTime), "The second display does not come.");
    return second;
}

void LinuxStage::unplugDisplay(DisplayID) {
    runTool("xrandr --output DUMMY1 --off");
    hasSecondDisplay_ = false;
}

void LinuxStage::mirror(DisplayID) { runTool("xrandr --output DUMMY1 --same-as DUMMY0"); }

void LinuxStage::switchElsewhere(const DisplayMode& mode) {
    std::ostringstream command;
    command << "xrandr --output DUMMY0 --mode 0x" << std::hex << mode.id;
    runTool(command.str());
}

std::vector<std::string> LinuxStage::logLines() {
    std::ifstream file(folder_.path() / "log", std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line) && !file.eof();) lines.push_back(line);
    return lines;
}

}  // namespace ovin
