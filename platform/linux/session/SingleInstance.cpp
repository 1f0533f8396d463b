#include "platform/linux/session/SingleInstance.h"

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QThread>
#include <algorithm>

#include "platform/linux/system/DBusCall.h"

namespace ovin {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

const QString connectionName = "ovin-instance";
const QString interfaceName = "org.freedesktop.Application";
/// Between two attempts while the other program is ending.
constexpr milliseconds pause{20};

/// The object's path, as the interface requires: the name with slashes for dots and underscores for hyphens.
QString pathOf(QString name) { return "/" + name.replace('.', '/').replace('-', '_'); }

int remaining(Clock::time_point deadline) {
    const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now()).count();
    return static_cast<int>(std::max<milliseconds::rep>(left, 0));
}

}  // namespace

SingleInstance::SingleInstance(const QString& name)
    : name_(name), bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName)) {}

SingleInstance::~SingleInstance() { QDBusConnection::disconnectFromBus(connectionName); }

SingleInstance::Claim SingleInstance::claim(milliseconds bound, const QString& action) {
    // Registers the object before the name, so that no program finds the name without the object.
    if (!bus_.isConnected() || !bus_.registerObject(pathOf(name_), this, QDBusConnection::ExportScriptableSlots)) {
        return Claim::unavailable;
    }
    const auto deadline = Clock::now() + bound;
    const auto call = action.isEmpty() ? dbusCall(name_, pathOf(name_), interfaceName, "Activate", {QVariantMap()})
                                       : dbusCall(name_, pathOf(name_), interfaceName, "ActivateAction",
                                                  {action, QVariantList(), QVariantMap()});
    for (int left = remaining(deadline); left > 0; left = remaining(deadline)) {
        const auto reply = bus_.interface()->registerService(name_, QDBusConnectionInterface::DontQueueService,
                                                             QDBusConnectionInterface::DontAllowReplacement);
        if (!reply.isValid()) return Claim::unavailable;
        if (reply.value() == QDBusConnectionInterface::ServiceRegistered) return Claim::first;
        if (bus_.call(call, QDBus::Block, left).type() == QDBusMessage::ReplyMessage) return Claim::second;
        // The other program ended before it answered, so try again; or it does not answer, and no time is left.
        QThread::msleep(static_cast<unsigned long>(pause.count()));
    }
    return Claim::unresponsive;
}

/// Queues the handler, so that the caller has its answer before the handler does any work.
void SingleInstance::activateLater(const QString& action) {
    if (isGivenUp_) {
        if (calledFromDBus()) sendErrorReply(QDBusError::Failed, "The program is about to end");
        return;
    }
    const auto handle = [this, action] {
        if (handler_) handler_(action);
    };
    QMetaObject::invokeMethod(this, handle, Qt::QueuedConnection);
}

void SingleInstance::Activate(const QVariantMap&) { activateLater(); }

void SingleInstance::Open(const QStringList&, const QVariantMap&) { activateLater(); }

void SingleInstance::ActivateAction(const QString& name, const QVariantList&, const QVariantMap&) { activateLater(name); }

}  // namespace ovin
