#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "platform/Windows.h"
#include "platform/linux/windows/LedgeWindow.h"

namespace ovin {

/// What one ledge leaves to the next so that it opens quickly. Main thread only.
struct LedgeReserve {
    /// What was measured last, and its size.
    std::optional<LaidOutView> measured;
    Size size;
    /// The window of the ledge that has closed, with its widgets. A new window needs three more round trips to the X server
    /// before its first frame, and making widgets takes longer than painting them. Null while a ledge is open.
    std::unique_ptr<LedgeWindow> window;
};

/// The ledge's window.
class QtLedgePanel final : public LedgePanel {
public:
    explicit QtLedgePanel(std::shared_ptr<LedgeReserve> reserve);
    ~QtLedgePanel() override;

    void show(const View& content, const Rect& frame, std::function<void(int tag)> clicked,
              std::function<void(int tag)> menuRequested) override;
    void onDismissal(std::function<void()> handler) override { window_->onDismissal(std::move(handler)); }

private:
    /// Destroyed with this panel, so that a click that has not been delivered by then is dropped.
    const std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
    const std::shared_ptr<LedgeReserve> reserve_;
    std::unique_ptr<LedgeWindow> window_;
};

}  // namespace ovin
