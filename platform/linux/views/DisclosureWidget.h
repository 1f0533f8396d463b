#pragma once

#include "platform/Views.h"
#include "platform/linux/views/PressButton.h"

namespace ovin {

/// A triangle that points right, or down while it is on. A click does not turn it; the next description of the view does.
class DisclosureWidget final : public PressButton {
    Q_OBJECT

public:
    explicit DisclosureWidget(const DisclosureTriangle& triangle);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void nextCheckState() override {}
    void paintEvent(QPaintEvent* event) override;

private:
    const double fontSize_;
};

}  // namespace ovin
