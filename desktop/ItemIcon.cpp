#include "desktop/ItemIcon.h"

#include <QFileInfo>
#include <QFont>
#include <QIcon>
#include <QImageReader>
#include <QPainter>
#include <algorithm>

#include "platform/linux/SymbolicIcon.h"

namespace ovin {
namespace {

constexpr qint64 largestFile = 8 << 20;
constexpr int largestSide = 4096;

/// Looked through in this order below an item's own theme folder. A folder named by another program is not searched any
/// further: it may be the root of the disk.
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
    if (folder.isEmpty() || name.contains(QLatin1Char('/'))) return {};
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

QIcon namedIcon(const QString& name, const QString& themeFolder) {
    if (name.isEmpty()) return {};
    if (name.startsWith(QLatin1Char('/'))) return isPicture(name) ? QIcon(name) : QIcon(withSuffix(name));
    if (const QString own = inThemeFolder(themeFolder, name); !own.isEmpty()) return QIcon(own);
    const QIcon themed = QIcon::fromTheme(name);
    return themed.isNull() ? QIcon::fromTheme(name + QLatin1String("-symbolic")) : themed;
}

QPixmap scaled(const QImage& image, const ItemIconStyle& style) {
    const double ratio = static_cast<double>(image.width()) / image.height();
    const double width = std::clamp(style.height * ratio, 1.0, static_cast<double>(style.widest));
    const QSize size = (QSizeF(width, style.height) * style.pixelRatio).toSize().expandedTo({1, 1});
    QPixmap result = QPixmap::fromImage(image.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    result.setDevicePixelRatio(style.pixelRatio);
    return result;
}

QPixmap pixels(const QIcon& icon, const QString& name, const ItemIconStyle& style) {
    QPixmap picture = icon.pixmap(QSize(style.height, style.height), style.pixelRatio);
    if (!picture.isNull() && (isSymbolicIcon(icon.name()) || isSymbolicIcon(name))) tint(picture, style.foreground);
    return picture;
}

QPixmap emptyPicture(const ItemIconStyle& style) {
    QPixmap picture((QSizeF(style.height, style.height) * style.pixelRatio).toSize());
    picture.setDevicePixelRatio(style.pixelRatio);
    picture.fill(Qt::transparent);
    return picture;
}

QPixmap letter(const QString& title, const ItemIconStyle& style) {
    QPixmap picture = emptyPicture(style);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(style.foreground, 1.25));
    const QRectF frame(1, 1, style.height - 2, style.height - 2);
    painter.drawRoundedRect(frame, 3.5, 3.5);

    QFont font = painter.font();
    font.setFamilies({QStringLiteral("Inter"), QStringLiteral("DejaVu Sans")});
    font.setPixelSize(9);
    font.setWeight(QFont::DemiBold);
    painter.setFont(font);
    painter.drawText(frame, Qt::AlignCenter, title.left(1).toUpper());
    return picture;
}

}  // namespace

QPixmap itemIcon(const StatusItemState& state, const QString& title, const ItemIconStyle& style) {
    const auto& shown = state.shownIcon();
    const QIcon icon = namedIcon(shown.name, state.iconThemePath);
    if (const QPixmap named = icon.isNull() ? QPixmap() : pixels(icon, shown.name, style); !named.isNull()) return named;
    if (!shown.image.isNull()) return scaled(shown.image, style);
    return letter(title, style);
}

}  // namespace ovin
