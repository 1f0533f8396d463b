#pragma once

#include <QObject>
#include <map>
#include <mutex>

#include "platform/DisplayServices.h"
#include "platform/linux/displays/Randr.h"
#include "platform/linux/displays/ScreenChanges.h"

class QScreen;

namespace ovin {

/// The displays of a Qt program. Areas are in its own points, made and kept up to date on the main thread; read on any.
/// Modes are those of the RandR extension, asked of the X server each time; so are displays: each is an output that shows
/// something. The ids of both outlast the server (LastingIDs.h).
///
/// On X11 one factor turns pixels into points, that of the toolkit's screen (QT_SCALE_FACTOR and its like, not the
/// server's). It stays the same whatever the mode: a mode has as many points as it has pixels, divided by it.
///
/// Where there is no RandR 1.3, as under Wayland, displays have areas and no modes, and nothing can be applied.
class QtDisplays final : public QObject, public DisplayServices {
    Q_OBJECT

public:
    QtDisplays();

    /// The primary output; where the user has chosen none, the one at the origin.
    [[nodiscard]] DisplayID mainDisplay() const override;
    [[nodiscard]] Rect bounds(DisplayID display) const override;
    [[nodiscard]] bool isInMirrorSet(DisplayID display) const override;
    [[nodiscard]] std::optional<DisplayMode> currentMode(DisplayID display) const override;
    [[nodiscard]] std::vector<DisplayMode> modes(DisplayID display) const override;

    /// Displays beside and below it move along. `bounds` follows when the event loop has run.
    [[nodiscard]] bool apply(std::int32_t mode, DisplayID display) override;

    [[nodiscard]] std::optional<std::string> serverName() const override;
    [[nodiscard]] bool isAnotherServer(const std::string& name) const override;

private:
    void watch(QScreen* screen);
    void refresh();

    ScreenChanges changes_;
    /// The last that the server told when the screens had changed.
    RandrState known_;
    mutable std::mutex mutex_;
    std::map<DisplayID, Rect> bounds_;
    DisplayID main_ = 0;
};

}  // namespace ovin
