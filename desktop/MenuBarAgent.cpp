#include <QApplication>
#include <QCommandLineParser>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QIcon>
#include <QStandardPaths>

#include "desktop/ActiveApplication.h"
#include "desktop/BarAccessible.h"
#include "desktop/BarWindow.h"
#include "desktop/ColorScheme.h"
#include "desktop/MinuteClock.h"
#include "desktop/StatusNotifierHost.h"
#include "platform/linux/items/StatusNotifierWatcher.h"
#include "platform/linux/system/DBusCall.h"
#include "platform/linux/system/QtMainQueue.h"
#include "platform/linux/system/TerminationSignal.h"

namespace ovin {
namespace {

const QString busName = QStringLiteral("org.ovin.MenuBarAgent");

/// "automatic" unless an option says otherwise.
QString colorChoice(const QApplication& application) {
    const QCommandLineOption dark(QStringLiteral("dark"),
                                  QStringLiteral("A dark bar, whatever the desktop's settings say."));
    const QCommandLineOption light(QStringLiteral("light"), QStringLiteral("A light bar, whatever the settings say."));
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("A menu bar that shows as many status items as fit."));
    parser.addHelpOption();
    parser.addOptions({dark, light});
    parser.process(application);
    if (parser.isSet(dark)) return QStringLiteral("dark");
    return parser.isSet(light) ? QStringLiteral("light") : QStringLiteral("automatic");
}

ItemOrderFile orderFile() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return ItemOrderFile((folder + QStringLiteral("/ovin/menu-bar-order")).toStdString());
}

/// The accessibility bus starts when a program asks for it. The toolkit then joins it, but does not ask.
void startAccessibilityBus(const QDBusConnection& bus, QObject& context) {
    auto question = dbusCall(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"), QStringLiteral("org.a11y.Bus"),
                             QStringLiteral("GetAddress"));
    question.setAutoStartService(true);
    callLater(bus, question, untilAnswered, &context, [](const QDBusMessage&) {});
}

void setUpLooks() {
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setFont(BarPainter::font(QFont::Normal));
    QIcon::setFallbackThemeName(QStringLiteral("Adwaita"));
}

int run(QApplication& application, TerminationSignal& termination) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !bus.registerService(busName)) {
        qCritical(bus.isConnected() ? "A menu bar is running already" : "There is no session bus");
        return 1;
    }
    setUpLooks();
    ColorScheme scheme(bus, colorChoice(application));
    StatusNotifierHost host(bus, orderFile());
    QtMainQueue mainQueue;
    const StatusNotifierWatcher watcher(bus, mainQueue, WatcherClaim::Begin::asBar);
    if (!watcher.isOwner()) qWarning("Another program is the watcher of the status items; showing its items");
    ActiveApplication active;
    MinuteClock clock;
    BarAccessible::install();
    BarWindow bar(host, active, clock);
    startAccessibilityBus(bus, application);
    termination.listen();
    QObject::connect(&termination, &TerminationSignal::received, &application, &QCoreApplication::quit);
    bar.open();
    return QApplication::exec();
}

}  // namespace
}  // namespace ovin

int main(int argc, char** argv) {
    ovin::TerminationSignal termination;
    qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
    qputenv("QT_QPA_PLATFORM", "xcb");
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("MenuBarAgent"));
    QApplication::setQuitOnLastWindowClosed(false);
    return ovin::run(application, termination);
}
