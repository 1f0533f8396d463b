#pragma once

#include <QWidget>
#include <functional>
#include <memory>

#include "platform/Windows.h"
#include "platform/linux/MeasuredView.h"

namespace ovin {

/// The ledge's window. It is none of the window manager's business, which is how it stays above full-screen windows, takes
/// no focus and appears at once.
class QtLedgePanel final : public LedgePanel {
public:
    /// Shows the widgets of `measured` where the content is what was measured.
    QtLedgePanel(std::function<void(int tag)> clicked, std::shared_ptr<MeasuredView> measured);
    ~QtLedgePanel() override;

    void show(const View& content, const Rect& frame) override;

private:
    class Window;

    /// Goes with this panel: a click that is still on its way then means nothing any more.
    const std::shared_ptr<const std::function<void(int tag)>> clicked_;
    const std::shared_ptr<MeasuredView> measured_;
    /// Deleted by the event loop: this panel may go while the window deals with a click.
    Window* const window_;
};

}  // namespace ovin
