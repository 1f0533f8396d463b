#include "desktop/ActiveApplication.h"

#include <QCoreApplication>
#include <cstring>

#include "desktop/X11Properties.h"

namespace ovin {
namespace {

constexpr int longestName = 60;

/// The class of a window is two strings, each with a NUL behind it: the instance's name and the application's.
QString applicationName(xcb_window_t window) {
    const auto names = X11Properties::read(window, XCB_ATOM_WM_CLASS).split('\0');
    QString name = QString::fromUtf8(names.value(1)).left(longestName);
    if (!name.isEmpty()) name[0] = name[0].toUpper();
    return name;
}

}  // namespace

ActiveApplication::ActiveApplication()
    : root_(X11Properties::rootWindow()), activeWindow_(X11Properties::atom("_NET_ACTIVE_WINDOW")) {
    QCoreApplication::instance()->installNativeEventFilter(this);
    update();
}

bool ActiveApplication::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
    if (eventType != "xcb_generic_event_t") return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    if ((event->response_type & 0x7F) != XCB_PROPERTY_NOTIFY) return false;
    const auto* change = static_cast<const xcb_property_notify_event_t*>(message);
    if (change->window == root_ && change->atom == activeWindow_) update();
    return false;
}

void ActiveApplication::update() {
    xcb_window_t active = XCB_WINDOW_NONE;
    const QByteArray bytes = X11Properties::read(root_, activeWindow_);
    if (bytes.size() == sizeof active) std::memcpy(&active, bytes.constData(), sizeof active);

    QString name = active == XCB_WINDOW_NONE ? QString() : applicationName(active);
    if (name.isEmpty()) name = QStringLiteral("Desktop");
    if (name == name_) return;
    name_ = name;
    Q_EMIT nameChanged();
}

}  // namespace ovin
