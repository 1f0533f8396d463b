#pragma once

#include <QAbstractButton>

#include "platform/Views.h"
#include "platform/linux/drawing/TextLines.h"

namespace ovin {

/// A button of the ledge: no border until the pointer is over it, an image, a title, or both beside one another.
class ItemButton final : public QAbstractButton {
    Q_OBJECT

public:
    explicit ItemButton(const Button& button);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    [[nodiscard]] int contentWidth() const;
    [[nodiscard]] TextLines title() const;

    const AttributedText title_;
    const Button::ImagePosition imagePosition_;
    /// Kept because layouts ask for sizes again and again, and laying out a text costs more than all the rest of a button.
    /// Empty where no title is shown.
    QSize titleSize_;
};

}  // namespace ovin
