#include "platform/linux/drawing/DesktopColors.h"

#include <QApplication>
#include <QDBusMessage>
#include <QDBusVariant>

#include "platform/linux/drawing/QtColors.h"

namespace ovin {
namespace {

constexpr int paletteChanged = 0;

/// There the toolkit reads the user's colours from KDE's own file.
bool isKde() { return qgetenv("XDG_CURRENT_DESKTOP").split(':').contains("KDE"); }

}  // namespace

DesktopColors::DesktopColors(const QDBusConnection& session) : session_(session) {
    if (isKde()) {
        session_.connect(QString(), QStringLiteral("/KGlobalSettings"), QStringLiteral("org.kde.KGlobalSettings"),
                         QStringLiteral("notifyChange"), this, SLOT(globalSettingsChanged(int, int)));
        return;
    }
    setting_.emplace(session);
    connect(&*setting_, &ColorSchemeSetting::told, this, &DesktopColors::apply);
    setting_->read(false);
}

/// The toolkit reads KDE's file again when KDE's settings portal tells it to, but that portal need not run. So this program
/// tells itself, and nobody else, the same.
void DesktopColors::globalSettingsChanged(int kind, int) {
    if (kind != paletteChanged) return;
    QDBusMessage told = QDBusMessage::createTargetedSignal(
        session_.baseService(), QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("SettingChanged"));
    told << QStringLiteral("org.kde.kdeglobals.General") << QStringLiteral("ColorScheme")
         << QVariant::fromValue(QDBusVariant(QString()));
    session_.send(told);
}

/// The toolkit's own colours, unless they are light and the user wants dark ones, or the other way round.
void DesktopColors::apply() {
    QApplication::setPalette(QPalette());
    const ColorSchemeSetting::Value wanted = setting_->value();
    if (wanted == ColorSchemeSetting::Value::none) return;
    const bool wantsDark = wanted == ColorSchemeSetting::Value::dark;
    if (isDark(QApplication::palette()) != wantsDark) QApplication::setPalette(wantsDark ? darkPalette() : lightPalette());
}

}  // namespace ovin
