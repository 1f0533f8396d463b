#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QObject>
#include <QPalette>

namespace ovin {

/// What the user has told the desktop of light and dark, as its settings portal says. Main thread only.
class ColorSchemeSetting final : public QObject {
    Q_OBJECT

public:
    /// In the portal's numbers.
    enum class Value : uint { none, dark, light };

    explicit ColorSchemeSetting(const QDBusConnection& bus);

    /// None until a portal has answered. One that starts later is asked then.
    [[nodiscard]] Value value() const { return value_; }

    /// Asks the portal, and with `startsPortal` has the bus start one that does not run.
    void read(bool startsPortal);

Q_SIGNALS:
    /// The portal has said something.
    void told();

private:
    Q_SLOT void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

    QDBusConnection bus_;
    QDBusServiceWatcher portal_;
    Value value_ = Value::none;
};

[[nodiscard]] QPalette darkPalette();
[[nodiscard]] QPalette lightPalette();

}  // namespace ovin
