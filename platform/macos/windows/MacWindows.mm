#include "platform/macos/windows/MacWindows.h"

#include <utility>

#include "platform/macos/views/NativeViews.h"
#include "platform/macos/windows/MacFloatingPanel.h"
#include "platform/macos/windows/MacInformationWindow.h"
#include "platform/macos/windows/MacLedgePanel.h"

namespace ovin {
namespace {

class MacWindows final : public Windows {
public:
    [[nodiscard]] Size fittingSize(const View& view) const override {
        if (view.isHidden) return {};
        return ovin::fittingSize(makeNativeView(view, nil));
    }

    [[nodiscard]] std::unique_ptr<LedgePanel> makeLedgePanel() override { return makeMacLedgePanel(); }

    [[nodiscard]] std::unique_ptr<InformationWindow> makeInformationWindow(const std::string& title, const View& content,
                                                                           std::function<void(int tag)> clicked) override {
        return makeMacInformationWindow(title, content, std::move(clicked));
    }

    [[nodiscard]] std::unique_ptr<FloatingPanel> makeFloatingPanel(const std::string& title,
                                                                   std::function<void(int tag)> clicked,
                                                                   std::function<void()> closed) override {
        return makeMacFloatingPanel(title, std::move(clicked), std::move(closed));
    }
};

}  // namespace

std::unique_ptr<Windows> makeMacWindows() { return std::make_unique<MacWindows>(); }

}  // namespace ovin
