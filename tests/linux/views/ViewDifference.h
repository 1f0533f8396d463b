#pragma once

#include <QWidget>
#include <string>
#include <vector>

#include "platform/Views.h"

namespace ovin {

/// How the widgets of a view differ from its description, seen from outside: by the toolkit's properties, by where layouts
/// put the widgets, and by what they paint. Lengths of widgets are compared as whole pixels, because widgets have no others;
/// painted lengths have fractions. Lays the widgets out.
[[nodiscard]] std::vector<std::string> differences(QWidget& widget, const View& view);

}  // namespace ovin
