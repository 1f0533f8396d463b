#include "tests/contract/LinuxUser.h"

#include <unistd.h>

#include <QApplication>
#include <QDBusConnectionInterface>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QEventLoop>
#include <QKeyEvent>
#include <QMenu>
#include <QMessageBox>
#include <chrono>
#include <cstdlib>
#include <string>

#include "platform/linux/system/DBusCall.h"
#include "platform/linux/views/PressButton.h"
#include "tests/contract/StatusItemProgram.h"

namespace ovin {
namespace {

const QString connectionName = "contract-user";
const QString watcher = "org.kde.StatusNotifierWatcher";
const QString item = "org.kde.StatusNotifierItem";

/// The call of a method at an address.
QDBusMessage callOf(const QString& address, const QString& interface, const QString& method, const QVariantList& arguments) {
    return dbusCall(address.section('/', 0, 0), "/" + address.section('/', 1), interface, method, arguments);
}

std::vector<QWidget*> shownWindows() {
    std::vector<QWidget*> shown;
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible()) shown.push_back(widget);
    }
    return shown;
}

QWidget& onlyWindow() {
    const auto shown = shownWindows();
    require(shown.size() == 1, std::to_string(shown.size()) + " windows are shown.");
    return *shown.front();
}

/// Chooses an entry of the menu that is open; whether there is one.
bool choose(const QString& title) {
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (menu == nullptr) return false;
    for (QAction* const action : menu->actions()) {
        if (QString(action->text()).replace("&&", "&") == title) menu->setActiveAction(action);
    }
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QCoreApplication::sendEvent(menu, &press);
    return true;
}

}  // namespace

LinuxUser::LinuxUser() : bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName)) {}

LinuxUser::~LinuxUser() { QDBusConnection::disconnectFromBus(connectionName); }

/// Who answers may be this program itself, on this thread.
QVariant LinuxUser::property(const QString& address, const QString& interface, const QString& name) {
    const QDBusMessage call = callOf(address, "org.freedesktop.DBus.Properties", "Get", {interface, name});
    QEventLoop loop;
    QVariant value;
    callLater(bus_, call, 1000, &loop, [&](const QDBusMessage& answer) {
        value = answer.arguments().value(0).value<QDBusVariant>().variant();
        loop.quit();
    });
    loop.exec();
    return value;
}

QStringList LinuxUser::addresses() {
    QStringList own;
    for (const QString& address :
         property(watcher + "/StatusNotifierWatcher", watcher, "RegisteredStatusNotifierItems").toStringList()) {
        if (bus_.interface()->servicePid(address.section('/', 0, 0)).value() == static_cast<uint>(getpid())) own << address;
    }
    return own;
}

std::vector<std::string> LinuxUser::items() {
    std::vector<std::string> names;
    for (const QString& address : addresses()) names.push_back(property(address, item, "Title").toString().toStdString());
    return names;
}

void LinuxUser::clickItem(StatusItemClick click) {
    const QString method = click == StatusItemClick::rightMouseUp ? "ContextMenu" : "Activate";
    require(bus_.send(callOf(addresses().value(0), item, method, {30, 40})), "The item cannot be clicked.");
}

void LinuxUser::willChoose(const std::string& title) {
    choice_.callOnTimeout(&choice_, [this, wanted = QString::fromStdString(title)] {
        if (!choose(wanted)) return;
        choice_.stop();
        choice_.disconnect();
    });
    choice_.start(std::chrono::milliseconds(5));
}

std::vector<Alert> LinuxUser::acknowledged() {
    for (QWidget* const window : shownWindows()) {
        auto* const box = qobject_cast<QMessageBox*>(window);
        if (box == nullptr || box->buttons().size() != 1) continue;
        acknowledged_.push_back({box->text().toStdString(), box->informativeText().toStdString()});
        box->buttons().front()->click();
    }
    return acknowledged_;
}

std::vector<Rect> LinuxUser::windows() {
    std::vector<Rect> frames;
    for (const QWidget* const window : shownWindows()) {
        const QPoint origin = window->pos();
        const QSize size = window->size();
        frames.push_back({{double(origin.x()), double(origin.y())}, {double(size.width()), double(size.height())}});
    }
    return frames;
}

void LinuxUser::click(int tag) {
    for (auto* const button : onlyWindow().findChildren<QAbstractButton*>()) {
        auto* const ofView = dynamic_cast<PressButton*>(button);
        if (ofView != nullptr && ofView->tag() == tag) return ofView->click();
    }
    require(false, "There is no such button.");
}

void LinuxUser::moveWindow(Point origin) { onlyWindow().move(qRound(origin.x), qRound(origin.y)); }

void LinuxUser::closeWindow() { onlyWindow().close(); }

void LinuxUser::pressElsewhere(MouseButton button) {
    const std::string number = button == MouseButton::right ? "3" : "1";
    require(std::system(("xdotool mousemove 500 400 click " + number).c_str()) == 0, "The mouse cannot be pressed.");
}

}  // namespace ovin
