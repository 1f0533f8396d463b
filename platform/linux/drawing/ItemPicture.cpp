#include "platform/linux/drawing/ItemPicture.h"

#include <QtEndian>

namespace ovin {
namespace {

constexpr int largestPixmap = 1024;

}  // namespace

QImage pictureOf(int width, int height, const void* bytes, qsizetype size) {
    if (width <= 0 || height <= 0 || width > largestPixmap || height > largestPixmap) return {};
    if (size != qsizetype{4} * width * height) return {};
    QImage image(width, height, QImage::Format_ARGB32);
    const qsizetype bytesPerLine = qsizetype{4} * width;
    for (int y = 0; y < height; ++y)
        qFromBigEndian<quint32>(static_cast<const char*>(bytes) + y * bytesPerLine, width, image.scanLine(y));
    return image;
}

}  // namespace ovin
