#include "platform/linux/drawing/QtIcons.h"

#include <QDir>
#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <algorithm>
#include <optional>
#include <utility>

#include "platform/linux/drawing/NamedIcon.h"
#include "platform/linux/drawing/QtResources.h"

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

QIcon ownWindowIcon() { return QIcon(new WindowIcon(QtResources().applicationIcon())); }

}  // namespace ovin
