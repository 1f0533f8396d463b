#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <chrono>
#include <functional>

namespace ovin {

/// One running program of a kind in each session: the one that owns the program's name on the session bus. It serves
/// `org.freedesktop.Application` there, by which a program that is started a second time asks it to come forward.
class SingleInstance final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    enum class Claim {
        /// This program is the one.
        first,
        /// Another one is, and has been asked to come forward.
        second,
        /// Another one is, and does not answer.
        unresponsive,
        /// There is no bus, or it refuses.
        unavailable,
    };

    /// `name` is the well-known name of the program, as in "org.ovin.Ovin".
    explicit SingleInstance(const QString& name);
    ~SingleInstance() override;

    /// Becomes the one, or asks the one that there is, waiting for its answer for at most `bound`. One that ends meanwhile
    /// is succeeded. Whoever is asked answers from its event loop, so it may be that far from it at most. Once.
    [[nodiscard]] Claim claim(std::chrono::milliseconds bound);

    /// Sets what another program that was started asks for. It is called from the event loop, also for what was asked
    /// before.
    void onActivate(std::function<void()> handler);

    /// This program is about to end: whoever asks from now on is refused, and becomes the one when this object goes.
    void giveUp() { isGivenUp_ = true; }

public Q_SLOTS:
    Q_SCRIPTABLE void Activate(const QVariantMap& platformData);
    /// There is nothing that this program could open: the same as `Activate`.
    Q_SCRIPTABLE void Open(const QStringList& uris, const QVariantMap& platformData);
    /// There are no actions.
    Q_SCRIPTABLE void ActivateAction(const QString& name, const QVariantList& parameter, const QVariantMap& platformData);

private:
    void activateLater();

    const QString name_;
    QDBusConnection bus_;
    std::function<void()> handler_;
    bool isWanted_ = false;
    bool isGivenUp_ = false;
};

}  // namespace ovin
