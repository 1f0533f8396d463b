#pragma once

#include <QAbstractButton>
#include <optional>

#include "platform/linux/drawing/TextLines.h"
#include "platform/linux/views/ViewWidget.h"

namespace ovin {

/// A button of the ledge: no border until the pointer is over it, an image, a title, or both beside one another.
class ItemButton final : public QAbstractButton, public ViewWidget {
    Q_OBJECT

public:
    explicit ItemButton(const Button& button);

    [[nodiscard]] decltype(View::content) content() const override;
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    [[nodiscard]] int contentWidth() const;

    [[nodiscard]] TextLines title() const;
    [[nodiscard]] QSize titleSize() const;

    const Button described_;
    /// The title that was measured last, and its size.
    struct MeasuredTitle {
        QString text;
        QSize size;
    };
    mutable std::optional<MeasuredTitle> measuredTitle_;
};

}  // namespace ovin
