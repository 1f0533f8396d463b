#pragma once

#include "platform/linux/views/PressButton.h"

namespace ovin {

/// A large button with rounded ends. Its key presses it wherever the keyboard is in its window.
class PushButtonWidget final : public PressButton {
public:
    explicit PushButtonWidget(const PushButton& button);

    [[nodiscard]] decltype(View::content) content() const override;
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QColor fill() const;
    [[nodiscard]] QColor textColor() const;
    [[nodiscard]] bool isDefault() const { return described_.keyEquivalent == KeyEquivalent::returnKey; }

    const PushButton described_;
};

}  // namespace ovin
