// Ovin on the Linux desktop: the only place that chooses a world.

#include <QApplication>
#include <cstdio>

#include "app/ControlItem.h"
#include "ledge/ItemsPanel.h"
#include "platform/linux/LinuxWorld.h"
#include "platform/linux/QtIcons.h"

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
    const ovin::Platform platform = world->platform();
    QApplication::setWindowIcon(ovin::qtIcon(platform.resources.applicationIcon()));
    const auto panel = ovin::ItemsPanel::create(platform);
    const ovin::ControlItem control(platform, *panel);
    return QCoreApplication::exec();
}
