#pragma once

#include "platform/Windows.h"

namespace ovin {

/// Windows of the Qt program.
class QtWindows final : public Windows {
public:
    [[nodiscard]] Size fittingSize(const View& view) const override;
    [[nodiscard]] std::unique_ptr<LedgePanel> makeLedgePanel(std::function<void(int tag)> clicked) override;
};

}  // namespace ovin
