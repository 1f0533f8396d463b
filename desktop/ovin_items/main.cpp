// ovin-items: prints the status items that discovery finds in the running session, and presses one on request. It is the
// logic of the application without its windows, to show what that logic sees.

#include <QApplication>
#include <QCommandLineParser>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

#include "discovery/ItemProvider.h"
#include "platform/linux/LinuxWorld.h"
#include "platform/linux/session/CommandLine.h"

namespace {

using ovin::DiscoveredItem;

enum ExitStatus { success = 0, refused = 1, wrongUsage = 2, noSession = 3, notTrusted = 4 };

struct Options {
    bool asJson = false;
    bool requestsTrust = false;
    bool stays = false;
    /// The number of the item to press, from 1.
    std::optional<int> press;
};

int complain(ExitStatus status, const QString& message) {
    std::fprintf(stderr, "ovin-items: %s\n", qPrintable(message));
    return status;
}

/// Control characters would mix up the table, or the terminal.
QString printable(const std::string& text) {
    QString result = QString::fromStdString(text);
    for (QChar& character : result) {
        if (character.category() == QChar::Other_Control) character = QChar::ReplacementCharacter;
    }
    return result;
}

void printTable(const std::vector<DiscoveredItem>& items) {
    if (items.empty()) std::puts("Every item fits in the menu bar");
    int number = 0;
    for (const DiscoveredItem& item : items) {
        const QString title = item.title.empty() ? QString() : " — " + printable(item.title);
        const QString label = item.label ? " [" + printable(*item.label) + "]" : QString();
        std::printf("%3d  %s%s%s (process %d)\n", ++number, qUtf8Printable(printable(item.appName)), qUtf8Printable(title),
                    qUtf8Printable(label), static_cast<int>(item.ownerPID));
    }
}

QJsonValue jsonText(const std::optional<std::string>& text) {
    return text ? QJsonValue(QString::fromStdString(*text)) : QJsonValue(QJsonValue::Null);
}

void printJson(const std::vector<DiscoveredItem>& items) {
    QJsonArray array;
    for (const DiscoveredItem& item : items) {
        array.append(QJsonObject{{"application", QString::fromStdString(item.appName)},
                                 {"bundleIdentifier", jsonText(item.bundleID)},
                                 {"title", QString::fromStdString(item.title)},
                                 {"label", jsonText(item.label)},
                                 {"process", item.ownerPID},
                                 {"identity", QString::fromStdString(item.identity())}});
    }
    std::fputs(QJsonDocument(array).toJson().constData(), stdout);
}

/// Presses an item as the application does, away from the main thread, and stays for as long as its menu is open.
int press(ovin::LinuxWorld& world, const DiscoveredItem& item) {
    const ovin::Platform platform = world.platform();
    int status = refused;
    const auto finish = [&world, &status](bool isPressed) {
        status = isPressed ? success : refused;
        if (!world.menus().isShowing()) QCoreApplication::quit();
    };
    QObject::connect(&world.menus(), &ovin::QtItemMenus::closed, qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    platform.tasks.start(ovin::Tasks::Priority::userInitiated, [platform, item, finish] {
        const bool isPressed = ovin::ItemProvider::activate(platform, item);
        platform.mainQueue.async([finish, isPressed] { finish(isPressed); });
    });
    QCoreApplication::exec();
    return status;
}

int requestTrust(ovin::LinuxWorld& world) {
    const ovin::Platform platform = world.platform();
    ovin::ItemProvider::requestTrust(platform);
    QCoreApplication::exec();
    return ovin::ItemProvider::isTrusted(platform) ? success : notTrusted;
}

int run(ovin::LinuxWorld& world, const Options& options) {
    const ovin::Platform platform = world.platform();
    if (options.requestsTrust) return requestTrust(world);
    world.waitForAnswers();
    if (!ovin::ItemProvider::isTrusted(platform)) {
        return complain(notTrusted, "accessibility is switched off in this session; try --request-trust");
    }
    const auto items = ovin::ItemProvider::discoverItems(platform, ovin::ItemProvider::snapshotApps(platform));
    if (!options.press) {
        options.asJson ? printJson(items) : printTable(items);
        std::fflush(stdout);
        return options.stays ? QCoreApplication::exec() : success;
    }
    if (*options.press > static_cast<int>(items.size())) {
        return complain(wrongUsage, QString("there are only %1 items").arg(items.size()));
    }
    return press(world, items[static_cast<std::size_t>(*options.press - 1)]);
}

/// Nothing, with a message on the standard error stream, when the arguments make no sense.
std::optional<Options> parse(const QCoreApplication& application) {
    QCommandLineParser parser;
    parser.setApplicationDescription("Prints the status items that the menu bar does not draw.");
    parser.addOptions({{"json", "Print JSON."},
                       {"press", "Press the item with this number.", "number"},
                       {"stay", "Keep the session open after printing, until ended."},
                       {"request-trust", "Ask to switch accessibility on."}});
    parser.addHelpOption();
    parser.addVersionOption();
    // The parser itself would end at a mistake with the exit status of a refused press.
    if (!parser.parse(application.arguments())) {
        complain(wrongUsage, parser.errorText());
        return std::nullopt;
    }
    if (parser.isSet("help")) parser.showHelp();
    if (parser.isSet("version")) parser.showVersion();

    Options options{parser.isSet("json"), parser.isSet("request-trust"), parser.isSet("stay"), {}};
    if (!parser.positionalArguments().isEmpty()) {
        complain(wrongUsage, "unexpected argument: " + parser.positionalArguments().constFirst());
        return std::nullopt;
    }
    if (parser.isSet("press")) {
        bool isNumber = false;
        options.press = parser.value("press").toInt(&isNumber);
        if (!isNumber || *options.press < 1) {
            complain(wrongUsage, "not the number of an item: " + parser.value("press"));
            return std::nullopt;
        }
    }
    return options;
}

}  // namespace

int main(int argumentCount, char** arguments) {
    const auto application = ovin::makeApplication(argumentCount, arguments);
    QCoreApplication::setApplicationName("ovin-items");
    QCoreApplication::setApplicationVersion(OVIN_VERSION);
    const auto options = parse(*application);
    if (!options) return wrongUsage;
    const auto world = ovin::LinuxWorld::open();
    if (!world) return complain(noSession, "there is no session bus");
    return run(*world, *options);
}
