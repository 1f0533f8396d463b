// Answers questions about displays, one a line, and carries out changes, through the Linux world; tells of changes of the
// screens as "changed WIDTH HEIGHT VISIBLE-TOP". What it answers begins with the question.

#include <unistd.h>

#include <QApplication>
#include <QSocketNotifier>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>

#include "platform/linux/displays/QtDisplays.h"
#include "platform/linux/displays/QtScreens.h"

namespace ovin {
namespace {

std::string text(const DisplayMode& mode) {
    std::ostringstream stream;
    stream << ' ' << mode.id << ':' << mode.width << 'x' << mode.height << ':' << mode.pixelWidth
           << (mode.isUsableForDesktopGUI ? "" : ":unusable");
    return stream.str();
}

std::string text(const Rect& rect) {
    std::ostringstream stream;
    stream << ' ' << rect.origin.x << ' ' << rect.origin.y << ' ' << rect.size.width << ' ' << rect.size.height;
    return stream.str();
}

std::string answer(QtDisplays& displays, const std::string& question) {
    std::istringstream words(question);
    std::string verb;
    DisplayID display = 0;
    DisplayMode mode;
    words >> verb >> display >> mode.id;
    if (verb == "main") return ' ' + std::to_string(displays.mainDisplay());
    if (verb == "bounds") return text(displays.bounds(display));
    if (verb == "mirrored") return displays.isInMirrorSet(display) ? " yes" : " no";
    if (verb == "current") {
        const auto current = displays.currentMode(display);
        return current ? text(*current) : " none";
    }
    if (verb == "modes") {
        std::string all;
        for (const DisplayMode& each : displays.modes(display)) all += text(each);
        return all;
    }
    if (verb == "apply") return displays.apply(mode.id, display) ? " done" : " refused";
    // From here on nobody answers at the X display.
    if (verb == "lose") setenv("DISPLAY", ":65000", 1);
    return "";
}

void tellChange(const QtScreens& screens) {
    const auto screen = screens.main();
    if (!screen) return void(std::cout << "changed none" << std::endl);
    std::cout << "changed " << screen->frame.size.width << ' ' << screen->frame.size.height << ' '
              << screen->visibleFrame.origin.y << std::endl;
}

}  // namespace
}  // namespace ovin

int main(int argumentCount, char** arguments) {
    const QApplication application(argumentCount, arguments);
    ovin::QtDisplays displays;
    ovin::QtScreens screens;
    const auto observation = screens.observeChanges([&] { ovin::tellChange(screens); });
    std::string unfinished;
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, [&] {
        char part[256];
        const ssize_t count = read(STDIN_FILENO, part, sizeof part);
        if (count <= 0) return QCoreApplication::quit();
        unfinished.append(part, static_cast<std::size_t>(count));
        for (std::size_t end = 0; (end = unfinished.find('\n')) != std::string::npos; unfinished.erase(0, end + 1)) {
            const std::string question = unfinished.substr(0, end);
            std::cout << question << ovin::answer(displays, question) << std::endl;
        }
    });
    return QCoreApplication::exec();
}
