#pragma once

#include "platform/Views.h"
#include "platform/linux/drawing/TextLines.h"
#include "platform/linux/views/PressButton.h"

namespace ovin {

/// Text that can be clicked. Assistive programs know it by its text, and as a link where it is one.
class TextButtonWidget final : public PressButton {
    Q_OBJECT

public:
    explicit TextButtonWidget(const TextButton& button);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] bool isLink() const { return cursor().shape() == Qt::PointingHandCursor; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] TextLines lines() const;

    const AttributedText title_;
};

}  // namespace ovin
