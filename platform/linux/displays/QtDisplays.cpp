#include "platform/linux/displays/QtDisplays.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <cmath>
#include <set>
#include <string>
#include <utility>

#include "platform/linux/displays/RandrSwitch.h"
#include "platform/linux/displays/XcbRandr.h"

namespace ovin {
namespace {

using Areas = std::map<DisplayID, Rect>;

std::unique_ptr<XcbRandr> openServer() {
    // A Wayland session has an X server for old programs, which is not the one that shows anything.
    return QGuiApplication::platformName() == "xcb" ? XcbRandr::connect() : nullptr;
}

/// Without outputs when there is nobody to ask.
RandrState currentState() {
    const auto server = openServer();
    return server ? server->read().value_or(RandrState{}) : RandrState{};
}

Rect areaOf(const QScreen& screen) {
    const QRectF geometry = screen.geometry();
    return {{geometry.x(), geometry.y()}, {geometry.width(), geometry.height()}};
}

const QScreen* screenNamed(const std::string& name) {
    const QList<QScreen*> screens = QGuiApplication::screens();
    const auto found =
        std::find_if(screens.begin(), screens.end(), [&](const QScreen* s) { return s->name().toStdString() == name; });
    return found == screens.end() ? nullptr : *found;
}

/// The toolkit has one screen for all outputs that show the very same part, with the name of one of them.
const QScreen* screenOf(const RandrState& state, DisplayID display) {
    const RandrCrtc* crtc = state.crtcOf(display);
    if (crtc == nullptr) return nullptr;
    if (const QScreen* own = screenNamed(state.output(display)->name)) return own;
    for (const std::uint32_t other : crtc->outputs) {
        const RandrOutput* output = state.output(other);
        const QScreen* screen = output == nullptr ? nullptr : screenNamed(output->name);
        if (screen != nullptr) return screen;
    }
    return nullptr;
}

/// X servers give no such ids. It is made of the name, so that it is the same in every run.
DisplayID idWithoutOutput(const QScreen& screen) {
    std::uint32_t hash = 2166136261U;
    for (const char character : screen.name().toStdString()) {
        hash = (hash ^ static_cast<unsigned char>(character)) * 16777619U;
    }
    return hash | 0x80000000U;
}

Areas areas(const RandrState& state) {
    Areas result;
    for (const RandrOutput& output : state.outputs) {
        if (const QScreen* screen = screenOf(state, output.id)) result[output.id] = areaOf(*screen);
    }
    if (!result.empty()) return result;
    for (const QScreen* screen : QGuiApplication::screens()) result[idWithoutOutput(*screen)] = areaOf(*screen);
    return result;
}

DisplayID mainOf(const Areas& areas, const RandrState& state) {
    if (areas.contains(state.primary)) return state.primary;
    const auto isAtOrigin = [](const auto& area) { return area.second.origin == Point{}; };
    const auto found = std::find_if(areas.begin(), areas.end(), isAtOrigin);
    if (found != areas.end()) return found->first;
    return areas.empty() ? 0 : areas.begin()->first;
}

double scaleOf(const RandrState& state, DisplayID display) {
    const QScreen* screen = screenOf(state, display);
    if (screen == nullptr) screen = QGuiApplication::primaryScreen();
    const double scale = screen == nullptr ? 1 : screen->devicePixelRatio();
    return scale > 0 ? scale : 1;
}

/// In the rotation in which the display runs.
DisplayMode describe(const RandrState& state, const RandrMode& mode, const RandrCrtc& crtc, double scale) {
    const Extent size = turned(mode.size, crtc.rotation);
    const Extent most = state.screen.largest;
    const auto points = [scale](int pixels) { return static_cast<int>(std::lround(pixels / scale)); };
    return {static_cast<std::int32_t>(mode.id), points(size.width), points(size.height), size.width,
            mode.isPlain && size.width <= most.width && size.height <= most.height};
}

}  // namespace

QtDisplays::QtDisplays() {
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](QScreen* screen) {
        watch(screen);
        refresh();
    });
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, this, &QtDisplays::refresh, Qt::QueuedConnection);
    QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &QtDisplays::refresh);
    // What only the server knows of, such as another primary output.
    QObject::connect(&changes_, &ScreenChanges::changed, this, &QtDisplays::refresh);
    for (QScreen* screen : QGuiApplication::screens()) watch(screen);
    refresh();
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

bool QtDisplays::isInMirrorSet(DisplayID display) const { return isMirrored(currentState(), display); }

std::optional<DisplayMode> QtDisplays::currentMode(DisplayID display) const {
    const RandrState state = currentState();
    const RandrCrtc* crtc = state.crtcOf(display);
    const RandrMode* mode = crtc == nullptr ? nullptr : state.mode(crtc->mode);
    if (mode == nullptr) return std::nullopt;
    return describe(state, *mode, *crtc, scaleOf(state, display));
}

std::vector<DisplayMode> QtDisplays::modes(DisplayID display) const {
    const RandrState state = currentState();
    const RandrCrtc* crtc = state.crtcOf(display);
    if (crtc == nullptr) return {};
    const double scale = scaleOf(state, display);
    std::vector<DisplayMode> result;
    std::set<std::uint32_t> seen;
    for (const std::uint32_t id : state.output(display)->modes) {
        const RandrMode* mode = state.mode(id);
        // A server may list the preferred mode first and again at its place.
        if (mode != nullptr && seen.insert(id).second) result.push_back(describe(state, *mode, *crtc, scale));
    }
    return result;
}

bool QtDisplays::apply(std::int32_t mode, DisplayID display) {
    const auto server = openServer();
    return server && switchMode(*server, display, static_cast<std::uint32_t>(mode));
}

void QtDisplays::watch(QScreen* screen) { QObject::connect(screen, &QScreen::geometryChanged, this, &QtDisplays::refresh); }

void QtDisplays::refresh() {
    // While the server does not answer, the displays that it had keep their numbers.
    RandrState state = currentState();
    if (!state.outputs.empty()) known_ = std::move(state);
    Areas current = areas(known_);
    const DisplayID main = mainOf(current, known_);
    const std::lock_guard lock(mutex_);
    bounds_ = std::move(current);
    main_ = main;
}

}  // namespace ovin
