// Ovin on the Linux desktop: the only place that chooses a world.

#include <QApplication>
#include <cstdio>

#include "app/AppDelegate.h"
#include "platform/linux/LinuxWorld.h"

int main(int argumentCount, char** arguments) {
    QApplication application(argumentCount, arguments);
    QCoreApplication::setApplicationName("Ovin");
    QGuiApplication::setDesktopFileName("org.ovin.Ovin");
    // It lives in the menu bar: closing a window is not quitting.
    QGuiApplication::setQuitOnLastWindowClosed(false);

    const auto world = ovin::LinuxWorld::open();
    if (!world) {
        std::fputs("ovin: there is no session bus\n", stderr);
        return 1;
    }
    ovin::AppDelegate delegate(world->platform());
    QObject::connect(&application, &QCoreApplication::aboutToQuit, [&delegate] { delegate.applicationWillTerminate(); });
    delegate.applicationDidFinishLaunching();
    return QCoreApplication::exec();
}
