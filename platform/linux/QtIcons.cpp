#include "platform/linux/QtIcons.h"

#include <QDir>
#include <QGuiApplication>
#include <QPalette>
#include <QPixmap>

#include "platform/linux/ItemIcon.h"
#include "platform/linux/ItemPicture.h"
#include "platform/linux/LinuxWorkspace.h"
#include "platform/linux/SymbolicIcon.h"

namespace ovin {
namespace {

/// Symbolic icons become pictures of one size: the one in which the ledge shows icons, at two pixels to a point.
constexpr int symbolicSide = 56;

/// What window managers show, at two pixels to a point.
constexpr int largestWindowIcon = 128;

/// A folder of the program's resources holds one picture in several sizes.
QIcon compiledIn(const QString& path) {
    if (!QFileInfo(path).isDir()) return QIcon(path);
    QIcon icon;
    for (const QFileInfo& file : QDir(path).entryInfoList(QDir::Files)) icon.addFile(file.filePath());
    return icon;
}

QIcon loaded(const NamedIcon& named) {
    const QString name = QString::fromStdString(named.name);
    const bool isCompiledIn = name.startsWith(':');
    if (!isCompiledIn && !name.startsWith('/')) return QIcon::fromTheme(name);
    const QIcon icon = isCompiledIn ? compiledIn(name) : QIcon(name);
    // A file that is no picture gives an icon without sizes.
    return icon.availableSizes().isEmpty() ? QIcon() : icon;
}

/// In the colour of texts where it has none of its own.
QIcon coloured(const QIcon& icon, const QString& name) {
    if (!isSymbolicIcon(icon.name()) && !isSymbolicIcon(name)) return icon;
    QPixmap picture = icon.pixmap(QSize(symbolicSide, symbolicSide));
    if (picture.isNull()) return {};
    tint(picture, QGuiApplication::palette().color(QPalette::WindowText));
    return QIcon(picture);
}

QIcon loaded(const ItemIcon& item) {
    const QString name = QString::fromStdString(item.name);
    const QIcon named = namedItemIcon(name, QString::fromStdString(item.themeFolder));
    if (!named.isNull()) return coloured(named, name);
    const ItemIcon::Pixels& pixels = item.pixels;
    const QImage picture =
        pictureOf(pixels.width, pixels.height, pixels.bytes.data(), static_cast<qsizetype>(pixels.bytes.size()));
    return picture.isNull() ? QIcon() : QIcon(QPixmap::fromImage(picture));
}

}  // namespace

QIcon qtIcon(const Image& image) {
    QIcon icon;
    if (const auto* named = dynamic_cast<const NamedIcon*>(&image.content())) icon = loaded(*named);
    if (const auto* item = dynamic_cast<const ItemIcon*>(&image.content())) icon = loaded(*item);
    return icon.isNull() ? QIcon::fromTheme("application-x-executable") : icon;
}

QIcon qtWindowIcon(const Image& image) {
    const QIcon icon = qtIcon(image);
    QIcon smaller;
    for (const QSize size : icon.availableSizes()) {
        if (size.width() <= largestWindowIcon && size.height() <= largestWindowIcon) smaller.addPixmap(icon.pixmap(size));
    }
    return smaller.isNull() ? icon : smaller;
}

}  // namespace ovin
