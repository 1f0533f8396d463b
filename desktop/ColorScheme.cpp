#include "desktop/ColorScheme.h"

#include <QApplication>
#include <QPalette>

#include "platform/linux/system/DBusCall.h"

namespace ovin {
namespace {

const QString portalName = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString settingGroup = QStringLiteral("org.freedesktop.appearance");
const QString settingKey = QStringLiteral("color-scheme");

QPalette makePalette(QRgb window, QRgb text, QRgb dimmed, QRgb highlight) {
    QPalette palette{QColor(window)};
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, QColor(text));
        palette.setColor(QPalette::Disabled, role, QColor(dimmed));
    }
    palette.setColor(QPalette::Base, QColor(window));
    palette.setColor(QPalette::Highlight, QColor(highlight));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

QPalette darkPalette() { return makePalette(0xFF242426, 0xFFF2F2F4, 0xFF77777C, 0xFF2F6FDE); }
QPalette lightPalette() { return makePalette(0xFFF4F4F5, 0xFF1C1C1E, 0xFF9C9CA1, 0xFF2F6FDE); }

/// The portal's older method wraps the value twice.
uint number(QVariant value) {
    while (value.userType() == qMetaTypeId<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
    return value.toUInt();
}

}  // namespace

ColorScheme::ColorScheme(const QDBusConnection& bus, const QString& choice)
    : bus_(bus), choice_(choice), startedDark_(QGuiApplication::palette().color(QPalette::Window).lightness() < 128) {
    bus_.connect(portalName, portalPath, portalInterface, QStringLiteral("SettingChanged"), this,
                 SLOT(settingChanged(QString, QString, QDBusVariant)));
    bus_.registerObject(QStringLiteral("/org/ovin/MenuBarAgent"), this, QDBusConnection::ExportAllProperties);
    apply();
    readSetting();
}

void ColorScheme::setChoice(const QString& choice) {
    if (choice != QLatin1String("light") && choice != QLatin1String("dark") && choice != QLatin1String("automatic")) return;
    choice_ = choice;
    apply();
}

/// This may start the portal, because the portal is a part of the desktop, unlike the programs behind the items.
void ColorScheme::readSetting() {
    auto question = dbusCall(portalName, portalPath, portalInterface, QStringLiteral("Read"), {settingGroup, settingKey});
    question.setAutoStartService(true);
    callLater(bus_, question, untilAnswered, this, [this](const QDBusMessage& answer) {
        if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty()) return;
        setting_ = number(answer.arguments().constFirst());
        apply();
    });
}

void ColorScheme::settingChanged(const QString& group, const QString& key, const QDBusVariant& value) {
    if (group != settingGroup || key != settingKey) return;
    setting_ = number(value.variant());
    apply();
}

bool ColorScheme::isDark() const {
    if (choice_ != QLatin1String("automatic")) return choice_ == QLatin1String("dark");
    return setting_ == 0 ? startedDark_ : setting_ == 1;
}

void ColorScheme::apply() const { QApplication::setPalette(isDark() ? darkPalette() : lightPalette()); }

}  // namespace ovin
