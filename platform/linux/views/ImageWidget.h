#pragma once

#include <QIcon>
#include <QWidget>

#include "platform/Views.h"

namespace ovin {

/// A picture with round corners, drawn with as many pixels as the screen has.
class ImageWidget final : public QWidget {
    Q_OBJECT

public:
    explicit ImageWidget(const ImageView& image);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const QIcon icon_;
    const QSizeF size_;
    const double cornerRadius_;
};

}  // namespace ovin
