#include "desktop/StatusItem.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QFile>
#include <utility>

#include "platform/linux/system/DBusCall.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;

const QString kdeInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString freedesktopInterface = QStringLiteral("org.freedesktop.StatusNotifierItem");
const QString daemonName = QStringLiteral("org.freedesktop.DBus");
const QString daemonPath = QStringLiteral("/org/freedesktop/DBus");

/// Programs announce each changed property by itself.
constexpr auto changesCollected = 10ms;
/// After this time an item that has not answered is shown without anything known of it.
constexpr auto longestUnseen = 250ms;
constexpr int requestBound = 25'000;

QVariantMap propertiesOf(const QDBusMessage& answer) {
    if (answer.type() != QDBusMessage::ReplyMessage || answer.signature() != QLatin1String("a{sv}")) return {};
    return qdbus_cast<QVariantMap>(answer.arguments().constFirst());
}

/// No answer in time is no refusal: asking a slow program for something else as well would do two things at one click.
bool isRefusal(const QDBusMessage& answer) {
    if (answer.type() != QDBusMessage::ErrorMessage) return false;
    const auto error = QDBusError(answer).type();
    return error != QDBusError::NoReply && error != QDBusError::Timeout && error != QDBusError::TimedOut;
}

QString method(StatusItemRequest request) {
    if (request == StatusItemRequest::activate) return QStringLiteral("Activate");
    if (request == StatusItemRequest::secondaryActivate) return QStringLiteral("SecondaryActivate");
    return QStringLiteral("ContextMenu");
}

}  // namespace

StatusItem::StatusItem(const QDBusConnection& bus, StatusItemAddress address, std::uint64_t registration)
    : bus_(bus), address_(std::move(address)), registration_(registration), interface_(kdeInterface) {
    if (address_.destination.starts_with(':')) owner_ = QString::fromStdString(address_.destination);
    updates_.setSingleShot(true);
    updates_.setInterval(changesCollected);
    connect(&updates_, &QTimer::timeout, this, &StatusItem::read);
    patience_.setSingleShot(true);
    connect(&patience_, &QTimer::timeout, this, &StatusItem::becomeReady);
    patience_.start(longestUnseen);
    resolveOwner();
    read();
}

QString StatusItem::title() const {
    if (!state_.title.isEmpty()) return state_.title;
    return processName_.isEmpty() ? QString::fromStdString(address_.destination) : processName_;
}

void StatusItem::resolveOwner() {
    const QString destination = QString::fromStdString(address_.destination);
    const auto question = dbusCall(daemonName, daemonPath, daemonName, QStringLiteral("GetNameOwner"), {destination});
    callLater(bus_, question, untilAnswered, this, [this](const QDBusMessage& answer) {
        owner_ = answer.arguments().value(0).toString();
        if (answer.type() == QDBusMessage::ReplyMessage) readProcessName();
    });
}

void StatusItem::readProcessName() {
    const auto question =
        dbusCall(daemonName, daemonPath, daemonName, QStringLiteral("GetConnectionUnixProcessID"), {owner_});
    callLater(bus_, question, untilAnswered, this, [this](const QDBusMessage& answer) {
        QFile file(QStringLiteral("/proc/%1/comm").arg(answer.arguments().value(0).toUInt()));
        if (file.open(QIODevice::ReadOnly)) processName_ = QString::fromUtf8(file.readLine(256)).trimmed();
        if (state_.title.isEmpty()) announceChange();
    });
}

void StatusItem::changed() {
    if (!updates_.isActive()) updates_.start();
}

void StatusItem::retry() {
    if (!hasState_ && !isReading_) read();
}

void StatusItem::read() {
    isOutdated_ = isReading_;
    if (!std::exchange(isReading_, true)) readAll(interface_);
}

void StatusItem::readAll(const QString& interface) {
    const auto question = dbusCall(QString::fromStdString(address_.destination), QString::fromStdString(address_.path),
                                   QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("GetAll"), {interface});
    callLater(bus_, question, untilAnswered, this,
              [this, interface](const QDBusMessage& answer) { receive(interface, answer); });
}

void StatusItem::receive(const QString& interface, const QDBusMessage& answer) {
    const QVariantMap properties = propertiesOf(answer);
    if (properties.isEmpty() && interface == interface_ && !hasState_) {
        return readAll(interface == kdeInterface ? freedesktopInterface : kdeInterface);
    }
    isReading_ = false;
    if (!properties.isEmpty()) {
        interface_ = interface;
        show(properties);
    }
    becomeReady();
    if (isOutdated_) changed();
    if (!hasState_) retryLater();
}

/// Some programs register first and serve their item moments later.
void StatusItem::retryLater() {
    constexpr std::chrono::milliseconds pauses[] = {300ms, 1s, 5s};
    if (failures_ < 3) QTimer::singleShot(pauses[failures_++], this, &StatusItem::retry);
}

void StatusItem::show(const QVariantMap& properties) {
    hasState_ = true;
    state_ = readStatusItemState(properties);
    followMenu();
    announceChange();
}

void StatusItem::becomeReady() {
    if (std::exchange(isReady_, true)) return;
    patience_.stop();
    announceChange();
}

void StatusItem::announceChange() {
    ++revision_;
    Q_EMIT stateChanged();
}

void StatusItem::followMenu() {
    if (menuPath_ == state_.menuPath) return;
    menuPath_ = state_.menuPath;
    // An open menu tells of its closing only while it exists.
    if (menu_) menu_->menu().close();
    menu_.reset();
    if (!menuPath_.isEmpty())
        menu_ = std::make_unique<DBusMenu>(bus_, QString::fromStdString(address_.destination), menuPath_);
}

QDBusMessage StatusItem::call(const QString& method, const QVariantList& arguments) const {
    return dbusCall(QString::fromStdString(address_.destination), QString::fromStdString(address_.path), interface_, method,
                    arguments);
}

void StatusItem::scroll(int delta, Qt::Orientation orientation) {
    const QString direction = orientation == Qt::Vertical ? QStringLiteral("vertical") : QStringLiteral("horizontal");
    bus_.send(call(QStringLiteral("Scroll"), {delta, direction}));
}

void StatusItem::follow(std::vector<StatusItemRequest> requests, QPoint where) {
    if (requests.empty()) return;
    const StatusItemRequest first = requests.front();
    requests.erase(requests.begin());
    if (first == StatusItemRequest::menu) return openMenu(std::move(requests), where);
    callLater(bus_, call(method(first), {where.x(), where.y()}), requestBound, this,
              [this, otherwise = std::move(requests), where](const QDBusMessage& answer) {
                  if (isRefusal(answer)) follow(otherwise, where);
              });
}

void StatusItem::openMenu(std::vector<StatusItemRequest> otherwise, QPoint where) {
    if (!menu_) return follow(std::move(otherwise), where);
    menu_->prepare([this, otherwise = std::move(otherwise), where](bool isUsable) {
        if (isUsable)
            Q_EMIT menuReady(&menu_->menu());
        else
            follow(otherwise, where);
    });
}

}  // namespace ovin
