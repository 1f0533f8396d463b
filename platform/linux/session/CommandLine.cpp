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

bool asksAboutTheProgram(std::string_view argument) {
    return argument == "-h" || argument == "--help" || argument == "-v" || argument == "--version";
}

}  // namespace

std::unique_ptr<QCoreApplication> makeApplication(int& argumentCount, char** arguments) {
    if (std::any_of(arguments, arguments + argumentCount, asksAboutTheProgram)) {
        return std::make_unique<QCoreApplication>(argumentCount, arguments);
    }
    return std::make_unique<QApplication>(argumentCount, arguments);
}

std::optional<int> readCommandLine() {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        "Shows the status items that the menu bar has no room for. Started again, it opens them.");
    const QCommandLineOption help({"h", "help"}, "Tells how to use the program.");
    const QCommandLineOption version({"v", "version"}, "Tells the program's version.");
    parser.addOptions({help, version});
    const bool isUnderstood = parser.parse(QCoreApplication::arguments());
    if (!isUnderstood || !parser.positionalArguments().isEmpty()) {
        const QString mistake =
            isUnderstood ? "Unexpected argument: " + parser.positionalArguments().first() : parser.errorText();
        print(stderr, mistake + "\n\n" + parser.helpText());
        return wrongUsage;
    }
    if (parser.isSet(help)) return print(stdout, parser.helpText()), 0;
    if (parser.isSet(version)) {
        print(stdout, QCoreApplication::applicationName() + " " + QCoreApplication::applicationVersion() + "\n");
        return 0;
    }
    return std::nullopt;
}

}  // namespace ovin
