#pragma once

#include "platform/linux/views/PressButton.h"

namespace ovin {

/// A triangle that points right, or down while it is on. Whoever describes the view turns it, not the click.
class DisclosureWidget final : public PressButton {
    Q_OBJECT

public:
    explicit DisclosureWidget(const DisclosureTriangle& triangle);

    [[nodiscard]] decltype(View::content) content() const override;
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void nextCheckState() override {}
    void paintEvent(QPaintEvent* event) override;

private:
    const Font font_;
};

}  // namespace ovin
