#include "tests/contract/LinuxStage.h"

#include <fcntl.h>
#include <unistd.h>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QEventLoop>
#include <QTimer>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <utility>

#include "platform/linux/displays/LastingIDs.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;

void runTool(const std::string& command) { require(std::system(command.c_str()) == 0, command + " failed"); }

std::vector<std::string> wordsFor(const StagedApplication& application) {
    std::vector<std::string> words{OVIN_STATUS_ITEM, "--commands", "--name", application.name};
    words.insert(words.end(), {"--items", std::to_string(application.itemTitles.size())});
    for (const std::string& title : application.itemTitles) words.insert(words.end(), {"--title", title});
    return words;
}

}  // namespace

LinuxStatusItems::LinuxStatusItems(const StagedApplication& application)
    : StatusItemProgram(wordsFor(application)), count_(application.itemTitles.size()) {}

void LinuxStatusItems::rename(std::size_t item, const std::string& title) {
    command("title " + std::to_string(item + 1) + " " + title);
}

bool LinuxStatusItems::hasItsItems() {
    readOutput();
    return registrations_ == count_;
}

/// "activate 0 0" is the first item, or the only one; "activate 0 0 /StatusNotifierItem/2" is the second.
void LinuxStatusItems::take(const std::string& line) {
    if (line.starts_with("registered")) ++registrations_;
    if (!line.starts_with("activate ")) return;
    const std::string path = line.substr(line.rfind(' ') + 1);
    const std::size_t slash = path.rfind('/');
    const bool isNumbered = slash != std::string::npos && slash > 0;
    addPress(isNumbered ? std::stoul(path.substr(slash + 1)) - 1 : 0);
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

std::optional<std::string> LinuxStage::reasonWithout(Ability ability) const {
    if (ability != Ability::withdrawTrust) return std::nullopt;
    const bool hasBar = QDBusConnection::sessionBus().interface()->isServiceRegistered("org.ovin.MenuBarAgent").value();
    return hasBar ? std::nullopt : std::optional<std::string>("Without a bar that can be read nobody is asked for trust.");
}

Platform LinuxStage::platform() {
    const Platform world = world_->platform();
    return {
        world.accessibility, world.workspace, world.displays, *defaults_,        world.process, world.text,    log_,
        world.clock,         world.mainQueue, world.tasks,    world.application, world.screens, world.windows, world.events,
        world.statusBar,     world.alerts,    launchAtLogin_, world.resources,   world.updates};
}

/// Nothing tells when a condition begins to hold, so this leaves the loop to look at it again and again.
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

std::string LinuxStage::announce(const std::vector<FeedItem>& items) {
    std::string feed = "<rss xmlns:sparkle='http://www.andymatuschak.org/xml-namespaces/sparkle'><channel>";
    for (const FeedItem& item : items) {
        feed += "<item><link>" + item.link + "</link><sparkle:version>" + item.version +
                "</sparkle:version><sparkle:shortVersionString>" + item.shortVersion +
                "</sparkle:shortVersionString><enclosure url='' sparkle:os='linux'/></item>";
    }
    return server_.offer(feed + "</channel></rss>");
}

std::unique_ptr<StatusItemProgram> LinuxStage::launch(const StagedApplication& application) {
    return std::make_unique<LinuxStatusItems>(application);
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
    // The session tells its programs one after the other.
    Accessibility& accessibility = world_->platform().accessibility;
    require(runUntil([&] { return accessibility.isProcessTrusted() == trusted; }, 5s), "Nothing tells of the switch.");
}

void LinuxStage::reopenDefaults() { defaults_ = std::make_unique<FileUserDefaults>(defaultsPath()); }

void LinuxStage::changeDefaultsElsewhere(const std::string& key, const std::optional<UserDefaults::Value>& value) {
    FileUserDefaults other(defaultsPath());
    require(value ? other.set(key, *value) : other.remove(key), "Another program cannot change the settings.");
}

/// Root may write to any folder, but even root cannot put a file in the place of a folder that is not empty.
void LinuxStage::setRefusesChanges(bool refuses) {
    const std::filesystem::path obstacle = defaultsPath().string() + ".new";
    refuses ? void(std::filesystem::create_directories(obstacle / "obstacle")) : void(std::filesystem::remove_all(obstacle));
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
    RandrOutput output;
    output.name = "DUMMY1";
    const DisplayID second = lastingID(output);
    require(runUntil([&] { return displays.bounds(second) != Rect{}; }, longTime), "The second display does not come.");
    return second;
}

/// A command with two connections, one after the other.
void LinuxStage::runCommand() {
    for (int i = 0; i < 2; ++i) {
        runTool("dbus-send --session --print-reply --dest=org.freedesktop.DBus / org.freedesktop.DBus.GetId >/dev/null");
    }
}

void LinuxStage::unplugDisplay(DisplayID) {
    runTool("xrandr --output DUMMY1 --off");
    hasSecondDisplay_ = false;
}

void LinuxStage::mirror(DisplayID) { runTool("xrandr --output DUMMY1 --same-as DUMMY0"); }

void LinuxStage::switchElsewhere(const DisplayMode& mode) {
    std::ostringstream command;
    command << "xrandr --output DUMMY0 --mode " << mode.pixelWidth << 'x' << mode.height * mode.pixelWidth / mode.width;
    runTool(command.str());
}

std::vector<std::string> LinuxStage::logLines() {
    std::ifstream file(folder_.path() / "log", std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line) && !file.eof();) lines.push_back(line);
    return lines;
}

}  // namespace ovin
