#include "platform/linux/own_item/QtStatusItem.h"

#include <QCursor>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QEvent>
#include <QGuiApplication>
#include <QPointer>
#include <QStandardPaths>
#include <QtEndian>
#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

#include "platform/linux/drawing/QtDrawing.h"
#include "platform/linux/drawing/SymbolImage.h"
#include "platform/linux/system/DBusCall.h"

namespace ovin {
namespace {

const QString objectPath = "/StatusNotifierItem";
const QString watcherName = "org.kde.StatusNotifierWatcher";
const QString watcherPath = "/StatusNotifierWatcher";
const QString hostNames = "org.kde.StatusNotifierHost-";
const QString usualIcon = "org.ovin.Ovin-symbolic";
const QString symbolIcon = "org.ovin.Ovin-done-symbolic";

/// For bars at ordinary and at high density; a bar takes the picture that suits it.
constexpr std::array scales{1.0, 2.0};
/// How long the release of a button may go unnoticed at most.
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

/// The name of an icon that is installed with this program; empty where it is not, so that no bar looks for it in vain.
QString installed(const QString& icon) {
    const QString file = "icons/hicolor/symbolic/apps/" + icon + ".svg";
    return QStandardPaths::locate(QStandardPaths::GenericDataLocation, file).isEmpty() ? QString() : icon;
}

QDBusMessage propertyCall(const QString& path, const QString& interface, const QString& name) {
    return dbusCall(watcherName, path, "org.freedesktop.DBus.Properties", "Get", {interface, name});
}

QVariant answerOf(const QDBusMessage& reply) { return reply.arguments().value(0).value<QDBusVariant>().variant(); }

QString nextConnectionName() {
    static int count = 0;
    return "ovin-status-item-" + QString::number(++count);
}

}  // namespace

/// A connection of its own, because closing it removes the item from the bar.
struct QtStatusItem::Registration {
    Registration() = default;
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    ~Registration() { QDBusConnection::disconnectFromBus(name); }

    const QString name = nextConnectionName();
    QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
    QDBusServiceWatcher watchers{watcherName, bus, QDBusServiceWatcher::WatchForOwnerChange};
    /// Of all that may be hosts' names: the bus knows no narrower rule.
    QDBusServiceWatcher hosts{"org.kde*", bus, QDBusServiceWatcher::WatchForOwnerChange};
};

QtStatusItem::QtStatusItem(const QtScreens& screens, std::function<bool()> hasBar, std::function<void(bool)> hostChanged)
    : screens_(screens), hasBar_(std::move(hasBar)), hostChanged_(std::move(hostChanged)), object_("Ovin") {
    object_.activated = [this] { clicked(StatusItemClick::leftMouseUp); };
    object_.contextMenuRequested = [this] { clicked(StatusItemClick::rightMouseUp); };
    release_.setSingleShot(true);
    connect(&release_, &QTimer::timeout, this, &QtStatusItem::deliverClicks);
    qGuiApp->installEventFilter(this);
    enter();
}

QtStatusItem::~QtStatusItem() = default;

void QtStatusItem::enter() {
    registration_.reset();
    registration_ = std::make_unique<Registration>();
    constexpr auto exported = QDBusConnection::ExportAllProperties | QDBusConnection::ExportScriptableSlots |
                              QDBusConnection::ExportScriptableSignals;
    registration_->bus.registerObject(objectPath, &object_, exported);
    registration_->bus.registerObject(StatusNotifierObject::menuPath, &exportedMenu_, exported);
    // The next owner may follow at once: a watcher, such as this program's own, that was queued for the name.
    connect(&registration_->watchers, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& newOwner) {
                setHasHost(false);
                if (!newOwner.isEmpty()) enroll();
            });
    connect(&registration_->hosts, &QDBusServiceWatcher::serviceOwnerChanged, this, [this](const QString& name) {
        if (name.startsWith(hostNames)) askForHost();
    });
    for (const char* signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"}) {
        registration_->bus.connect(watcherName, watcherPath, watcherName, signal, this, SLOT(askForHost()));
    }
    enroll();
}

void QtStatusItem::enroll() {
    const QDBusMessage call = dbusCall(watcherName, watcherPath, watcherName, "RegisterStatusNotifierItem", {objectPath});
    static_cast<void>(registration_->bus.send(call));
    askForHost();
}

void QtStatusItem::askForHost() {
    const auto question = propertyCall(watcherPath, watcherName, "IsStatusNotifierHostRegistered");
    callLater(registration_->bus, question, untilAnswered, this,
              [this](const QDBusMessage& answer) { answerOf(answer).toBool() ? askForHostsName() : setHasHost(false); });
}

