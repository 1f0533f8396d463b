#pragma once

#include <QImage>
#include <QPalette>
#include <string_view>

namespace ovin {

/// A symbol, as the status item shows it in place of its image: 18 points to a side, in the text colour of the palette, with
/// `scale` pixels to a point. Null when there is no such symbol. The only one is "checkmark.circle.fill", a disc with a
/// check mark cut out.
[[nodiscard]] QImage symbolImage(std::string_view name, double scale, const QPalette& palette);

}  // namespace ovin
