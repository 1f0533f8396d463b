#pragma once

#include <QIcon>
#include <QImage>
#include <QString>

/// The pictures of status items as their programs name and send them. Everything is checked: names may be anything, files
/// may be huge or no pictures, and sizes need not fit the bytes.
namespace ovin {

/// The icon of a name: the absolute path of a file, a picture in the item's own theme folder (which may be empty), or an
/// icon of the theme. Null when there is none.
[[nodiscard]] QIcon namedItemIcon(const QString& name, const QString& themeFolder);

/// A picture of rows of pixels, each alpha, red, green and blue; null when it is larger than 1024 pixels to a side, or when
/// `size`, the number of bytes, does not fit.
[[nodiscard]] QImage pictureOf(int width, int height, const void* bytes, qsizetype size);

}  // namespace ovin
