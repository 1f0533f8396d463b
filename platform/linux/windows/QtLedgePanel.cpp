#include "platform/linux/windows/QtLedgePanel.h"

#include <utility>

namespace ovin {
namespace {

std::unique_ptr<LedgeWindow> windowFrom(LedgeReserve& reserve) {
    auto window = std::move(reserve.window);
    if (window && !window->isUpToDate()) window.release()->deleteLater();
    return window ? std::move(window) : std::make_unique<LedgeWindow>();
}

}  // namespace

QtLedgePanel::QtLedgePanel(std::shared_ptr<LedgeReserve> reserve)
    : reserve_(std::move(reserve)), window_(windowFrom(*reserve_)) {}

QtLedgePanel::~QtLedgePanel() {
    window_->dismiss();
    if (reserve_->window) {
        // Deleted by the event loop, because a click that the window handles may destroy this panel.
        window_.release()->deleteLater();
        return;
    }
    reserve_->window = std::move(window_);
}

void QtLedgePanel::show(const View& content, const Rect& frame, std::function<void(int tag)> clicked,
                        std::function<void(int tag)> menuRequested) {
    const auto whileAlive = [this](const std::function<void(int tag)>& handler) {
        return [alive = std::weak_ptr(alive_), handler](int tag) {
            if (!alive.expired() && handler) handler(tag);
        };
    };
    window_->present(content, QRectF(frame.origin.x, frame.origin.y, frame.size.width, frame.size.height).toRect(),
                     whileAlive(clicked), whileAlive(menuRequested));
}

}  // namespace ovin
