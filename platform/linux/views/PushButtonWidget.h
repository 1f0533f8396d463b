#pragma once

#include "platform/Views.h"
#include "platform/linux/views/PressButton.h"

namespace ovin {

/// A large button with rounded ends. Its key presses it wherever the focus is in its window.
class PushButtonWidget final : public PressButton {
public:
    explicit PushButtonWidget(const PushButton& button);

    /// Whether the Return key presses it.
    [[nodiscard]] bool isDefault() const { return isDefault_; }
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QColor fill() const;
    [[nodiscard]] QColor textColor() const;

    const bool isDefault_;
    const bool isProminent_;
};

}  // namespace ovin
