#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <climits>
#include <functional>

namespace ovin {

/// No limit, because waiting does not block. If the program ends first, the bus answers for it.
constexpr int untilAnswered = INT_MAX;

/// A call of `method` that does not start the program.
[[nodiscard]] QDBusMessage dbusCall(const QString& service, const QString& path, const QString& interface,
                                    const QString& method, const QVariantList& arguments = {});

/// Sends a call and returns at once. `answered` gets the reply or the error from the event loop, after at most `bound`
/// milliseconds, unless `context` is destroyed by then.
void callLater(const QDBusConnection& bus, const QDBusMessage& call, int bound, QObject* context,
               std::function<void(const QDBusMessage&)> answered);

}  // namespace ovin
