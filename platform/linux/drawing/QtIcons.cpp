#include "platform/linux/drawing/QtIcons.h"

#include <QDateTime>
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

#include "platform/linux/drawing/ItemIcon.h"
#include "platform/linux/drawing/ItemPicture.h"
#include "platform/linux/drawing/NamedIcon.h"
#include "platform/linux/drawing/SymbolicIcon.h"

namespace ovin {
namespace {

/// Symbolic icons become pictures of one size: the one in which the ledge shows icons, at two pixels to a point.
constexpr int symbolicSide = 56;

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

/// A picture in one size, scaled down on demand. The toolkit's own icon class would leak: it caches what it draws under a
/// new name each time the same picture arrives, and drops the picture in time, but never the name.
class PictureIcon final : public QIconEngine {
public:
    explicit PictureIcon(QImage picture) : picture_(std::move(picture)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
        const QSizeF pixels = QSizeF(rect.size()) * painter->device()->devicePixelRatio();
        painter->drawImage(rect, scaled(pixels.toSize()));
    }
    /// The size is in pixels here.
    QPixmap pixmap(const QSize& size, QIcon::Mode, QIcon::State) override { return QPixmap::fromImage(scaled(size)); }
    QSize actualSize(const QSize& size, QIcon::Mode, QIcon::State) override {
        const bool fits = picture_.width() <= size.width() && picture_.height() <= size.height();
        return fits ? picture_.size() : picture_.size().scaled(size, Qt::KeepAspectRatio);
    }
    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override { return {picture_.size()}; }
    [[nodiscard]] QIconEngine* clone() const override { return new PictureIcon(picture_); }

private:
    QImage scaled(QSize size) {
        size = actualSize(size, {}, {});
        if (size == picture_.size()) return picture_;
        return picture_.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }

    const QImage picture_;
};

/// Gives a symbolic icon, which has no colours of its own, the colour of texts.
QIcon coloured(const QIcon& icon, const QString& name) {
    if (!isSymbolicIcon(icon.name()) && !isSymbolicIcon(name)) return icon;
    QPixmap picture = icon.pixmap(QSize(symbolicSide, symbolicSide));
    if (picture.isNull()) return {};
    tint(picture, QGuiApplication::palette().color(QPalette::WindowText));
    return QIcon(new PictureIcon(picture.toImage()));
}

QIcon loaded(const ItemIcon& item) {
    const QString name = QString::fromStdString(item.name);
    const QIcon named = namedItemIcon(name, QString::fromStdString(item.themeFolder));
    if (!named.isNull()) return coloured(named, name);
    const ItemIcon::Pixels& pixels = item.pixels;
    const QImage picture =
        pictureOf(pixels.width, pixels.height, pixels.bytes.data(), static_cast<qsizetype>(pixels.bytes.size()));
    return picture.isNull() ? QIcon() : QIcon(new PictureIcon(picture));
}

QIcon loaded(const Image& image) {
    if (const auto* named = dynamic_cast<const NamedIcon*>(&image.content())) return loaded(*named);
    if (const auto* item = dynamic_cast<const ItemIcon*>(&image.content())) return loaded(*item);
    return {};
}

/// When an index of the theme's icons was last written, which installing a program does.
QDateTime lastIndexed() {
    QDateTime last;
    for (const QString& folder : QIcon::themeSearchPaths()) {
        for (const QString& theme : {QIcon::themeName(), QStringLiteral("hicolor")}) {
            last = std::max(last, QFileInfo(folder + '/' + theme + "/icon-theme.cache").lastModified());
        }
    }
    return last;
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
    static QDateTime known = lastIndexed();
    QIcon icon = loaded(image);
    if (icon.isNull() && lastIndexed() != known) {
        known = lastIndexed();
        // The toolkit reads its index of icons again only when it is told where themes are.
        QIcon::setThemeSearchPaths(QIcon::themeSearchPaths());
        icon = loaded(image);
    }
    return icon.isNull() ? QIcon::fromTheme("application-x-executable") : icon;
}

QIcon qtWindowIcon(const Image& image) { return QIcon(new WindowIcon(image)); }

}  // namespace ovin
