#include "platform/linux/drawing/ItemPicture.h"

#include <QFileInfo>
#include <QImageReader>
#include <QtEndian>

namespace ovin {
namespace {

constexpr qint64 largestFile = 8 << 20;
constexpr int largestSide = 4096;
constexpr int largestPixmap = 1024;

/// Searched in this order below an item's own theme folder. Nothing else in it is searched, because another program named
/// it: it may be the root of the disk.
constexpr const char* themeSizes[] = {"scalable", "48x48",   "32x32",   "24x24", "22x22",
                                      "64x64",    "128x128", "256x256", "16x16"};
constexpr const char* themeContexts[] = {"apps", "status", "panel", "actions", "devices", "categories"};
constexpr const char* suffixes[] = {".svg", ".png", ".xpm"};

bool isPicture(const QString& path) {
    const QFileInfo file(path);
    if (!file.isFile() || file.size() > largestFile) return false;
    const QSize size = QImageReader(path).size();
    return !size.isEmpty() && size.width() <= largestSide && size.height() <= largestSide;
}

QString withSuffix(const QString& stem) {
    for (const auto* suffix : suffixes) {
        if (const QString path = stem + QLatin1String(suffix); isPicture(path)) return path;
    }
    return {};
}

QString inThemeFolder(const QString& folder, const QString& name) {
    if (!folder.startsWith(QLatin1Char('/'))) return {};
    if (const QString direct = withSuffix(folder + QLatin1Char('/') + name); !direct.isEmpty()) return direct;
    if (!QFileInfo(folder + QLatin1String("/hicolor")).isDir()) return {};
    for (const auto* size : themeSizes) {
        for (const auto* context : themeContexts) {
            const QString stem =
                QStringLiteral("%1/hicolor/%2/%3/%4").arg(folder, QLatin1String(size), QLatin1String(context), name);
            if (const QString found = withSuffix(stem); !found.isEmpty()) return found;
        }
    }
    return {};
}

}  // namespace

QIcon namedItemIcon(const QString& name, const QString& themeFolder) {
    if (name.isEmpty()) return {};
    if (name.startsWith(QLatin1Char('/'))) return isPicture(name) ? QIcon(name) : QIcon(withSuffix(name));
    // With such a name the theme would look outside its own folders.
    if (name.contains(QLatin1Char('/'))) return {};
    if (const QString own = inThemeFolder(themeFolder, name); !own.isEmpty()) return QIcon(own);
    const QIcon themed = QIcon::fromTheme(name);
    return themed.isNull() ? QIcon::fromTheme(name + QLatin1String("-symbolic")) : themed;
}

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
