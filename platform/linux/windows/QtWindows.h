#pragma once

#include <memory>

#include "platform/Windows.h"
#include "platform/linux/windows/QtLedgePanel.h"

namespace ovin {

/// Windows of the Qt program.
class QtWindows final : public Windows {
public:
    [[nodiscard]] Size fittingSize(const View& view) const override;
    [[nodiscard]] std::unique_ptr<LedgePanel> makeLedgePanel() override;
    [[nodiscard]] std::unique_ptr<InformationWindow> makeInformationWindow(const std::string& title, const View& content,
                                                                           std::function<void(int tag)> clicked) override;
    [[nodiscard]] std::unique_ptr<FloatingPanel> makeFloatingPanel(const std::string& title,
                                                                   std::function<void(int tag)> clicked,
                                                                   std::function<void()> closed) override;

private:
    /// Shared with the ledges, which may outlive this.
    const std::shared_ptr<LedgeReserve> reserve_ = std::make_shared<LedgeReserve>();
};

}  // namespace ovin