/// KDE's watcher says at any time that a host is registered. Hosts of its own bars and of most others have a name on the
/// bus.
void QtStatusItem::askForHostsName() {
    const auto question = propertyCall("/MainApplication", "org.qtproject.Qt.QCoreApplication", "applicationName");
    callLater(registration_->bus, question, untilAnswered, this, [this](const QDBusMessage& answer) {
        // A watcher that has ended has no host, and one that does not know the question is not KDE's.
        static const QStringList gone = {"org.freedesktop.DBus.Error.ServiceUnknown",
                                         "org.freedesktop.DBus.Error.NameHasNoOwner", "org.freedesktop.DBus.Error.NoReply",
                                         "org.freedesktop.DBus.Error.Disconnected"};
        if (!answerOf(answer).toString().startsWith("kded")) return setHasHost(!gone.contains(answer.errorName()));
        const auto names = dbusCall("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "ListNames");
        callLater(registration_->bus, names, untilAnswered, this, [this](const QDBusMessage& list) {
            setHasHost(std::ranges::any_of(list.arguments().value(0).toStringList(),
                                           [](const QString& name) { return name.startsWith(hostNames); }));
        });
    });
}

void QtStatusItem::setHasHost(bool hasHost) {
    hasHost_ = hasHost;
    hostChanged_(hasHost);
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
    show([image](double scale) { return rendered(image, scale, QGuiApplication::palette()); }, usualIcon,
         image.accessibilityDescription);
}

bool QtStatusItem::setSymbol(std::string_view name, const std::string& accessibilityDescription) {
    const auto picture = [symbol = std::string(name)](double scale) {
        return symbolImage(symbol, scale, QGuiApplication::palette());
    };
    if (picture(1).isNull()) return false;
    show(picture, symbolIcon, accessibilityDescription);
    return true;
}

void QtStatusItem::show(Picture picture, const QString& iconName, const std::string& description) {
    picture_ = std::move(picture);
    iconName_ = installed(iconName);
    object_.setTitle(QString::fromStdString(description));
    draw();
    // What changes the picture changes the menu as well.
    exportedMenu_.refresh();
}

void QtStatusItem::draw() {
    if (!picture_) return;
    BusPictures pictures;
    const QPalette palette = QGuiApplication::palette();
    for (const double scale : scales) pictures.append(pictureOf(outlined(picture_(scale), scale, palette)));
    object_.setIcon(iconName_, pictures);
}

void QtStatusItem::showMenu(const Menu& menu) { menu_.show(menu, QCursor::pos()); }

std::optional<Screen> QtStatusItem::screen() const {
    return screens_.ofItem(pointer_ ? std::optional(pointer_->position) : std::nullopt);
}

bool QtStatusItem::eventFilter(QObject* object, QEvent* event) {
    if (object == qGuiApp && event->type() == QEvent::ApplicationPaletteChange) draw();
    return QObject::eventFilter(object, event);
}

/// Bars report the press, but a click is delivered at the release. Besides, the bar holds the pointer while the button is
/// down, so that a menu could grab neither the pointer nor the keyboard.
void QtStatusItem::clicked(StatusItemClick click) {
    pointer_ = X11Pointer::read();
    // Bars report only the button. With the Control key held, the left button counts as the secondary one, as on macOS.
    if (pointer_ && pointer_->hasControlDown) click = StatusItemClick::rightMouseUp;
    // Drops a right click whose menu has not opened yet, because this press would have closed that menu. This press counts
    // as a click all the same, because the user has seen no menu that it could have been meant to close.
    if (!clicks_.empty() && clicks_.back() == StatusItemClick::rightMouseUp) clicks_.pop_back();
    clicks_.push_back(click);
    release_.start(0);
}

void QtStatusItem::deliverClicks() {
    if (pointer_ && pointer_->hasButtonDown) {
        // Saves waiting for the timer. The release may have come before this listened.
        if (!releases_) releases_ = RawButtons::listen(RawButtons::Event::release, [this] { release_.start(0); });
        const auto now = X11Pointer::read();
        pointer_->hasButtonDown = now && now->hasButtonDown;
        if (pointer_->hasButtonDown) return release_.start(releaseInterval);
    }
    releases_.reset();
    const QPointer<QtStatusItem> self = this;
    for (const StatusItemClick click : std::exchange(clicks_, {})) {
        // Called from a copy, because the handler may destroy the item.
        if (const auto handler = self ? handler_ : nullptr) handler(click);
    }
}

std::unique_ptr<StatusItem> QtStatusBar::makeStatusItem() {
    return std::make_unique<QtStatusItem>(screens_, hasBar_, hostChanged_);
}

}  // namespace ovin
