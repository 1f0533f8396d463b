#pragma once

#include <QScrollArea>

#include "platform/Geometry.h"

namespace ovin {

/// Shows a part of a widget that is too wide, and scrolls sideways: by its scroller, which lies over the widget, and by any
/// wheel or touchpad movement, upright or sideways.
class SidewaysScroller final : public QScrollArea {
public:
    SidewaysScroller(QWidget* content, Size size);

protected:
    void wheelEvent(QWheelEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QScrollBar* const scroller_;
};

}  // namespace ovin
