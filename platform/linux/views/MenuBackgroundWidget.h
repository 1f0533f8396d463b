#pragma once

#include <QRegion>
#include <QWidget>

#include "platform/linux/views/ViewWidget.h"

namespace ovin {

/// What a rectangle with rounded corners covers: the pixels whose middle lies within, or all that it touches.
enum class Coverage { middle, touch };
[[nodiscard]] QRegion roundedRegion(const QRect& rect, double cornerRadius, Coverage coverage);

/// The look of a menu behind one widget that fills it: the window's colour, a fine edge and rounded corners. In a window
/// that does not let through what lies below it, what is outside of the corners has the edge's colour.
class MenuBackgroundWidget final : public QWidget, public ViewWidget {
public:
    MenuBackgroundWidget(QWidget* content, double cornerRadius);

    [[nodiscard]] double cornerRadius() const { return cornerRadius_; }
    [[nodiscard]] decltype(View::content) content() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// The squares in which the outline is not straight.
    [[nodiscard]] QRegion corners() const;

    QWidget* const content_;
    const double cornerRadius_;
};

}  // namespace ovin
