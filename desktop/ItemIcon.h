#pragma once

#include <QColor>
#include <QPixmap>

#include "desktop/StatusItemState.h"

namespace ovin {

/// The picture of a status item for the bar.
struct ItemIconStyle {
    /// In logical pixels.
    int height = 16;
    int widest = 90;
    double pixelRatio = 1;
    /// Of symbolic icons, and of the stand-in for a picture that cannot be had.
    QColor foreground;
};

/// At exactly the pixels that the bar draws. Wide pictures keep their proportions. Never null: an item without any picture
/// gets the first letter of its title.
[[nodiscard]] QPixmap itemIcon(const StatusItemState& state, const QString& title, const ItemIconStyle& style);

}  // namespace ovin
