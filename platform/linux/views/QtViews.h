#pragma once

#include <QWidget>
#include <functional>

#include "platform/Views.h"

namespace ovin {

/// Makes the widgets that show a view, laid out by the toolkit. `clicked` gets the tag of a button that was clicked. The
/// caller owns the widget. Main thread only.
[[nodiscard]] QWidget* makeWidget(const View& view, const std::function<void(int tag)>& clicked);

}  // namespace ovin
