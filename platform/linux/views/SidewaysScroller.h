#pragma once

#include <QScrollArea>

#include "platform/linux/views/ViewWidget.h"

namespace ovin {

/// Shows a part of a widget that is too wide, and scrolls sideways: by its scroller, which lies over the widget, and by any
/// wheel or touchpad, whichever way that moves.
class SidewaysScroller final : public QScrollArea, public ViewWidget {
public:
    SidewaysScroller(QWidget* content, Size size);

    [[nodiscard]] decltype(View::content) content() const override;

protected:
    void wheelEvent(QWheelEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    const Size size_;
    QScrollBar* const scroller_;
};

}  // namespace ovin
