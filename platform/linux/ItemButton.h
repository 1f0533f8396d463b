#pragma once

#include <QAbstractButton>
#include <optional>

#include "platform/Views.h"

namespace ovin {

/// A button of the ledge: no border until the pointer is over it, an image, a title, or both beside one another.
class ItemButton final : public QAbstractButton {
    Q_OBJECT

public:
    explicit ItemButton(const Button& button);

    /// What it shows, read from its own state.
    [[nodiscard]] Button description() const;

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    [[nodiscard]] int contentWidth() const;

    std::optional<Image> image_;
    std::optional<Font> font_;
    Button::ImagePosition imagePosition_;
    bool hasWidth_;
    bool hasHeight_;
    int tag_;
};

}  // namespace ovin
