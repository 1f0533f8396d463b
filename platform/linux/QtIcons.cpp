#include "platform/linux/QtIcons.h"

#include <QDir>

#include "platform/linux/LinuxWorkspace.h"

namespace ovin {
namespace {

/// A folder of the program's resources holds one picture in several sizes.
QIcon compiledIn(const QString& path) {
    if (!QFileInfo(path).isDir()) return QIcon(path);
    QIcon icon;
    for (const QFileInfo& file : QDir(path).entryInfoList(QDir::Files)) icon.addFile(file.filePath());
    return icon;
}

QIcon named(const QString& name) {
    if (name.startsWith(':')) return compiledIn(name);
    return name.startsWith('/') ? QIcon(name) : QIcon::fromTheme(name);
}

}  // namespace

QIcon qtIcon(const Image& image) {
    const QString name = QString::fromStdString(dynamic_cast<const NamedIcon&>(image.content()).name);
    const QIcon icon = named(name);
    const bool isFile = name.startsWith('/') || name.startsWith(':');
    // A file that is no picture gives an icon without sizes.
    const bool isLoaded = !icon.isNull() && (!isFile || !icon.availableSizes().isEmpty());
    return isLoaded ? icon : QIcon::fromTheme("application-x-executable");
}

}  // namespace ovin
