#include "platform/linux/items/DBusMenuActions.h"

#include <QActionGroup>
#include <QBuffer>
#include <QDBusArgument>
#include <QIcon>
#include <QImageReader>
#include <QPixmap>
#include <QStyle>

#include "platform/linux/drawing/SymbolicIcon.h"
#include "platform/linux/items/DBusMenuLabel.h"

namespace ovin {
namespace {

constexpr int longestLabel = 200;
constexpr int mostIconBytes = 1 << 20;
constexpr int largestIcon = 1024;

QString text(const DBusMenuNode& entry, const char* name) { return entry.properties.value(QLatin1String(name)).toString(); }

/// Entries are visible and enabled unless the program says otherwise.
bool flag(const DBusMenuNode& entry, const char* name) {
    const QVariant value = entry.properties.value(QLatin1String(name));
    return value.userType() != QMetaType::Bool || value.toBool();
}

QString label(const DBusMenuNode& entry) {
    QString shown = text(entry, "label");
    if (shown.size() > longestLabel) shown = shown.left(longestLabel) + QChar(0x2026);
    return QString::fromStdString(qtMenuLabel(shown.toStdString()));
}

/// The keys of the entry's first shortcut, for example "Ctrl+Q". Only shown: the program itself acts on them.
QString shortcut(const DBusMenuNode& entry) {
    const QVariant value = entry.properties.value(QStringLiteral("shortcut"));
    if (value.userType() != qMetaTypeId<QDBusArgument>()) return {};
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("aas")) return {};
    const auto shortcuts = qdbus_cast<QList<QStringList>>(argument);
    QString keys = shortcuts.isEmpty() ? QString() : shortcuts.first().join(QLatin1Char('+')).left(40);
    return keys.replace(QLatin1String("Control"), QLatin1String("Ctrl"));
}

QIcon pictureFromData(QByteArray data) {
    if (data.isEmpty() || data.size() > mostIconBytes) return {};
    QBuffer buffer(&data);
    QImageReader reader(&buffer, "png");
    const QSize size = reader.size();
    if (size.isEmpty() || size.width() > largestIcon || size.height() > largestIcon) return {};
    return QIcon(QPixmap::fromImage(reader.read()));
}

QIcon namedIcon(const QString& name, const QMenu& menu) {
    if (name.isEmpty() || name.size() > longestLabel) return {};
    const int side = menu.style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, &menu);
    return themeIcon(name, side, menu.devicePixelRatio(), menu.palette().color(QPalette::Text));
}

QIcon icon(const DBusMenuNode& entry, const QMenu& menu) {
    const QIcon named = namedIcon(text(entry, "icon-name"), menu);
    return named.isNull() ? pictureFromData(entry.properties.value(QStringLiteral("icon-data")).toByteArray()) : named;
}

/// Styles draw a round mark for an entry that is one of a group.
void showAsRadio(QAction& action, bool isRadio) {
    if (isRadio && !action.actionGroup()) action.setActionGroup(new QActionGroup(&action));
    if (!isRadio && action.actionGroup()) delete action.actionGroup();
}

void showToggle(QAction& action, const DBusMenuNode& entry) {
    const QString type = text(entry, "toggle-type");
    showAsRadio(action, type == QLatin1String("radio"));
    action.setCheckable(type == QLatin1String("radio") || type == QLatin1String("checkmark"));
    action.setChecked(entry.properties.value(QStringLiteral("toggle-state")).toInt() == 1);
}

}  // namespace

void showMenuEntry(const QMenu& menu, QAction& action, const DBusMenuNode& entry) {
    const QString keys = shortcut(entry);
    action.setData(entry.id);
    action.setSeparator(text(entry, "type") == QLatin1String("separator"));
    action.setText(keys.isEmpty() ? label(entry) : label(entry) + QLatin1Char('\t') + keys);
    action.setEnabled(flag(entry, "enabled"));
    action.setVisible(flag(entry, "visible"));
    action.setIcon(icon(entry, menu));
    showToggle(action, entry);
}

}  // namespace ovin
