#include "platform/linux/QtIcons.h"

#include "platform/linux/LinuxWorkspace.h"

namespace ovin {

QIcon qtIcon(const Image& image) {
    const QString name = QString::fromStdString(dynamic_cast<const NamedIcon&>(image.content()).name);
    const QIcon icon = name.startsWith('/') ? QIcon(name) : QIcon::fromTheme(name);
    // A file that is no picture gives an icon without sizes.
    const bool isLoaded = !icon.isNull() && (!name.startsWith('/') || !icon.availableSizes().isEmpty());
    return isLoaded ? icon : QIcon::fromTheme("application-x-executable");
}

}  // namespace ovin
