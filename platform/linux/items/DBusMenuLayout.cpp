#include "platform/linux/items/DBusMenuLayout.h"

#include <QBuffer>
#include <QDBusArgument>
#include <QDBusVariant>
#include <QImageReader>

#include "platform/linux/drawing/ShownText.h"
#include "platform/linux/items/DBusMenuLabel.h"

namespace ovin {
namespace {

constexpr int mostEntries = 5'000;
constexpr int mostProperties = 64;
constexpr int deepest = 12;
constexpr qsizetype longestShortcut = 40;
constexpr qsizetype longestIconName = 200;
constexpr int mostIconBytes = 1 << 20;
constexpr int largestIcon = 1024;
constexpr int mostIconPixels = 1 << 22;
/// Twice the size that styles show.
constexpr int keptIcon = 48;

QString text(const QVariantMap& properties, const char* name) { return properties.value(QLatin1String(name)).toString(); }

/// Entries are visible and enabled unless the program says otherwise.
bool flag(const QVariantMap& properties, const char* name) {
    const QVariant value = properties.value(QLatin1String(name));
    return value.userType() != QMetaType::Bool || value.toBool();
}

QString readShortcut(const QVariantMap& properties) {
    const QVariant value = properties.value(QStringLiteral("shortcut"));
    if (value.userType() != qMetaTypeId<QDBusArgument>()) return {};
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("aas")) return {};
    const auto shortcuts = qdbus_cast<QList<QStringList>>(argument);
    QString keys = shortcuts.isEmpty() ? QString() : shownText(shortcuts.first().join(QLatin1Char('+')), longestShortcut);
    return keys.replace(QLatin1String("Control"), QLatin1String("Ctrl"));
}

QImage readIcon(const QVariantMap& properties, int& pixelsLeft) {
    QByteArray data = properties.value(QStringLiteral("icon-data")).toByteArray();
    if (data.isEmpty() || data.size() > mostIconBytes) return {};
    QBuffer buffer(&data);
    QImageReader reader(&buffer, "png");
    const QSize size = reader.size();
    if (size.isEmpty() || size.width() > largestIcon || size.height() > largestIcon) return {};
    const int pixels = size.width() * size.height();
    if (pixels > pixelsLeft) return {};
    pixelsLeft -= pixels;
    QImage icon = reader.read();
    if (icon.width() <= keptIcon && icon.height() <= keptIcon) return icon;
    return icon.scaled(keptIcon, keptIcon, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

DBusMenuEntry::Toggle readToggle(const QString& type) {
    if (type == QLatin1String("radio")) return DBusMenuEntry::Toggle::radio;
    return type == QLatin1String("checkmark") ? DBusMenuEntry::Toggle::check : DBusMenuEntry::Toggle::none;
}

/// How much more of a layout is read.
struct Budget {
    int entries = mostEntries;
    int pixels = mostIconPixels;
};

QVariantMap readProperties(const QDBusArgument& argument) {
    QVariantMap properties;
    argument.beginMap();
    while (properties.size() < mostProperties && !argument.atEnd()) {
        QString name;
        QDBusVariant value;
        argument.beginMapEntry();
        argument >> name >> value;
        argument.endMapEntry();
        properties.insert(name, value.variant());
    }
    argument.endMap();
    return properties;
}

DBusMenuNode readNode(const QDBusArgument& argument, int depth, Budget& budget);

void readChild(const QVariant& value, int depth, Budget& budget, DBusMenuNode& parent) {
    if (value.userType() != qMetaTypeId<QDBusArgument>()) return;
    const auto child = value.value<QDBusArgument>();
    if (child.currentSignature() != QLatin1String("(ia{sv}av)") || budget.entries <= 0 || depth > deepest) return;
    --budget.entries;
    parent.children.push_back(readNode(child, depth, budget));
}

DBusMenuNode readNode(const QDBusArgument& argument, int depth, Budget& budget) {
    DBusMenuNode node;
    int id = 0;
    argument.beginStructure();
    argument >> id;
    node.entry = readDBusMenuEntry(id, readProperties(argument), budget.pixels);
    argument.beginArray();
    while (budget.entries > 0 && !argument.atEnd()) {
        QDBusVariant child;
        argument >> child;
        readChild(child.variant(), depth + 1, budget, node);
    }
    argument.endArray();
    argument.endStructure();
    if (!node.children.empty()) node.entry.isSubmenu = true;
    return node;
}

}  // namespace

DBusMenuEntry readDBusMenuEntry(int id, const QVariantMap& properties, int& pixelsLeft) {
    DBusMenuEntry entry;
    entry.id = id;
    entry.label = QString::fromStdString(qtMenuLabel(shownText(text(properties, "label")).toStdString()));
    entry.shortcut = readShortcut(properties);
    if (const QString name = text(properties, "icon-name"); name.size() <= longestIconName) entry.iconName = name;
    entry.icon = readIcon(properties, pixelsLeft);
    entry.toggle = readToggle(text(properties, "toggle-type"));
    entry.isOn = properties.value(QStringLiteral("toggle-state")).toInt() == 1;
    entry.isSeparator = text(properties, "type") == QLatin1String("separator");
    entry.isSubmenu = text(properties, "children-display") == QLatin1String("submenu");
    entry.isEnabled = flag(properties, "enabled");
    entry.isVisible = flag(properties, "visible");
    return entry;
}

std::optional<DBusMenuNode> readDBusMenuLayout(const QDBusMessage& answer) {
    if (answer.type() != QDBusMessage::ReplyMessage || answer.signature() != QLatin1String("u(ia{sv}av)"))
        return std::nullopt;
    Budget budget;
    return readNode(answer.arguments().at(1).value<QDBusArgument>(), 0, budget);
}

}  // namespace ovin
