#pragma once

#include <QIcon>
#include <QWidget>

#include "platform/linux/views/ViewWidget.h"

namespace ovin {

/// A picture with round corners, drawn with as many pixels as the screen has.
class ImageWidget final : public QWidget, public ViewWidget {
    Q_OBJECT

public:
    explicit ImageWidget(const ImageView& image);

    [[nodiscard]] decltype(View::content) content() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Image image_;
    const Size size_;
    const double cornerRadius_;
    const QIcon icon_;
};

}  // namespace ovin
