#pragma once

#include <optional>

#include "platform/Windows.h"

namespace ovin {

/// Windows that nobody sees: keeps what is shown, and lets a test click.
class MemoryWindows final : public Windows {
public:
    struct Ledge {
        View content;
        Rect frame;
    };

    /// The ledge that is shown now.
    [[nodiscard]] const std::optional<Ledge>& ledge() const { return ledge_; }
    /// How often any ledge was shown or laid out anew.
    [[nodiscard]] int layoutCount() const { return layoutCount_; }
    /// How many panels have been made.
    [[nodiscard]] int panelCount() const { return panelCount_; }
    /// Clicks the button with this tag; a button need not be there, as it may go while a click is on its way.
    void click(int tag);

    /// Every character is seven points wide and every line sixteen high.
    [[nodiscard]] Size fittingSize(const View& view) const override;
    [[nodiscard]] std::unique_ptr<LedgePanel> makeLedgePanel(std::function<void(int tag)> clicked) override;

private:
    class Panel;

    std::optional<Ledge> ledge_;
    std::function<void(int tag)> clicked_;
    int layoutCount_ = 0;
    int panelCount_ = 0;
};

}  // namespace ovin
