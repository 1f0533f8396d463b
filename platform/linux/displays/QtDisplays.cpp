#include "platform/linux/displays/QtDisplays.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <cmath>
#include <set>
#include <string>
#include <utility>

#include "platform/linux/displays/DisplayServer.h"
#include "platform/linux/displays/LastingIDs.h"
#include "platform/linux/displays/RandrSwitch.h"
#include "platform/linux/displays/XcbRandr.h"
#include "platform/linux/system/WaylandSession.h"

namespace ovin {
namespace {

using Areas = std::map<DisplayID, Rect>;

std::unique_ptr<XcbRandr> openServer() { return QGuiApplication::platformName() == "xcb" ? XcbRandr::connect() : nullptr; }

/// Has no outputs when no server answers.
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

/// Null when the display is gone.
const RandrOutput* outputOf(const RandrState& state, DisplayID display) {
    const auto found = std::find_if(state.outputs.begin(), state.outputs.end(),
                                    [display](const RandrOutput& output) { return lastingID(output) == display; });
    return found == state.outputs.end() ? nullptr : &*found;
}

/// The CRTC that drives the display; null when the display is off or gone.
const RandrCrtc* crtcOf(const RandrState& state, DisplayID display) {
    const RandrOutput* output = outputOf(state, display);
    return output == nullptr ? nullptr : state.crtcOf(output->id);
}

/// For outputs that show the same part, the toolkit has only one screen, with the name of one of them.
const QScreen* screenOf(const RandrState& state, const RandrOutput& output) {
    const RandrCrtc* crtc = state.crtcOf(output.id);
    if (crtc == nullptr) return nullptr;
    if (const QScreen* own = screenNamed(output.name)) return own;
    for (const std::uint32_t other : crtc->outputs) {
        const RandrOutput* same = state.output(other);
        const QScreen* screen = same == nullptr ? nullptr : screenNamed(same->name);
        if (screen != nullptr) return screen;
    }
    return nullptr;
}

DisplayID idWithoutOutput(const QScreen& screen) {
    RandrOutput output;
    output.name = screen.name().toStdString();
    return lastingID(output);
}

Areas areas(const RandrState& state) {
    Areas result;
    for (const RandrOutput& output : state.outputs) {
        if (const QScreen* screen = screenOf(state, output)) result[lastingID(output)] = areaOf(*screen);
    }
    if (!result.empty()) return result;
    for (const QScreen* screen : QGuiApplication::screens()) result[idWithoutOutput(*screen)] = areaOf(*screen);
    return result;
}

DisplayID mainOf(const Areas& areas, const RandrState& state) {
    const RandrOutput* primary = state.output(state.primary);
    if (primary != nullptr && areas.contains(lastingID(*primary))) return lastingID(*primary);
    const auto isAtOrigin = [](const auto& area) { return area.second.origin == Point{}; };
    const auto found = std::find_if(areas.begin(), areas.end(), isAtOrigin);
    if (found != areas.end()) return found->first;
    return areas.empty() ? 0 : areas.begin()->first;
}

double scaleOf(const RandrState& state, const RandrOutput& output) {
    const QScreen* screen = screenOf(state, output);
    if (screen == nullptr) screen = QGuiApplication::primaryScreen();
    const double scale = screen == nullptr ? 1 : screen->devicePixelRatio();
    return scale > 0 ? scale : 1;
}

/// Sizes are as turned by the display's present rotation.
DisplayMode describe(const RandrState& state, const RandrMode& mode, std::int32_t id, const RandrCrtc& crtc, double scale) {
    const Extent size = turned(mode.size, crtc.rotation);
    const Extent most = state.screen.largest;
    const auto points = [scale](int pixels) { return static_cast<int>(std::lround(pixels / scale)); };
    return {id, points(size.width), points(size.height), size.width,
            mode.isPlain && size.width <= most.width && size.height <= most.height};
}

/// The modes of an output that is on, with their descriptions, each once: a server may list the preferred mode first and
/// again at its place.
std::vector<std::pair<const RandrMode*, DisplayMode>> modesOf(const RandrState& state, const RandrOutput& output) {
    const RandrCrtc& crtc = *state.crtcOf(output.id);
    const double scale = scaleOf(state, output);
    const std::vector<std::int32_t> ids = lastingModeIDs(state, output);
    std::vector<std::pair<const RandrMode*, DisplayMode>> result;
    std::set<std::uint32_t> seen;
    for (std::size_t i = 0; i < output.modes.size(); ++i) {
        const RandrMode* mode = state.mode(output.modes[i]);
        if (mode == nullptr || !seen.insert(mode->id).second) continue;
        result.emplace_back(mode, describe(state, *mode, ids[i], crtc, scale));
    }
    return result;
}

}  // namespace

QtDisplays::QtDisplays() {
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](QScreen* screen) {
        watch(screen);
        refresh();
    });
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, this, &QtDisplays::refresh, Qt::QueuedConnection);
    QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &QtDisplays::refresh);
    // For changes that only the server knows of, such as another primary output.
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

bool QtDisplays::isInMirrorSet(DisplayID display) const {
    const RandrState state = currentState();
    const RandrOutput* output = outputOf(state, display);
    return output != nullptr && isMirrored(state, output->id);
}

std::optional<DisplayMode> QtDisplays::currentMode(DisplayID display) const {
    const RandrState state = currentState();
    const RandrCrtc* crtc = crtcOf(state, display);
    if (crtc == nullptr) return std::nullopt;
    for (const auto& [mode, known] : modesOf(state, *outputOf(state, display))) {
        if (mode->id == crtc->mode) return known;
    }
    return std::nullopt;
}

std::vector<DisplayMode> QtDisplays::modes(DisplayID display) const {
    const RandrState state = currentState();
    std::vector<DisplayMode> result;
    if (crtcOf(state, display) == nullptr) return result;
    for (const auto& [mode, known] : modesOf(state, *outputOf(state, display))) result.push_back(known);
    return result;
}

bool QtDisplays::canSwitchModes() const { return !isWaylandSession() && openServer(); }

bool QtDisplays::apply(std::int32_t mode, DisplayID display) {
    const auto server = openServer();
    if (!server) return false;
    const RandrState state = server->read().value_or(RandrState{});
    if (crtcOf(state, display) == nullptr) return false;
    const RandrOutput& output = *outputOf(state, display);
    for (const auto& [own, known] : modesOf(state, output)) {
        if (known.id == mode) return switchMode(*server, output.id, own->id);
    }
    return false;
}

std::optional<std::string> QtDisplays::serverName() const {
    const auto server = openServer();
    return server ? displayServerName(server->socket()) : std::nullopt;
}

bool QtDisplays::isAnotherServer(const std::string& name) const {
    const auto server = openServer();
    // While it cannot be asked, it may be this very one.
    return server && name != displayServerName(server->socket()) && isDisplayServerRunning(name);
}

void QtDisplays::watch(QScreen* screen) { QObject::connect(screen, &QScreen::geometryChanged, this, &QtDisplays::refresh); }

void QtDisplays::refresh() {
    // While the server does not answer, its last displays keep their ids.
    RandrState state = currentState();
    if (!state.outputs.empty()) known_ = std::move(state);
    Areas current = areas(known_);
    const DisplayID main = mainOf(current, known_);
    const std::lock_guard lock(mutex_);
    bounds_ = std::move(current);
    main_ = main;
}

}  // namespace ovin
