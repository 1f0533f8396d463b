// How long discoveries take with real programs on a real desktop. Runs within desktop/private-desktop; docs/benchmarks.md
// tells how, and holds the results.

#include <signal.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "bench/PipelinedRead.h"
#include "discovery/ItemProvider.h"
#include "discovery/ItemScan.h"
#include "discovery/MenuBarGeometry.h"
#include "platform/linux/LinuxWorld.h"
#include "platform/linux/accessibility/AccessibilityBus.h"
#include "platform/linux/system/Bus.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr double discoveryLimit = 300;

struct Options {
    int runs = 20;
    std::size_t hung = 0;
    QString json;
};

/// The status items among the processes of the private desktop.
std::vector<pid_t> statusItemProcesses() {
    const char* list = std::getenv("OVIN_DESKTOP_PIDS");
    std::ifstream file(list != nullptr ? list : "");
    std::vector<pid_t> processes;
    pid_t pid = 0;
    for (std::string name; file >> pid && std::getline(file, name);) {
        if (name.starts_with(" status item ")) processes.push_back(pid);
    }
    return processes;
}

/// The last programs, stopped for as long as this lives.
class StoppedPrograms {
public:
    explicit StoppedPrograms(std::size_t count) : processes_(statusItemProcesses()) {
        if (processes_.size() > count) processes_.erase(processes_.begin(), processes_.end() - static_cast<int>(count));
        for (const pid_t process : processes_) kill(process, SIGSTOP);
    }
    ~StoppedPrograms() {
        for (const pid_t process : processes_) kill(process, SIGCONT);
    }
    StoppedPrograms(const StoppedPrograms&) = delete;
    StoppedPrograms& operator=(const StoppedPrograms&) = delete;

private:
    std::vector<pid_t> processes_;
};

struct Times {
    std::vector<double> all;

    void add(const std::function<void()>& work) {
        const auto start = std::chrono::steady_clock::now();
        work();
        all.push_back(Milliseconds(std::chrono::steady_clock::now() - start).count());
    }
    [[nodiscard]] double median() const {
        std::vector<double> sorted = all;
        std::sort(sorted.begin(), sorted.end());
        return (sorted[(sorted.size() - 1) / 2] + sorted[sorted.size() / 2]) / 2;
    }
    [[nodiscard]] double slowest() const { return *std::max_element(all.begin(), all.end()); }
};

struct Series {
    std::string name;
    const Times& times;
};

/// A table for people and, where a file is named, the same for programs.
void report(const std::vector<Series>& rows, const QString& file) {
    std::puts("\n| | median | slowest |\n|---|---|---|");
    QJsonObject figures;
    for (const auto& [name, times] : rows) {
        std::printf("| %s | %.2f ms | %.2f ms |\n", name.c_str(), times.median(), times.slowest());
        figures[QString::fromStdString(name)] = QJsonObject{
            {"runs", static_cast<int>(times.all.size())}, {"median_ms", times.median()}, {"slowest_ms", times.slowest()}};
    }
    if (file.isEmpty()) return;
    const QByteArray text = QJsonDocument(figures).toJson();
    QFile output(file);
    if (output.open(QIODevice::WriteOnly) && output.write(text) == text.size() && output.flush()) return;
    std::fprintf(stderr, "desktop_bench: %s cannot be written\n", qPrintable(file));
    std::exit(1);
}

void printRatio(const char* what, const Times& measured, const Times& reference) {
    std::printf("%s: %.2f\n", what, measured.median() / reference.median());
}

/// As the user does in reply to the program's request.
bool trust() {
    const auto session = Bus::connect();
    if (!session) return false;
    AccessibilityBus bus(*session);
    bus.enable();
    for (int i = 0; i < 100 && !bus.isEnabled(); ++i) std::this_thread::sleep_for(50ms);
    return bus.isEnabled();
}

/// Without a menu bar agent the items find a watcher only now, and register one after the other.
void waitForItems(const Platform& platform, std::size_t count) {
    const auto deadline = std::chrono::steady_clock::now() + 15s;
    while (scanItems(platform, ItemProvider::snapshotApps(platform)).size() < count) {
        if (std::chrono::steady_clock::now() > deadline) {
            std::fputs("desktop_bench: not all status items have registered\n", stderr);
            std::exit(1);
        }
        std::this_thread::sleep_for(50ms);
    }
    // The bar is still drawing the last items.
    std::this_thread::sleep_for(1s);
}

