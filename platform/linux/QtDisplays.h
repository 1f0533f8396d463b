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

private:
    void watch(QScreen* screen);
    void refresh();

    mutable std::mutex mutex_;
    std::map<QString, DisplayID> ids_;
    std::map<DisplayID, Rect> bounds_;
    DisplayID main_ = 0;
};

}  // namespace ovin
