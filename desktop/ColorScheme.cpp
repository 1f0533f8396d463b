#include "desktop/ColorScheme.h"

#include <QApplication>

#include "platform/linux/drawing/QtColors.h"

namespace ovin {

ColorScheme::ColorScheme(const QDBusConnection& bus, const QString& choice)
    : bus_(bus), choice_(choice), setting_(bus), startedDark_(ovin::isDark(QGuiApplication::palette())) {
    bus_.registerObject(QStringLiteral("/org/ovin/MenuBarAgent"), this, QDBusConnection::ExportAllProperties);
    apply();
    connect(&setting_, &ColorSchemeSetting::told, this, &ColorScheme::apply);
    // This may start the portal, because the portal is a part of the desktop, unlike the programs behind the items.
    setting_.read(true);
}

void ColorScheme::setChoice(const QString& choice) {
    if (choice != QLatin1String("light") && choice != QLatin1String("dark") && choice != QLatin1String("automatic")) return;
    choice_ = choice;
    apply();
}

bool ColorScheme::isDark() const {
    if (choice_ != QLatin1String("automatic")) return choice_ == QLatin1String("dark");
    const ColorSchemeSetting::Value setting = setting_.value();
    return setting == ColorSchemeSetting::Value::none ? startedDark_ : setting == ColorSchemeSetting::Value::dark;
}

void ColorScheme::apply() const { QApplication::setPalette(isDark() ? darkPalette() : lightPalette()); }

}  // namespace ovin
