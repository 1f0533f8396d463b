#pragma once

#include <functional>
#include <memory>

#include "platform/Windows.h"
#include "platform/linux/views/MeasuredView.h"
#include "platform/linux/windows/LedgeWindow.h"

namespace ovin {

/// What makes a ledge open quickly, shared by one and the next.
struct LedgeReserve {
    /// The widgets with which the content was measured.
    MeasuredView measured;
    /// The window of a ledge that has closed: a new one takes three round trips more to the X server before its first frame.
    /// Null while it is open.
    std::unique_ptr<LedgeWindow> window;
};

/// The ledge's window.
class QtLedgePanel final : public LedgePanel {
public:
    explicit QtLedgePanel(std::shared_ptr<LedgeReserve> reserve);
    ~QtLedgePanel() override;

    void show(const View& content, const Rect& frame, std::function<void(int tag)> clicked) override;

private:
    /// Goes with this panel: a click that is still on its way then means nothing any more.
    const std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
    const std::shared_ptr<LedgeReserve> reserve_;
    std::unique_ptr<LedgeWindow> window_;
};

}  // namespace ovin
