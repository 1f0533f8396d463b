#include "platform/linux/system/DBusCall.h"

#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <utility>

namespace ovin {

QDBusMessage dbusCall(const QString& service, const QString& path, const QString& interface, const QString& method,
                      const QVariantList& arguments) {
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, interface, method);
    call.setArguments(arguments);
    call.setAutoStartService(false);
    return call;
}

void callLater(const QDBusConnection& bus, const QDBusMessage& call, int bound, QObject* context,
               std::function<void(const QDBusMessage&)> answered) {
    auto* pending = new QDBusPendingCallWatcher(bus.asyncCall(call, bound), context);
    QObject::connect(pending, &QDBusPendingCallWatcher::finished, context,
                     [answered = std::move(answered)](QDBusPendingCallWatcher* finished) {
                         finished->deleteLater();
                         answered(finished->reply());
                     });
}

}  // namespace ovin
