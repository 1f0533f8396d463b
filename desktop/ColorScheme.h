#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

#include "platform/linux/drawing/ColorSchemeSetting.h"

namespace ovin {

/// Light or dark: what the user told the bar, else what the desktop's settings say, else what the toolkit started with.
/// Changes are taken up while the bar runs. Exported at /org/ovin/MenuBarAgent: others may set `Choice`.
class ColorScheme : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.ovin.MenuBarAgent")
    /// "light", "dark" or "automatic".
    Q_PROPERTY(QString Choice READ choice WRITE setChoice)

public:
    ColorScheme(const QDBusConnection& bus, const QString& choice);

    [[nodiscard]] const QString& choice() const { return choice_; }
    /// Anything but the three words is passed over.
    void setChoice(const QString& choice);

private:
    void apply() const;
    [[nodiscard]] bool isDark() const;

    QDBusConnection bus_;
    QString choice_;
    ColorSchemeSetting setting_;
    bool startedDark_;
};

}  // namespace ovin
