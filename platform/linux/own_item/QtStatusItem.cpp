#include "platform/linux/own_item/QtStatusItem.h"

#include <QCursor>
#include <QDBusMessage>
#include <QEvent>
#include <QGuiApplication>
#include <QPointer>
#include <QScreen>
#include <QtEndian>
#include <array>
#include <chrono>
#include <utility>

#include "platform/linux/displays/X11Pointer.h"
#include "platform/linux/drawing/QtDrawing.h"
#include "platform/linux/drawing/SymbolImage.h"
#include "platform/linux/system/DBusCall.h"

namespace ovin {
namespace {

const QString objectPath = "/StatusNotifierItem";
const QString watcherName = "org.kde.StatusNotifierWatcher";

/// Those of bars at ordinary and at high density; bars take the one that suits them.
constexpr std::array scales{1.0, 2.0};
/// How soon the release of a button is noticed at the latest.
constexpr std::chrono::milliseconds releaseInterval{10};

BusPicture pictureOf(const QImage& image) {
    const QImage pixels = image.convertToFormat(QImage::Format_ARGB32);
    BusPicture picture{pixels.width(), pixels.height(), {}};
    for (int y = 0; y < pixels.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(pixels.constScanLine(y));
        for (int x = 0; x < pixels.width(); ++x) {
            const quint32 pixel = qToBigEndian<quint32>(line[x]);
            picture.pixels.append(reinterpret_cast<const char*>(&pixel), sizeof pixel);
        }
    }
    return picture;
}

/// Bars tell positions in pixels of the X server, where the toolkit may count several to a point. Screens begin at the same
/// place for both.
QPoint fromServer(QPoint position) {
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QPoint origin = screen->geometry().topLeft();
        const QRect pixels(origin, (QSizeF(screen->geometry().size()) * screen->devicePixelRatio()).toSize());
        if (pixels.contains(position)) return origin + (position - origin) / screen->devicePixelRatio();
    }
    return position;
}

QString nextConnectionName() {
    static int count = 0;
    return "ovin-status-item-" + QString::number(++count);
}

}  // namespace

/// A connection of its own, so that the item goes with it.
struct QtStatusItem::Registration {
    Registration() = default;
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    ~Registration() { QDBusConnection::disconnectFromBus(name); }

    const QString name = nextConnectionName();
    QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
    QDBusServiceWatcher watchers{watcherName, bus, QDBusServiceWatcher::WatchForOwnerChange};
};

QtStatusItem::QtStatusItem(const QtScreens& screens) : screens_(screens), object_("Ovin") {
    // Bars tell of the button alone. With the Control key held the left one is the secondary one, as on macOS.
    object_.activated = [this](int x, int y) {
        const bool isSecondary = QGuiApplication::queryKeyboardModifiers().testFlag(Qt::ControlModifier);
        clicked(isSecondary ? StatusItemClick::rightMouseUp : StatusItemClick::leftMouseUp, x, y);
    };
    object_.contextMenuRequested = [this](int x, int y) { clicked(StatusItemClick::rightMouseUp, x, y); };
    release_.setSingleShot(true);
    connect(&release_, &QTimer::timeout, this, &QtStatusItem::deliverClicks);
    qGuiApp->installEventFilter(this);
    enter();
}

QtStatusItem::~QtStatusItem() = default;

void QtStatusItem::enter() {
    registration_.reset();
    registration_ = std::make_unique<Registration>();
    registration_->bus.registerObject(objectPath, &object_,
                                      QDBusConnection::ExportAllProperties | QDBusConnection::ExportScriptableSlots |
                                          QDBusConnection::ExportScriptableSignals);
    // A watcher that goes may be followed at once by one that waited for that, this very program's for one.
    connect(&registration_->watchers, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& newOwner) {
                if (!newOwner.isEmpty()) enroll();
            });
    enroll();
}

void QtStatusItem::enroll() {
    const QDBusMessage call =
        dbusCall(watcherName, "/StatusNotifierWatcher", watcherName, "RegisterStatusNotifierItem", {objectPath});
    static_cast<void>(registration_->bus.send(call));
}

void QtStatusItem::setAutosaveName(const std::string& name) {
    const QString id = QString::fromStdString(name);
    const bool isKnownByAnother = object_.hasToldId();
    if (id == object_.id()) return;
    object_.setId(id);
    if (isKnownByAnother) enter();
}

void QtStatusItem::onClick(std::function<void(StatusItemClick)> handler) { handler_ = std::move(handler); }

void QtStatusItem::setImage(const DrawnImage& image) {
    show([image](double scale) { return rendered(image, scale, QGuiApplication::palette()); },
         image.accessibilityDescription);
}

bool QtStatusItem::setSymbol(std::string_view name, const std::string& accessibilityDescription) {
    const auto picture = [symbol = std::string(name)](double scale) {
        return symbolImage(symbol, scale, QGuiApplication::palette());
    };
    if (picture(1).isNull()) return false;
    show(picture, accessibilityDescription);
    return true;
}

void QtStatusItem::show(Picture picture, const std::string& description) {
    picture_ = std::move(picture);
    object_.setTitle(QString::fromStdString(description));
    draw();
}

void QtStatusItem::draw() {
    if (!picture_) return;
    BusPictures pictures;
    for (const double scale : scales) pictures.append(pictureOf(picture_(scale)));
    object_.setPictures(pictures);
}

void QtStatusItem::showMenu(const Menu& menu) { menu_.show(menu, position_.value_or(QCursor::pos())); }

std::optional<Screen> QtStatusItem::screen() const {
    if (!position_) return std::nullopt;
    return screens_.at(*position_);
}

bool QtStatusItem::eventFilter(QObject* object, QEvent* event) {
    if (object == qGuiApp && event->type() == QEvent::ApplicationPaletteChange) draw();
    return QObject::eventFilter(object, event);
}

/// Bars tell of a press, and the click is its release. Besides, as long as the button is down the pointer is the bar's, and
/// a menu could have neither it nor the keyboard.
void QtStatusItem::clicked(StatusItemClick click, int x, int y) {
    position_ = fromServer({x, y});
    // A menu that has not opened yet need not: this press would have closed it. It counts as a click all the same, which
    // that press would not have been; nobody has seen a menu that it could have been meant for.
    if (!clicks_.empty() && clicks_.back() == StatusItemClick::rightMouseUp) clicks_.pop_back();
    clicks_.push_back(click);
    release_.start(0);
}

void QtStatusItem::deliverClicks() {
    bool isDown = isMouseButtonDown();
    if (isDown && !releases_) {
        // Told of the release, one does not wait for the next look; but it may have come before one could be told.
        releases_ = RawButtons::listen(RawButtons::Event::release, [this] { release_.start(0); });
        isDown = isMouseButtonDown();
    }
    if (isDown) return release_.start(releaseInterval);
    releases_.reset();
    const QPointer<QtStatusItem> self = this;
    for (const StatusItemClick click : std::exchange(clicks_, {})) {
        // From a copy, because the item may go meanwhile.
        if (const auto handler = self ? handler_ : nullptr) handler(click);
    }
}

std::unique_ptr<StatusItem> QtStatusBar::makeStatusItem() { return std::make_unique<QtStatusItem>(screens_); }

}  // namespace ovin
