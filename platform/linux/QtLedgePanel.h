#pragma once

#include <QWidget>
#include <functional>
#include <memory>

#include "platform/Windows.h"

namespace ovin {

/// The ledge's window. It is none of the window manager's business, which is how it stays above full-screen windows, takes
/// no focus and appears at once.
class QtLedgePanel final : public LedgePanel {
public:
    explicit QtLedgePanel(std::function<void(int tag)> clicked);
    ~QtLedgePanel() override;

    void show(const View& content, const Rect& frame) override;

private:
    class Window;

    /// Goes with this panel: a click that is still on its way then means nothing any more.
    const std::shared_ptr<const std::function<void(int tag)>> clicked_;
    /// Deleted by the event loop: this panel may go while the window deals with a click.
    Window* const window_;
};

}  // namespace ovin
