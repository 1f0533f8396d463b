#pragma once

#include <QObject>
#include <map>
#include <mutex>

#include "platform/DisplayServices.h"
#include "platform/linux/displays/Randr.h"
#include "platform/linux/displays/ScreenChanges.h"

class QScreen;

namespace ovin {

/// The displays of a Qt program. Areas are in the toolkit's points; they are updated on the main thread and may be read on
/// any. A display is an output of the RandR extension that is on. Displays and modes are asked of the X server each time;
/// their ids outlast it (LastingIDs.h).
///
/// On X11 the factor of the toolkit's screen (QT_SCALE_FACTOR and its like, not the server's) turns pixels into points. It
/// does not depend on the mode: the points of a mode are its pixels divided by the factor.
///
/// Without RandR 1.3, as under Wayland, displays have areas but no modes, and `apply` fails.
class QtDisplays final : public QObject, public DisplayServices {
    Q_OBJECT

public:
    QtDisplays();

    /// The primary output; where the user has chosen none, the output at the origin.
    [[nodiscard]] DisplayID mainDisplay() const override;
    [[nodiscard]] Rect bounds(DisplayID display) const override;
    [[nodiscard]] bool isInMirrorSet(DisplayID display) const override;
    [[nodiscard]] std::optional<DisplayMode> currentMode(DisplayID display) const override;
    [[nodiscard]] std::vector<DisplayMode> modes(DisplayID display) const override;

    /// Not in a Wayland session: its X server is there for other programs and does not drive the displays.
    [[nodiscard]] bool canSwitchModes() const override;

    /// Displays beside and below it move along. `bounds` follows when the event loop has run.
    [[nodiscard]] bool apply(std::int32_t mode, DisplayID display) override;

    [[nodiscard]] std::optional<std::string> serverName() const override;
    [[nodiscard]] bool isAnotherServer(const std::string& name) const override;

private:
    void watch(QScreen* screen);
    void refresh();

    ScreenChanges changes_;
    /// The server's state after the last change of the screens that it answered.
    RandrState known_;
    mutable std::mutex mutex_;
    std::map<DisplayID, Rect> bounds_;
    DisplayID main_ = 0;
};

}  // namespace ovin
