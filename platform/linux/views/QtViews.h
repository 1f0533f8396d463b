#pragma once

#include <QWidget>
#include <functional>

#include "platform/Views.h"

namespace ovin {

/// Returns widgets that already show a view, and gives up their ownership; null when there are none.
using ExistingWidget = std::function<QWidget*(const View& view)>;

/// Makes the widgets that show a view, laid out by the toolkit. `clicked` gets the tag of a button that was clicked.
/// `existing` may be empty; otherwise it is asked for each view before widgets are made for it. The caller owns the widget.
/// Main thread only.
[[nodiscard]] QWidget* makeWidget(const View& view, const std::function<void(int tag)>& clicked,
                                  const ExistingWidget& existing = {});

}  // namespace ovin
