#include "platform/linux/drawing/ColorSchemeSetting.h"

#include <QDBusMessage>

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

/// The portal's older method wraps the value twice. Numbers that nobody knows yet count as none.
ColorSchemeSetting::Value valueOf(QVariant value) {
    while (value.userType() == qMetaTypeId<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
    const uint number = value.toUInt();
    return number <= 2 ? ColorSchemeSetting::Value{number} : ColorSchemeSetting::Value::none;
}

}  // namespace

ColorSchemeSetting::ColorSchemeSetting(const QDBusConnection& bus)
    : bus_(bus), portal_(portalName, bus, QDBusServiceWatcher::WatchForRegistration) {
    // The toolkit looks the types of a slot up by their names, and would refuse one that nobody has named yet.
    qRegisterMetaType<QDBusVariant>();
    bus_.connect(portalName, portalPath, portalInterface, QStringLiteral("SettingChanged"), this,
                 SLOT(settingChanged(QString, QString, QDBusVariant)));
    // At login this program may be quicker than what starts the portal, and the portal tells changes only.
    connect(&portal_, &QDBusServiceWatcher::serviceRegistered, this, [this] { read(false); });
}

void ColorSchemeSetting::read(bool startsPortal) {
    auto question = dbusCall(portalName, portalPath, portalInterface, QStringLiteral("Read"), {settingGroup, settingKey});
    question.setAutoStartService(startsPortal);
    callLater(bus_, question, untilAnswered, this, [this](const QDBusMessage& answer) {
        if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty()) return;
        value_ = valueOf(answer.arguments().constFirst());
        Q_EMIT told();
    });
}

void ColorSchemeSetting::settingChanged(const QString& group, const QString& key, const QDBusVariant& value) {
    if (group != settingGroup || key != settingKey) return;
    value_ = valueOf(value.variant());
    Q_EMIT told();
}

QPalette darkPalette() { return makePalette(0xFF242426, 0xFFF2F2F4, 0xFF77777C, 0xFF2F6FDE); }
QPalette lightPalette() { return makePalette(0xFFF4F4F5, 0xFF1C1C1E, 0xFF9C9CA1, 0xFF2F6FDE); }

}  // namespace ovin
