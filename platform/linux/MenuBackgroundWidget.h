#pragma once

#include <QWidget>

namespace ovin {

/// The look of a menu behind one widget that fills it: the window's colour, a fine edge and rounded corners.
class MenuBackgroundWidget final : public QWidget {
public:
    MenuBackgroundWidget(QWidget* content, double cornerRadius);

    [[nodiscard]] double cornerRadius() const { return cornerRadius_; }
    [[nodiscard]] const QWidget& content() const { return *content_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QWidget* const content_;
    const double cornerRadius_;
};

}  // namespace ovin
