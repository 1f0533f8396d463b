#pragma once

#include <QString>

namespace ovin {

/// What is shown of a text that another program sends: one line, without the middle if it is longer than `longest`, in
/// UTF-16 units, because both ends tell texts apart.
[[nodiscard]] QString shownText(const QString& text, qsizetype longest = 200);

}  // namespace ovin
