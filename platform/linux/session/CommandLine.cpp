#include "platform/linux/session/CommandLine.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QCoreApplication>
#include <algorithm>
#include <cstdio>
#include <string_view>

namespace ovin {
namespace {

constexpr int wrongUsage = 2;

void print(std::FILE* stream, const QString& text) { std::fputs(text.toLocal8Bit().constData(), stream); }

bool needsNoDisplay(std::string_view argument) {
    return argument == "-h" || argument == "--help" || argument == "-v" || argument == "--version" || argument == "--quit";
}

}  // namespace

std::unique_ptr<QCoreApplication> makeApplication(int& argumentCount, char** arguments) {
    if (std::any_of(arguments, arguments + argumentCount, needsNoDisplay)) {
        return std::make_unique<QCoreApplication>(argumentCount, arguments);
    }
    return std::make_unique<QApplication>(argumentCount, arguments);
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
