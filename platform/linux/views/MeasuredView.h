#pragma once

#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>

#include "platform/Views.h"

namespace ovin {

/// Keeps the widgets of the view that was measured last for the window that shows it next, because making widgets takes
/// longer than painting them. A measured view need not be shown, so they are deleted when the event loop runs again. Main
/// thread only.
class MeasuredView {
public:
    MeasuredView();
    MeasuredView(const MeasuredView&) = delete;
    MeasuredView& operator=(const MeasuredView&) = delete;
    ~MeasuredView();

    /// The size that the view takes when nothing limits it.
    [[nodiscard]] QSize fit(const View& view);

    /// The measured widgets, if they show this view; null otherwise. The caller owns them from then on; they deliver their
    /// clicks to `clicked`.
    [[nodiscard]] QWidget* take(const View& view, const std::function<void(int tag)>& clicked);

private:
    struct Widgets;

    std::unique_ptr<Widgets> widgets_;
    QTimer end_;
};

}  // namespace ovin