/// The reference: one program after the other.
void scanOneByOne(const Platform& platform, const std::vector<AppInfo>& apps) {
    for (const AppInfo& app : apps) (void)scanItems(platform, {app});
}

bool measureHung(const Platform& platform, const Options& options) {
    const auto apps = ItemProvider::snapshotApps(platform);
    const StoppedPrograms stopped(options.hung);
    Times times;
    std::size_t undrawn = 0;
    for (int run = 0; run < options.runs; ++run) {
        times.add([&] { undrawn = ItemProvider::discoverItems(platform, apps).size(); });
    }
    Times serial;
    serial.add([&] { scanOneByOne(platform, apps); });
    std::printf("%zu undrawn items found, %zu programs stopped\n", undrawn, options.hung);
    report({{"reference: one program after the other", serial}, {"whole discovery", times}}, options.json);
    return times.slowest() <= discoveryLimit;
}

/// Discoveries and references take turns, so that other work of the machine slows all of them alike.
bool measureAnswering(const Platform& platform, const Options& options) {
    const auto apps = ItemProvider::snapshotApps(platform);
    PipelinedRead reference;
    Times items, bar, both, serial, scan, snapshot, whole;
    std::size_t undrawn = 0;
    std::size_t answers = 0;
    for (int run = 0; run < options.runs; ++run) {
        items.add([&] { reference.askItems(), answers = reference.finish(); });
        serial.add([&] { scanOneByOne(platform, apps); });
        scan.add([&] { (void)scanItems(platform, apps); });
        if (reference.hasAgent()) {
            bar.add([&] { reference.askBar(), answers += reference.finish(); });
            snapshot.add([&] { (void)MenuBarGeometry::snapshot(platform); });
            both.add([&] { reference.askItems(), reference.askBar(), (void)reference.finish(); });
        }
        whole.add([&] { undrawn = ItemProvider::discoverItems(platform, apps).size(); });
    }
    std::printf("%zu items, %zu answers to the reference, %zu undrawn items found\n", reference.itemCount(), answers,
                undrawn);
    std::vector<Series> rows{{"reference: the items' properties", items}};
    if (reference.hasAgent()) {
        rows.push_back({"reference: the bar's slots", bar});
        rows.push_back({"reference: both at once", both});
    }
    rows.push_back({"reference: one program after the other", serial});
    rows.push_back({"scan of the items", scan});
    if (reference.hasAgent()) rows.push_back({"snapshot of the bar", snapshot});
    rows.push_back({"whole discovery", whole});
    report(rows, options.json);
    std::puts("");
    printRatio("scan / items' properties", scan, items);
    printRatio("whole discovery / items' properties", whole, items);
    if (reference.hasAgent()) {
        printRatio("snapshot / bar's slots", snapshot, bar);
        printRatio("whole discovery / both at once", whole, both);
    }
    return true;
}

Options parse(const QCoreApplication& application) {
    QCommandLineParser parser;
    parser.setApplicationDescription("Measures discoveries; to be run in desktop/private-desktop.");
    parser.addOptions({{"hung", "Stop this many of the status items' programs.", "count", "0"},
                       {"runs", "Repeat everything so many times.", "count", "20"},
                       {"json", "Also write the figures to this file.", "file"}});
    parser.addHelpOption();
    parser.process(application);
    return {std::max(1, parser.value("runs").toInt()), static_cast<std::size_t>(parser.value("hung").toUInt()),
            parser.value("json")};
}

}  // namespace
}  // namespace ovin

int main(int argumentCount, char** arguments) {
    QApplication application(argumentCount, arguments);
    const auto options = ovin::parse(application);
    const auto expected = ovin::statusItemProcesses().size();
    const auto world = ovin::trust() ? ovin::LinuxWorld::open() : nullptr;
    if (!world || expected == 0) {
        std::fputs("desktop_bench: to be run as desktop/private-desktop --items 80 -- desktop_bench\n", stderr);
        return 2;
    }
    const ovin::Platform platform = world->platform();
    bool isWithinLimit = false;
    // Away from the main thread, as in the application.
    platform.tasks.start(ovin::Tasks::Priority::userInitiated, [&] {
        ovin::waitForItems(platform, expected);
        isWithinLimit = options.hung > 0 ? measureHung(platform, options) : measureAnswering(platform, options);
        platform.mainQueue.async([] { QCoreApplication::quit(); });
    });
    QApplication::exec();
    return isWithinLimit ? 0 : 1;
}
