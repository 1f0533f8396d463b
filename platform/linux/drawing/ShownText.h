#pragma once

#include <QString>

namespace ovin {

/// How many UTF-16 units are shown of a text that another program sends.
inline constexpr qsizetype longestShownText = 200;

/// What is shown of such a text: one line, without the middle if it is longer than `longest`, because both ends tell texts
/// apart.
[[nodiscard]] QString shownText(const QString& text, qsizetype longest = longestShownText);

}  // namespace ovin
