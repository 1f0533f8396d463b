#include "platform/linux/displays/ScreenChanges.h"

#include <QtGui/qguiapplication_platform.h>
#include <xcb/randr.h>

#include <QGuiApplication>
#include <QScreen>

namespace ovin {
namespace {

int firstRandrEvent() {
    auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr || x11->connection() == nullptr) return 0;
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(x11->connection(), &xcb_randr_id);
    return extension == nullptr || extension->present == 0 ? 0 : extension->first_event;
}

}  // namespace

ScreenChanges::ScreenChanges() : firstEvent_(firstRandrEvent()) {
    // For one change the X server sends several events: of its screen's size, of a CRTC, of an output. They come together;
    // `changed` is emitted once, after the last of them.
    burst_.setSingleShot(true);
    burst_.setInterval(0);
    connect(&burst_, &QTimer::timeout, this, &ScreenChanges::changed);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, &ScreenChanges::watch);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, &ScreenChanges::note);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &ScreenChanges::note);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &ScreenChanges::note);
    for (QScreen* screen : QGuiApplication::screens()) watch(screen);
    if (firstEvent_ != 0) qGuiApp->installNativeEventFilter(this);
}

ScreenChanges::~ScreenChanges() {
    if (firstEvent_ != 0 && qGuiApp != nullptr) qGuiApp->removeNativeEventFilter(this);
}

void ScreenChanges::watch(QScreen* screen) {
    connect(screen, &QScreen::geometryChanged, this, &ScreenChanges::note);
    connect(screen, &QScreen::availableGeometryChanged, this, &ScreenChanges::note);
    connect(screen, &QScreen::logicalDotsPerInchChanged, this, &ScreenChanges::note);
}

/// The toolkit has selected these events, and handles them after this filter.
bool ScreenChanges::nativeEventFilter(const QByteArray& type, void* message, qintptr*) {
    if (type != "xcb_generic_event_t") return false;
    const int event = static_cast<const xcb_generic_event_t*>(message)->response_type & 0x7f;
    if (event == firstEvent_ + XCB_RANDR_SCREEN_CHANGE_NOTIFY || event == firstEvent_ + XCB_RANDR_NOTIFY) note();
    return false;
}

void ScreenChanges::note() { burst_.start(); }

}  // namespace ovin
