#include "platform/linux/drawing/IconReader.h"

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QBuffer>
#include <QDataStream>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QIcon>
#include <QImageReader>
#include <QPixmap>
#include <QStringList>
#include <algorithm>
#include <array>
#include <csignal>
#include <fstream>
#include <string>

#include "platform/linux/drawing/SymbolicIcon.h"

namespace ovin {
namespace {

constexpr qint64 largestFile = 8 << 20;
constexpr int largestSide = 4096;
/// Beside what the program has at its start: what decoding such a file takes, many times over.
constexpr rlim_t mostMemory = rlim_t{512} << 20;

/// Formats in which icons come. Other plug-ins of the toolkit are not let near files that anybody may have written.
constexpr std::array formats{"svg", "png", "xpm", "jpeg", "gif", "ico", "bmp", "webp"};

/// Searched in this order below an item's own theme folder. Nothing else in it is searched, because another program named
/// it: it may be the root of the disk.
constexpr std::array themeSizes{"scalable", "48x48", "32x32", "24x24", "22x22", "64x64", "128x128", "256x256", "16x16"};
constexpr std::array themeContexts{"apps", "status", "panel", "actions", "devices", "categories"};
constexpr std::array suffixes{".svg", ".png", ".xpm"};

/// The content of a regular file; empty when it is none, or too large. It is opened for reading only when it is known to be
/// one, because opening a device or a pipe may do something, and it is that very file, whatever stands at the path by then.
QByteArray contentOf(const QString& path) {
    const int place = open(QFile::encodeName(path).constData(), O_PATH | O_CLOEXEC);
    if (place < 0) return {};
    struct stat status {};
    QFile file;
    if (fstat(place, &status) == 0 && S_ISREG(status.st_mode) && status.st_size <= largestFile) {
        file.setFileName(QStringLiteral("/proc/self/fd/%1").arg(place));
        if (!file.open(QIODevice::ReadOnly)) file.setFileName({});
    }
    close(place);
    return file.isOpen() ? file.read(largestFile) : QByteArray();
}

QImage pictureIn(QByteArray content, int side) {
    // A compressed drawing may become as large as it likes.
    if (content.isEmpty() || content.startsWith("\x1f\x8b")) return {};
    QBuffer buffer(&content);
    QImageReader reader(&buffer);
    const QByteArray format = reader.format();
    if (std::find(formats.begin(), formats.end(), format) == formats.end()) return {};
    const QSize size = reader.size();
    if (size.isEmpty() || size.width() > largestSide || size.height() > largestSide) return {};
    const QSize fitting = size.scaled(side, side, Qt::KeepAspectRatio).expandedTo({1, 1});
    if (format == "svg" || fitting.width() < size.width()) reader.setScaledSize(fitting);
    return reader.read();
}

ReadIcon fileIcon(const QString& path, int side) { return {pictureIn(contentOf(path), side), isSymbolicIcon(path)}; }

ReadIcon withSuffix(const QString& stem, int side) {
    for (const auto* suffix : suffixes) {
        ReadIcon icon = fileIcon(stem + QLatin1String(suffix), side);
        if (!icon.picture.isNull()) return icon;
    }
    return {};
}

ReadIcon inThemeFolder(const QString& folder, const QString& name, int side) {
    if (!folder.startsWith(QLatin1Char('/'))) return {};
    ReadIcon icon = withSuffix(folder + QLatin1Char('/') + name, side);
    if (!icon.picture.isNull() || !QFileInfo(folder + QLatin1String("/hicolor")).isDir()) return icon;
    for (const auto* size : themeSizes) {
        for (const auto* context : themeContexts) {
            icon = withSuffix(
                QStringLiteral("%1/hicolor/%2/%3/%4").arg(folder, QLatin1String(size), QLatin1String(context), name), side);
            if (!icon.picture.isNull()) return icon;
        }
    }
    return {};
}

ReadIcon themeIcon(const QString& name, int side) {
    QIcon icon = QIcon::fromTheme(name);
    if (icon.isNull()) icon = QIcon::fromTheme(name + QLatin1String("-symbolic"));
    // By default the toolkit would multiply the side by the scale of the desktop.
    return {icon.pixmap(QSize(side, side), 1).toImage(), isSymbolicIcon(icon.name()) || isSymbolicIcon(name)};
}

/// Makes the process one that can do no harm: it ends with the one that started it, and does not take all of the memory.
void confineItself() {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    prctl(PR_SET_NAME, "ovin-icons");
    const rlimit none{};
    setrlimit(RLIMIT_CORE, &none);
    std::ifstream sizes("/proc/self/statm");
    rlim_t pages = 0;
    if (!(sizes >> pages)) return;
    const rlim_t most = pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + mostMemory;
    const rlimit memory{most, most};
    setrlimit(RLIMIT_AS, &memory);
}

void takeTheme(QDataStream& stream) {
    QString name;
    QString fallback;
    QStringList folders;
    QStringList fallbackFolders;
    stream >> name >> fallback >> folders >> fallbackFolders;
    QIcon::setThemeSearchPaths(folders);
    QIcon::setFallbackSearchPaths(fallbackFolders);
    QIcon::setThemeName(name);
    QIcon::setFallbackThemeName(fallback);
}

QByteArray answer(const ReadIcon& icon) {
    const QImage pixels = icon.picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << icon.isSymbolic << pixels.size()
           << QByteArray::fromRawData(reinterpret_cast<const char*>(pixels.constBits()), pixels.sizeInBytes());
    return bytes;
}

}  // namespace

ReadIcon readIcon(const IconName& icon, int side) {
    const QString& name = icon.name;
    if (name.isEmpty()) return {};
    if (name.startsWith(QLatin1Char('/'))) {
        ReadIcon file = fileIcon(name, side);
        return file.picture.isNull() ? withSuffix(name, side) : file;
    }
    // With such a name the theme would look outside its own folders.
    if (name.contains(QLatin1Char('/'))) return {};
    ReadIcon own = inThemeFolder(icon.themeFolder, name, side);
    return own.picture.isNull() ? themeIcon(name, side) : own;
}

int readIcons() {
    confineItself();
    // It shows nothing, so it needs no display, and what desktops add to the toolkit would only slow down its start.
    qunsetenv("QT_QPA_PLATFORMTHEME");
    std::array<std::string, 3> words{"ovin", "-platform", "minimal"};
    std::array<char*, 4> arguments{words[0].data(), words[1].data(), words[2].data(), nullptr};
    int count = 3;
    const QGuiApplication application(count, arguments.data());

    QFile input;
    QFile output;
    if (!input.open(STDIN_FILENO, QIODevice::ReadOnly | QIODevice::Unbuffered) ||
        !output.open(STDOUT_FILENO, QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        return 1;
    }
    QDataStream requests(&input);
    takeTheme(requests);
    for (;;) {
        IconName icon;
        qint32 side = 0;
        requests >> icon.name >> icon.themeFolder >> side;
        if (requests.status() != QDataStream::Ok) return 0;
        output.write(answer(readIcon(icon, side)));
    }
}

}  // namespace ovin
