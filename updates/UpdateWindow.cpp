#include "updates/UpdateWindow.h"

#include <optional>

#include "updates/UpdatePages.h"

namespace ovin {
namespace {

constexpr double cornerGap = 16;

}  // namespace

void UpdateWindow::show(const View& page) {
    if (window_ && shown_ == page) return;
    reminder_.reset();
    shown_ = page;
    if (window_) return window_->replace(page);
    window_ = platform_.windows.makeInformationWindow("Software Update", page, [this](int tag) { clicked_(tag); });
    window_->onClose([this] {
        window_.reset();
        clicked_(UpdatePages::closed);
    });
    window_->show();
}

void UpdateWindow::bringForward() {
    if (window_) window_->show();
}

void UpdateWindow::remind(const View& page) {
    FloatingPanel::Placement placement;
    if (const auto screen = platform_.screens.main()) {
        placement = [room = screen->visibleFrame](Size size) {
            return Point{room.origin.x + room.size.width - size.width - cornerGap, room.origin.y + cornerGap};
        };
    }
    reminder_ = platform_.windows.makeFloatingPanel(
        "Software Update", [this](int tag) { clicked_(tag); }, [this] { clicked_(UpdatePages::later); });
    reminder_->show(page, placement);
}

void UpdateWindow::close() {
    window_.reset();
    reminder_.reset();
}

}  // namespace ovin
