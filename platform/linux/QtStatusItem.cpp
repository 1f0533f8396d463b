#include "platform/linux/QtStatusItem.h"

#include <QDBusMessage>
#include <QEvent>
#include <QGuiApplication>
#include <QtEndian>
#include <array>
#include <utility>

#include "platform/linux/DBusCall.h"
#include "platform/linux/QtDrawing.h"

namespace ovin {
namespace {

const QString connectionName = "ovin-status-item";
const QString objectPath = "/StatusNotifierItem";
const QString watcherName = "org.kde.StatusNotifierWatcher";

/// Those of bars at ordinary and at high density; bars take the one that suits them.
constexpr std::array scales{1.0, 2.0};

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

}  // namespace

QtStatusItem::QtStatusItem(const QtScreens& screens)
    : screens_(screens),
      bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName)),
      object_("Ovin"),
      watchers_(watcherName, bus_, QDBusServiceWatcher::WatchForRegistration) {
    object_.activated = [this](int x, int y) { clicked(StatusItemClick::leftMouseUp, x, y); };
    object_.contextMenuRequested = [this](int x, int y) { clicked(StatusItemClick::rightMouseUp, x, y); };
    bus_.registerObject(objectPath, &object_,
                        QDBusConnection::ExportAllProperties | QDBusConnection::ExportScriptableSlots |
                            QDBusConnection::ExportScriptableSignals);
    connect(&watchers_, &QDBusServiceWatcher::serviceRegistered, this, &QtStatusItem::enroll);
    qGuiApp->installEventFilter(this);
    enroll();
}

QtStatusItem::~QtStatusItem() { QDBusConnection::disconnectFromBus(connectionName); }

// Not there yet.
void QtStatusItem::setAutosaveName(const std::string&) {}
bool QtStatusItem::setSymbol(std::string_view, const std::string&) { return false; }

void QtStatusItem::onClick(std::function<void(StatusItemClick)> handler) { handler_ = std::move(handler); }

void QtStatusItem::setImage(const DrawnImage& image) {
    image_ = image;
    object_.setTitle(QString::fromStdString(image.accessibilityDescription));
    draw();
}

void QtStatusItem::showMenu(const Menu& menu) {
    menu_.clear();
    for (const auto& entry : menu) {
        if (!entry) {
            menu_.addSeparator();
            continue;
        }
        // Ampersands are marks of shortcuts to the toolkit.
        QAction* const action = menu_.addAction(QString::fromStdString(entry->title).replace("&", "&&"));
        action->setCheckable(entry->isOn);
        action->setChecked(entry->isOn);
        if (!entry->keyEquivalent.empty()) {
            action->setShortcut(QKeySequence("Ctrl+" + QString::fromStdString(entry->keyEquivalent)));
        }
        connect(action, &QAction::triggered, this, [run = entry->action] { run(); });
    }
    menu_.popup(position_);
}

std::optional<Screen> QtStatusItem::screen() const { return screens_.at(position_); }

bool QtStatusItem::eventFilter(QObject* object, QEvent* event) {
    if (object == qGuiApp && event->type() == QEvent::ApplicationPaletteChange) draw();
    return QObject::eventFilter(object, event);
}

void QtStatusItem::enroll() {
    QDBusMessage call =
        dbusCall(watcherName, "/StatusNotifierWatcher", watcherName, "RegisterStatusNotifierItem", {objectPath});
    bus_.send(call);
}

void QtStatusItem::draw() {
    if (!image_) return;
    BusPictures pictures;
    for (const double scale : scales) pictures.append(pictureOf(rendered(*image_, scale, QGuiApplication::palette())));
    object_.setPictures(pictures);
}

void QtStatusItem::clicked(StatusItemClick click, int x, int y) {
    position_ = QPoint(x, y);
    if (handler_) handler_(click);
}

std::unique_ptr<StatusItem> QtStatusBar::makeStatusItem() { return std::make_unique<QtStatusItem>(screens_); }

}  // namespace ovin
