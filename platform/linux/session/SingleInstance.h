#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <chrono>
#include <functional>
#include <utility>

namespace ovin {

/// Lets only one instance of a program run in each session: the one that owns the program's name on the session bus. It
/// serves `org.freedesktop.Application` there, by which a second instance asks it to come forward.
class SingleInstance final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    enum class Claim {
        /// This is the one instance.
        first,
        /// Another instance runs, and has been asked to come forward.
        second,
        /// Another instance runs, and does not answer.
        unresponsive,
        /// There is no bus, or the bus refused.
        unavailable,
    };

    /// `name` is the well-known name of the program, as in "org.ovin.Ovin".
    explicit SingleInstance(const QString& name);
    ~SingleInstance() override;

    /// Becomes the one instance, or asks the running one for `action` and waits for its answer for at most `bound`. Without
    /// an action the running one is asked to come forward. Takes over when that one ends meanwhile. `bound` must allow for
    /// the time until its event loop runs. Call it once.
    [[nodiscard]] Claim claim(std::chrono::milliseconds bound, const QString& action = {});

    /// Sets what to do when another program asks this one for an action, or to come forward: then the action is empty. Names
    /// may be anything. Called from the event loop, so set it before that runs.
    void onActivate(std::function<void(const QString& action)> handler) { handler_ = std::move(handler); }

    /// This program is about to end: instances that ask are refused, and take over when this object is destroyed.
    void giveUp() { isGivenUp_ = true; }

public Q_SLOTS:
    Q_SCRIPTABLE void Activate(const QVariantMap& platformData);
    /// The same as `Activate`, because this program can open nothing.
    Q_SCRIPTABLE void Open(const QStringList& uris, const QVariantMap& platformData);
    Q_SCRIPTABLE void ActivateAction(const QString& name, const QVariantList& parameter, const QVariantMap& platformData);

private:
    void activateLater(const QString& action = {});

    const QString name_;
    QDBusConnection bus_;
    std::function<void(const QString& action)> handler_;
    bool isGivenUp_ = false;
};

}  // namespace ovin
