#include "platform/linux/drawing/IconLoader.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QIcon>
#include <QPointer>
#include <algorithm>
#include <utility>

namespace ovin {
namespace {

/// Room for all that fit on a screen: if shown icons drove each other out, they would be read again and again.
constexpr qsizetype mostBytesKnown = 32 << 20;
/// A reader that dies more often than this is not started again for what is still wanted.
constexpr int mostFailures = 8;
/// With so many killed readers that do not end, no other one is started.
constexpr qsizetype mostHanging = 4;
/// More names than a screen has room for are those of a program that makes them up.
constexpr qsizetype mostOutstanding = 1000;
/// For readers to end when the program does. One that a file system holds never will.
constexpr int farewell = 100;

QPointer<IconLoader> theLoader;

QImage pictureOf(QSize size, const QByteArray& pixels, int side) {
    const bool fits = !size.isEmpty() && size.width() <= side && size.height() <= side;
    if (!fits || pixels.size() != qsizetype{4} * size.width() * size.height()) return {};
    return QImage(reinterpret_cast<const uchar*>(pixels.constData()), size.width(), size.height(),
                  qsizetype{4} * size.width(), QImage::Format_ARGB32_Premultiplied)
        .copy();
}

}  // namespace

IconLoader::IconLoader(QString program, std::chrono::milliseconds patience)
    : program_(std::move(program)), known_(mostBytesKnown) {
    // Once nothing else is to do: starting a program takes longer than showing the ledge.
    starting_.setSingleShot(true);
    connect(&starting_, &QTimer::timeout, this, &IconLoader::start);
    patience_.setSingleShot(true);
    patience_.setInterval(patience);
    connect(&patience_, &QTimer::timeout, this, &IconLoader::giveUp);
}

IconLoader::~IconLoader() {
    for (QProcess* reader : findChildren<QProcess*>()) {
        reader->disconnect();
        reader->kill();
        // Its destructor would wait for half a minute.
        if (!reader->waitForFinished(farewell)) reader->setParent(nullptr);
    }
}

IconLoader* IconLoader::shared() { return theLoader; }

void IconLoader::share(std::unique_ptr<IconLoader> loader) {
    delete theLoader;
    theLoader = loader.release();
    theLoader->setParent(QCoreApplication::instance());
}

void IconLoader::load(const IconName& icon, int side) {
    const Request request{icon, side};
    const Known* known = known_.object(request);
    const bool isOfTheme = icon.themeFolder.isEmpty() && !icon.name.startsWith(QLatin1Char('/'));
    if (known != nullptr && !known->icon.picture.isNull() && isOfTheme && known->theme == QIcon::themeName()) return;
    if (outstanding_.size() >= mostOutstanding || outstanding_.contains(request) || hanging_.values().contains(request))
        return;
    outstanding_.append(request);
    if (reader_ != nullptr)
        send(request);
    else
        starting_.start(0);
}

std::optional<ReadIcon> IconLoader::known(const IconName& icon, int side) const {
    const Known* known = known_.object({icon, side});
    return known == nullptr ? std::nullopt : std::optional(known->icon);
}

void IconLoader::start() {
    // A hanging reader may have ended, and another been started for it, before the event loop came here.
    if (reader_ != nullptr || hanging_.size() >= mostHanging) return;
    reader_ = new QProcess(this);
    // Decoders complain of strange pictures.
    reader_->setStandardErrorFile(QProcess::nullDevice());
    connect(reader_, &QProcess::readyReadStandardOutput, this, &IconLoader::receive);
    // Later, because a program that cannot be started says so before `start` returns.
    const auto lost = [this, reader = reader_] {
        if (reader == reader_) giveUp();
    };
    connect(reader_, &QProcess::errorOccurred, this, lost, Qt::QueuedConnection);
    connect(reader_, &QProcess::finished, this, lost, Qt::QueuedConnection);
    // What was no icon comes last: a reader may not have survived it, and others wait for it no second time.
    std::stable_partition(outstanding_.begin(), outstanding_.end(), [this](const Request& request) {
        const Known* known = known_.object(request);
        return known == nullptr || !known->icon.picture.isNull();
    });
    patience_.start();
    reader_->start(program_, {QLatin1String(readIconsArgument)});
    QDataStream theme(reader_);
    theme_ = QIcon::themeName();
    theme << theme_ << QIcon::fallbackThemeName() << QIcon::themeSearchPaths() << QIcon::fallbackSearchPaths();
    for (const Request& request : std::as_const(outstanding_)) send(request);
}

void IconLoader::send(const Request& request) {
    QDataStream stream(reader_);
    stream << request.icon.name << request.icon.themeFolder << qint32{request.side};
}

void IconLoader::receive() {
    QDataStream stream(reader_);
    while (!outstanding_.isEmpty()) {
        ReadIcon icon;
        QSize size;
        QByteArray pixels;
        stream.startTransaction();
        stream >> icon.isSymbolic >> size >> pixels;
        if (!stream.commitTransaction()) break;
        icon.picture = pictureOf(size, pixels, outstanding_.front().side);
        settle(std::move(icon));
        patience_.start();
    }
    if (outstanding_.isEmpty()) dismiss();
    Q_EMIT loaded();
}

void IconLoader::settle(ReadIcon icon) {
    const Request request = outstanding_.takeFirst();
    const qsizetype characters = request.icon.name.size() + request.icon.themeFolder.size();
    const qsizetype bytes = icon.picture.sizeInBytes() + 2 * characters + 100;
    known_.insert(request, new Known{std::move(icon), theme_}, bytes);
}

void IconLoader::giveUp() {
    QProcess* const reader = reader_;
    const Request feared = outstanding_.front();
    settle({});
    if (++failures_ >= mostFailures) {
        // What was known already stays known.
        outstanding_.removeIf([this](const Request& request) { return known_.contains(request); });
        while (!outstanding_.isEmpty()) settle({});
    }
    reader->kill();
    dismiss();
    if (reader->state() != QProcess::NotRunning) {
        hanging_.insert(reader, feared);
        connect(reader, &QProcess::finished, this, [this, reader] {
            hanging_.remove(reader);
            if (!outstanding_.isEmpty()) start();
        });
    }
    if (!outstanding_.isEmpty()) start();
    Q_EMIT loaded();
}

void IconLoader::dismiss() {
    if (outstanding_.isEmpty()) failures_ = 0;
    patience_.stop();
    reader_->disconnect(this);
    connect(reader_, &QProcess::finished, reader_, &QObject::deleteLater);
    // One that could not be started has ended already.
    if (reader_->state() == QProcess::NotRunning) reader_->deleteLater();
    reader_->closeWriteChannel();
    reader_ = nullptr;
}

}  // namespace ovin
