#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <climits>
#include <functional>

namespace ovin {

/// No limit: the answer is heard whenever it comes, and waiting for it costs nothing. The bus itself answers for a program
/// that ends first.
constexpr int untilAnswered = INT_MAX;

/// A call of `method` that starts no program.
[[nodiscard]] QDBusMessage dbusCall(const QString& service, const QString& path, const QString& interface,
                                    const QString& method, const QVariantList& arguments = {});

/// Sends a call and returns at once. `answered` gets the reply or the error, in milliseconds at most `bound` after now, from
/// the event loop, unless `context` is gone by then.
void callLater(const QDBusConnection& bus, const QDBusMessage& call, int bound, QObject* context,
               std::function<void(const QDBusMessage&)> answered);

}  // namespace ovin
