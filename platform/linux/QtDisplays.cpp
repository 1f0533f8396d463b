#include "platform/linux/QtDisplays.h"

#include <QGuiApplication>
#include <QScreen>

namespace ovin {

QtDisplays::QtDisplays() {
    connect(qGuiApp, &QGuiApplication::screenAdded, this, &QtDisplays::watch);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &QtDisplays::refresh, Qt::QueuedConnection);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &QtDisplays::refresh);
    for (QScreen* screen : QGuiApplication::screens()) watch(screen);
}

DisplayID QtDisplays::mainDisplay() const {
    const std::lock_guard lock(mutex_);
    return main_;
}

Rect QtDisplays::bounds(DisplayID display) const {
    const std::lock_guard lock(mutex_);
    const auto found = bounds_.find(display);
    return found == bounds_.end() ? Rect{} : found->second;
}

void QtDisplays::watch(QScreen* screen) {
    connect(screen, &QScreen::geometryChanged, this, &QtDisplays::refresh);
    refresh();
}

void QtDisplays::refresh() {
    const std::lock_guard lock(mutex_);
    bounds_.clear();
    main_ = 0;
    for (const QScreen* screen : QGuiApplication::screens()) {
        // An output keeps its id when it is plugged in again.
        const DisplayID id = ids_.emplace(screen->name(), static_cast<DisplayID>(ids_.size() + 1)).first->second;
        const QRectF geometry = screen->geometry();
        bounds_[id] = {{geometry.x(), geometry.y()}, {geometry.width(), geometry.height()}};
        if (screen == QGuiApplication::primaryScreen()) main_ = id;
    }
}

}  // namespace ovin
