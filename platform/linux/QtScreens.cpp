#include "platform/linux/QtScreens.h"

#include <QGuiApplication>
#include <QScreen>

namespace ovin {
namespace {

Rect rectOf(const QRect& rect) {
    return {{static_cast<double>(rect.x()), static_cast<double>(rect.y())},
            {static_cast<double>(rect.width()), static_cast<double>(rect.height())}};
}

std::optional<Screen> screenOf(const QScreen* screen) {
    if (screen == nullptr) return std::nullopt;
    return Screen{rectOf(screen->geometry()), rectOf(screen->availableGeometry())};
}

}  // namespace

std::optional<Screen> QtScreens::main() const { return screenOf(QGuiApplication::primaryScreen()); }

// Not there yet.
std::unique_ptr<Screens::Observation> QtScreens::observeChanges(std::function<void()>) { return nullptr; }

std::optional<Screen> QtScreens::at(QPoint position) const { return screenOf(QGuiApplication::screenAt(position)); }

}  // namespace ovin
