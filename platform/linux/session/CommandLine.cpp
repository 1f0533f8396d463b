#include "platform/linux/session/CommandLine.h"

#include <xcb/xcb.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QEvent>
#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "platform/linux/system/WaylandSession.h"

namespace ovin {
namespace {

constexpr int noDisplay = 1;
constexpr int wrongUsage = 2;

/// The toolkit closes all menus when the keyboard leaves the program. It notices that a little after a window has closed,
/// and a menu that has opened since has the keyboard to itself.
class MenuKeepingApplication final : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        // NOLINTNEXTLINE(bugprone-parent-virtual-call): the toolkit does it in between
        if (event->type() == QEvent::ApplicationDeactivate) return QGuiApplication::notify(receiver, event);
        return QApplication::notify(receiver, event);
    }
};

void print(std::FILE* stream, const QString& text) { std::fputs(text.toLocal8Bit().constData(), stream); }

bool needsNoDisplay(std::string_view argument) {
    return argument == "-h" || argument == "--help" || argument == "-v" || argument == "--version" || argument == "--quit";
}

/// Whether it is the user's own decision on what the toolkit shows its windows. A variable that names Wayland's plug-in is
/// none: many set it for all programs of their sessions, also of those that have no Wayland.
bool isPlatformChosen(int count, char** arguments) {
    const auto names = [](std::string_view argument) { return argument == "-platform" || argument == "--platform"; };
    const QByteArray variable = qgetenv("QT_QPA_PLATFORM");
    return !(variable.isEmpty() || variable.startsWith("wayland")) || std::any_of(arguments, arguments + count, names);
}

bool hasXServer() {
    xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
    const bool isThere = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return isThere;
}

/// In a Wayland session the toolkit would take the plug-in that happens to be installed, but only on an X server can windows
/// be placed and kept above others; and without a server the toolkit would abort. As arguments of the toolkit, because
/// programs that this one starts would inherit a variable of the environment. The arguments are replaced by others that last
/// as long as the process.
void choosePlatform(int& count, char**& arguments) {
    if (!hasXServer()) {
        print(stderr, isWaylandSession() ? "ovin: under Wayland Ovin needs XWayland, and there is none in this session\n"
                                         : "ovin: there is no X display\n");
        std::exit(noDisplay);  // NOLINT(concurrency-mt-unsafe): there are no other threads yet
    }
    static std::array<char, 10> option{"-platform"};
    static std::array<char, 4> value{"xcb"};
    static std::vector<char*> all;
    all.assign(arguments, arguments + count);
    all.insert(all.end(), {option.data(), value.data(), nullptr});
    arguments = all.data();
    count += 2;
}

}  // namespace

std::unique_ptr<QCoreApplication> makeApplication(int& argumentCount, char** arguments) {
    if (std::any_of(arguments, arguments + argumentCount, needsNoDisplay)) {
        return std::make_unique<QCoreApplication>(argumentCount, arguments);
    }
    if (!isPlatformChosen(argumentCount, arguments)) choosePlatform(argumentCount, arguments);
    return std::make_unique<MenuKeepingApplication>(argumentCount, arguments);
}

CommandLine readCommandLine(const std::vector<CommandLineAction>& actions) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        "Shows the status items that the menu bar has no room for. Started again, it opens them.\n"
        "The Ovin that runs does what an option says; where none runs, one starts and does it.");
    const QCommandLineOption help({"h", "help"}, "Tells how to use the program.");
    const QCommandLineOption version({"v", "version"}, "Tells the program's version.");
    parser.addOptions({help, version});
    for (const CommandLineAction& action : actions) parser.addOption({action.name, action.help});
    const auto refuse = [&parser](const QString& mistake) {
        print(stderr, mistake + "\n\n" + parser.helpText());
        return CommandLine{wrongUsage, {}};
    };
    if (!parser.parse(QCoreApplication::arguments())) return refuse(parser.errorText());
    if (const QStringList extra = parser.positionalArguments(); !extra.isEmpty()) {
        return refuse("Unexpected argument: " + extra.first());
    }
    if (parser.isSet(help)) return print(stdout, parser.helpText()), CommandLine{0, {}};
    if (parser.isSet(version)) {
        print(stdout, QCoreApplication::applicationName() + " " + QCoreApplication::applicationVersion() + "\n");
        return {0, {}};
    }
    const QStringList chosen = parser.optionNames();
    if (chosen.size() > 1) return refuse("One at a time: " + chosen.join(", "));
    return {{}, chosen.value(0)};
}

}  // namespace ovin
