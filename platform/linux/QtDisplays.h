#pragma once

#include <QObject>
#include <map>
#include <mutex>

#include "platform/DisplayServices.h"

class QScreen;

namespace ovin {

/// The screens of a Qt program, in its own points. Made and kept up to date on the main thread; read on any.
class QtDisplays final : public QObject, public DisplayServices {
    Q_OBJECT

public:
    QtDisplays();

    [[nodiscard]] DisplayID mainDisplay() const override;
    [[nodiscard]] Rect bounds(DisplayID display) const override;
    // Not there yet: no display has any mode.
    [[nodiscard]] bool isInMirrorSet(DisplayID) const override { return false; }
    [[nodiscard]] std::optional<DisplayMode> currentMode(DisplayID) const override { return std::nullopt; }
    [[nodiscard]] std::vector<DisplayMode> modes(DisplayID) const override { return {}; }
    [[nodiscard]] bool apply(const DisplayMode&, DisplayID) override { return false; }

private:
    void watch(QScreen* screen);
    void refresh();

    mutable std::mutex mutex_;
    std::map<QString, DisplayID> ids_;
    std::map<DisplayID, Rect> bounds_;
    DisplayID main_ = 0;
};

}  // namespace ovin
