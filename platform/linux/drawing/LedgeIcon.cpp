#include "platform/linux/drawing/LedgeIcon.h"

#include <QPainter>
#include <string>

#include "platform/linux/drawing/IconLoader.h"
#include "platform/linux/drawing/ItemIcon.h"
#include "platform/linux/drawing/ItemPicture.h"
#include "platform/linux/drawing/NamedIcon.h"
#include "platform/linux/drawing/QtIcons.h"
#include "platform/linux/drawing/SymbolicIcon.h"

namespace ovin {
namespace {

/// Null when there is none, and nothing while it has not come.
using Picture = std::optional<QImage>;

bool isNone(const Picture& picture) { return picture && picture->isNull(); }

IconName iconName(const std::string& name, const std::string& themeFolder = {}) {
    return {QString::fromStdString(name), QString::fromStdString(themeFolder)};
}

QImage pictureOf(const ItemIcon::Pixels& pixels, int side) {
    const QImage picture =
        ovin::pictureOf(pixels.width, pixels.height, pixels.bytes.data(), static_cast<qsizetype>(pixels.bytes.size()));
    const bool fits = picture.width() <= side && picture.height() <= side;
    return fits ? picture : picture.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

/// How a picture is wanted.
struct Wish {
    int side;
    QColor textColor;
    bool readsAgain;
};

/// The pixels serve until the named icon has come, too.
Picture pictureOf(const IconName& name, const ItemIcon::Pixels& pixels, const Wish& wish) {
    Picture named = namedPicture(name, wish.side, wish.textColor, wish.readsAgain);
    if (named && !named->isNull()) return named;
    const QImage sent = pictureOf(pixels, wish.side);
    return sent.isNull() ? named : sent;
}

/// The overlay takes the lower right quarter.
Picture pictureOf(const ItemIcon& item, const Wish& wish) {
    Picture icon = pictureOf(iconName(item.name, item.themeFolder), item.pixels, wish);
    if (!icon || icon->isNull()) return icon;
    const Picture overlay = pictureOf(iconName(item.overlay.name, item.themeFolder), item.overlay.pixels,
                                      {wish.side / 2, wish.textColor, wish.readsAgain});
    if (!overlay || overlay->isNull()) return icon;
    *icon = icon->convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&*icon);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(icon->rect().adjusted(icon->width() / 2, icon->height() / 2, 0, 0), *overlay);
    return icon;
}

Picture pictureOf(const Image& image, const Wish& wish) {
    const Image::Content& content = image.content();
    if (const auto* either = dynamic_cast<const ItemOrApplicationIcon*>(&content)) {
        const auto icon = either->item->get();
        const Picture item = icon ? pictureOf(*icon, wish) : QImage();
        return isNone(item) ? namedPicture(iconName(either->application), wish.side, wish.textColor, wish.readsAgain) : item;
    }
    const auto* named = dynamic_cast<const NamedIcon*>(&content);
    if (named == nullptr) return QImage();
    if (named->name.starts_with(':')) return qtIcon(image).pixmap(QSize(wish.side, wish.side), 1).toImage();
    return namedPicture(iconName(named->name), wish.side, wish.textColor, wish.readsAgain);
}

}  // namespace

Picture namedPicture(const IconName& name, int side, const QColor& textColor, bool readsAgain) {
    IconLoader* const loader = IconLoader::shared();
    if (loader == nullptr || name.name.isEmpty()) return QImage();
    const auto icon = loader->known(name, side);
    if (!icon || readsAgain) loader->load(name, side);
    if (!icon || !icon->isSymbolic || icon->picture.isNull()) return icon ? Picture(icon->picture) : std::nullopt;
    QPixmap shape = QPixmap::fromImage(icon->picture);
    tint(shape, textColor);
    return shape.toImage();
}

Picture ledgeIcon(const Image& image, int side, const QColor& textColor, bool readsAgain) {
    Picture picture = pictureOf(image, {side, textColor, readsAgain});
    if (isNone(picture)) picture = namedPicture(iconName("application-x-executable"), side, textColor, readsAgain);
    return picture;
}

}  // namespace ovin
