#pragma once

#include <QRegion>
#include <QWidget>

namespace ovin {

/// Which pixels a rectangle with rounded corners covers: those whose middle lies within, or all that it touches.
enum class Coverage { middle, touch };
[[nodiscard]] QRegion roundedRegion(const QRect& rect, double cornerRadius, Coverage coverage);

/// The look of a menu behind one widget that fills it: the window's colour, a fine edge and rounded corners. In an opaque
/// window, the area outside the corners has the edge's colour.
class MenuBackgroundWidget final : public QWidget {
public:
    MenuBackgroundWidget(QWidget* content, double cornerRadius);

    [[nodiscard]] double cornerRadius() const { return cornerRadius_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const double cornerRadius_;
};

}  // namespace ovin
