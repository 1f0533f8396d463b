#include "platform/linux/displays/QtScreens.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <utility>

#include "platform/linux/displays/XcbDocks.h"
#include "platform/linux/system/WaylandSession.h"

namespace ovin {
namespace {

/// How much of a Wayland session's screen a bar may take at the top. The X server of such a session knows nothing of it.
constexpr double unknownBar = 48;

Rect rectOf(const QRectF& rect) { return {{rect.x(), rect.y()}, {rect.width(), rect.height()}}; }

/// Screens have the same origin in pixels of the X server and in the toolkit's points, of which each may have several
/// pixels.
Rect inPixels(const QScreen& screen) {
    const QRectF points = screen.geometry();
    return rectOf({points.topLeft(), points.size() * screen.devicePixelRatio()});
}

const QScreen* screenAt(Point pixel) {
    const QList<QScreen*> screens = QGuiApplication::screens();
    const auto found =
        std::ranges::find_if(screens, [pixel](const QScreen* screen) { return contains(inPixels(*screen), pixel); });
    return found == screens.end() ? nullptr : *found;
}

Point inPoints(const QScreen& screen, Point point) {
    const QPointF origin = screen.geometry().topLeft();
    const QPointF points = origin + (QPointF(point.x, point.y) - origin) / screen.devicePixelRatio();
    return {points.x(), points.y()};
}

Rect inPoints(const QScreen& screen, const Rect& rect) {
    return {inPoints(screen, rect.origin),
            {rect.size.width / screen.devicePixelRatio(), rect.size.height / screen.devicePixelRatio()}};
}

Rect visiblePixels(const DockLayout& layout, const QScreen& screen) {
    const Rect pixels = inPixels(screen);
    Rect visible = visibleFrame(layout, pixels, QGuiApplication::screens().size() == 1);
    if (isWaylandSession() && !layout.workArea && visible == pixels) {
        const double bar = unknownBar * screen.devicePixelRatio();
        visible.origin.y += bar;
        visible.size.height -= bar;
    }
    return visible;
}

std::optional<Screen> screenOf(const QScreen* screen, const std::optional<DockLayout>& layout) {
    if (screen == nullptr) return std::nullopt;
    const Rect frame = rectOf(screen->geometry());
    if (!layout) return Screen{frame, rectOf(screen->availableGeometry())};
    return Screen{frame, inPoints(*screen, visiblePixels(*layout, *screen))};
}

std::optional<Screen> withBar(const QScreen& screen, const DockLayout& layout, const BarPlace& bar) {
    auto result = screenOf(&screen, layout);
    result->bar = BarPlace{bar.edge, inPoints(screen, bar.frame), inPoints(screen, bar.clicked)};
    return result;
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

std::optional<Screen> QtScreens::main() const { return screenOf(QGuiApplication::primaryScreen(), readDocks()); }

std::unique_ptr<Screens::Observation> QtScreens::observeChanges(std::function<void()> handler) {
    // The handler may end its own observation: the toolkit keeps it until it has returned.
    return std::make_unique<Connected>(QObject::connect(&changes_, &ScreenChanges::changed, std::move(handler)));
}

std::optional<Screen> QtScreens::ofItem(std::optional<Point> clicked) const {
    const auto layout = readDocks();
    const QScreen* const screen = clicked ? screenAt(*clicked) : nullptr;
    if (!layout) return screenOf(screen, layout);
    // Under Wayland the pointer is known only over windows of X programs, and no bar is one.
    const bool isKnown = screen != nullptr && !isWaylandSession();
    if (isKnown) {
        const auto bar = barAt(*layout, inPixels(*screen), visiblePixels(*layout, *screen), *clicked);
        if (bar) return withBar(*screen, *layout, *bar);
    }
    for (const QScreen* const other : QGuiApplication::screens()) {
        const auto bar = onlyBar(*layout, inPixels(*other), visiblePixels(*layout, *other));
        if (bar) return withBar(*other, *layout, *bar);
    }
    return isKnown ? screenOf(screen, layout) : std::nullopt;
}

}  // namespace ovin
