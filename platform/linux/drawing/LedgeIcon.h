#pragma once

#include <QColor>
#include <QImage>
#include <optional>

#include "platform/Image.h"
#include "platform/linux/drawing/IconReader.h"

/// The icons of other programs, as far as `IconLoader` has them by now. They fit a square of `side` pixels; symbolic ones
/// have the colour of texts. With `readsAgain`, icons that may have changed since they came are read again, and shown as
/// they were until then. `IconLoader::loaded` tells when to ask anew. Main thread.
namespace ovin {

/// The picture of a name: null when there is none, and nothing while it has not come, which is asked for then.
[[nodiscard]] std::optional<QImage> namedPicture(const IconName& name, int side, const QColor& textColor,
                                                 bool readsAgain = false);

/// The picture of an application or an item: the first that there is of what the image names, the pixels that came with it,
/// and a generic one. Null where there is none, and nothing while one that comes first is still to come.
[[nodiscard]] std::optional<QImage> ledgeIcon(const Image& image, int side, const QColor& textColor,
                                              bool readsAgain = false);

}  // namespace ovin
