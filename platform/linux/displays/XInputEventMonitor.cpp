#include "platform/linux/displays/XInputEventMonitor.h"

#include <QApplication>
#include <utility>

#include "platform/linux/displays/RawButtons.h"

namespace ovin {
namespace {

class Monitor final : public EventMonitor::Token {
public:
    explicit Monitor(std::unique_ptr<RawButtons> presses) : presses_(std::move(presses)) {}

private:
    std::unique_ptr<RawButtons> presses_;
};

}  // namespace

std::unique_ptr<EventMonitor::Token> XInputEventMonitor::monitorMouseDowns(std::function<void()> handler) {
    auto presses = RawButtons::listen(RawButtons::Event::press, [handler = std::move(handler)] {
        // Raw events have no position, so the pointer tells whether the press was on a window of this program.
        if (QApplication::topLevelAt(QCursor::pos()) == nullptr) handler();
    });
    return presses ? std::make_unique<Monitor>(std::move(presses)) : nullptr;
}

}  // namespace ovin
