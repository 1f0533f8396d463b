#include "platform/linux/drawing/QtIcons.h"

#include <QDir>
#include <QGuiApplication>
#include <QIconEngine>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <algorithm>
#include <optional>
#include <utility>

#include "platform/linux/drawing/IconLoader.h"
#include "platform/linux/drawing/ItemIcon.h"
#include "platform/linux/drawing/ItemPicture.h"
#include "platform/linux/drawing/NamedIcon.h"

namespace ovin {
namespace {

/// The size that window managers show, at two pixels to a point.
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

/// What stands for an item whose icon nobody has.
IconName generic() { return {QStringLiteral("application-x-executable"), {}}; }

std::optional<IconName> nameOf(const Image& image) {
    if (const auto* named = dynamic_cast<const NamedIcon*>(&image.content()))
        return IconName{QString::fromStdString(named->name), {}};
    const auto* item = dynamic_cast<const ItemIcon*>(&image.content());
    if (item == nullptr || item->name.empty()) return std::nullopt;
    return IconName{QString::fromStdString(item->name), QString::fromStdString(item->themeFolder)};
}

bool isCompiledIn(const IconName& icon) { return icon.name.startsWith(QLatin1Char(':')); }

QImage pixelsOf(const Image& image, int side) {
    const auto* item = dynamic_cast<const ItemIcon*>(&image.content());
    if (item == nullptr) return {};
    const ItemIcon::Pixels& pixels = item->pixels;
    const QImage picture =
        pictureOf(pixels.width, pixels.height, pixels.bytes.data(), static_cast<qsizetype>(pixels.bytes.size()));
    const bool fits = picture.width() <= side && picture.height() <= side;
    return fits ? picture : picture.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

/// An icon of limited size that is loaded when the first window asks for it: a program in the menu bar may have no window
/// for days, and loading the picture would take a fifth of the program's start.
class WindowIcon final : public QIconEngine {
public:
    explicit WindowIcon(const Image& image) : image_(image) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        icon().paint(painter, rect, Qt::AlignCenter, mode, state);
    }
    /// The size is in pixels here.
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return icon().pixmap(size, 1, mode, state);
    }
    QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return icon().actualSize(size, mode, state);
    }
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override {
        QList<QSize> sizes = icon().availableSizes(mode, state);
        sizes.removeIf([](QSize size) { return std::max(size.width(), size.height()) > largestWindowIcon; });
        return sizes;
    }
    [[nodiscard]] QIconEngine* clone() const override { return new WindowIcon(image_); }

private:
    const QIcon& icon() {
        if (!icon_) icon_ = qtIcon(image_);
        return *icon_;
    }

    const Image image_;
    std::optional<QIcon> icon_;
};

}  // namespace

QIcon qtIcon(const Image& image) {
    const auto* named = dynamic_cast<const NamedIcon*>(&image.content());
    return named == nullptr ? QIcon() : loaded(*named);
}

void loadIcon(const Image& image, int side) {
    IconLoader* const loader = IconLoader::shared();
    const auto name = nameOf(image);
    if (loader != nullptr && name && !isCompiledIn(*name)) loader->load(*name, side);
}

ReadIcon knownIcon(const Image& image, int side) {
    IconLoader* const loader = IconLoader::shared();
    const auto name = nameOf(image);
    if (name && isCompiledIn(*name)) return {qtIcon(image).pixmap(side, side).toImage()};
    std::optional<ReadIcon> icon = loader != nullptr && name ? loader->known(*name, side) : ReadIcon();
    if (icon && !icon->picture.isNull()) return *icon;
    if (QImage pixels = pixelsOf(image, side); !pixels.isNull()) return {pixels};
    if (!icon || loader == nullptr) return {};
    if (!loader->known(generic(), side)) loader->load(generic(), side);
    return loader->known(generic(), side).value_or(ReadIcon());
}

QIcon qtWindowIcon(const Image& image) { return QIcon(new WindowIcon(image)); }

}  // namespace ovin
