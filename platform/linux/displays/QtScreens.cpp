#include "platform/linux/displays/QtScreens.h"

#include <QGuiApplication>
#include <QScreen>
#include <utility>

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

class Connected final : public Screens::Observation {
public:
    explicit Connected(QMetaObject::Connection connection) : connection_(std::move(connection)) {}
    Connected(const Connected&) = delete;
    Connected& operator=(const Connected&) = delete;
    ~Connected() override { QObject::disconnect(connection_); }

private:
    const QMetaObject::Connection connection_;
};

}  // namespace

std::optional<Screen> QtScreens::main() const { return screenOf(QGuiApplication::primaryScreen()); }

std::unique_ptr<Screens::Observation> QtScreens::observeChanges(std::function<void()> handler) {
    // The handler may end its own observation: the toolkit keeps it until it has returned.
    return std::make_unique<Connected>(QObject::connect(&changes_, &ScreenChanges::changed, std::move(handler)));
}

std::optional<Screen> QtScreens::at(QPoint position) const { return screenOf(QGuiApplication::screenAt(position)); }

}  // namespace ovin
