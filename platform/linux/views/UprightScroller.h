#pragma once

#include <QScrollArea>

#include "platform/Geometry.h"

namespace ovin {

/// Shows a part of a page that is too long, and scrolls it: by its scroller, which lies over the page and hides when the
/// whole page is visible, by a wheel, and by the keys that scroll pages.
class UprightScroller final : public QScrollArea {
public:
    UprightScroller(QWidget* content, Size size);

    void scrollToEnd();

    /// Scrolls if the key is one that scrolls pages and the page is too long; false otherwise.
    bool scrollBy(const QKeyEvent& key);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void connectScroller();
    void styleScroller();

    QScrollBar* const scroller_;
    bool endsWhenShown_ = false;
};

}  // namespace ovin
