#pragma once

#include <QWidget>
#include <string>
#include <vector>

#include "platform/Views.h"

namespace ovin {

/// In what the widgets of a view differ from its description, seen from outside: by the properties that the toolkit has for
/// them, by where layouts put them, and by what they paint. Lengths are held against the nearest whole pixels, which are all
/// that widgets have; what is painted has fractions. Lays the widgets out.
[[nodiscard]] std::vector<std::string> differences(QWidget& widget, const View& view);

}  // namespace ovin
