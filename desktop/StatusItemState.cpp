#include "desktop/StatusItemState.h"

#include <QDBusArgument>
#include <QDBusObjectPath>

#include "platform/linux/drawing/ItemPicture.h"
#include "platform/linux/items/StatusItemAddress.h"

namespace ovin {
namespace {

constexpr int longestText = 256;
constexpr int longestIconName = 1024;
constexpr int mostPictures = 64;

QString text(const QVariantMap& properties, const char* name, int longest = longestText) {
    const QVariant value = properties.value(QLatin1String(name));
    if (value.userType() != QMetaType::QString) return {};
    const QString whole = value.toString().simplified();
    return whole.size() > longest ? whole.left(longest) + QChar(0x2026) : whole;
}

/// A name that is too long is dropped and not cut, because a cut name would name something else.
QString iconName(const QVariantMap& properties, const char* name) {
    const QString whole = properties.value(QLatin1String(name)).toString();
    return whole.size() > longestIconName ? QString() : whole;
}

QString toolTipTitle(const QVariantMap& properties) {
    const QVariant value = properties.value(QStringLiteral("ToolTip"));
    if (value.userType() != qMetaTypeId<QDBusArgument>()) return text(properties, "ToolTip");
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("(sa(iiay)ss)")) return {};

    QString name;
    QString title;
    argument.beginStructure();
    argument >> name;
    argument.beginArray();
    while (!argument.atEnd()) {
        int width = 0;
        int height = 0;
        QByteArray pixels;
        argument.beginStructure();
        argument >> width >> height >> pixels;
        argument.endStructure();
    }
    argument.endArray();
    argument >> title;
    argument.endStructure();  // a structure left open is never freed, and holds the message
    return title.simplified().left(longestText);
}

QString title(const QVariantMap& properties) {
    for (const QString& candidate : {text(properties, "Title"), toolTipTitle(properties),
                                     text(properties, "IconAccessibleDesc"), text(properties, "Id")}) {
        if (!candidate.isEmpty()) return candidate;
    }
    return {};
}

StatusItemState::Status status(const QVariantMap& properties) {
    const QString name = text(properties, "Status");
    if (name == QLatin1String("Passive")) return StatusItemState::Status::passive;
    if (name == QLatin1String("NeedsAttention")) return StatusItemState::Status::needsAttention;
    return StatusItemState::Status::active;
}

QImage largestPicture(const QVariant& value) {
    if (value.userType() != qMetaTypeId<QDBusArgument>()) return {};
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != QLatin1String("a(iiay)")) return {};

    QImage largest;
    argument.beginArray();
    for (int count = 0; !argument.atEnd() && count < mostPictures; ++count) {
        int width = 0;
        int height = 0;
        QByteArray pixels;
        argument.beginStructure();
        argument >> width >> height >> pixels;
        argument.endStructure();
        if (width > largest.width()) {
            if (const QImage image = pictureOf(width, height, pixels.constData(), pixels.size()); !image.isNull())
                largest = image;
        }
    }
    argument.endArray();
    return largest;
}

QString menuPath(const QVariantMap& properties) {
    const QVariant value = properties.value(QStringLiteral("Menu"));
    const QString path =
        value.userType() == qMetaTypeId<QDBusObjectPath>() ? value.value<QDBusObjectPath>().path() : value.toString();
    const bool isNone = path == QLatin1String("/") || path.startsWith(QLatin1String("/NO_DBUSMENU"));
    return isNone || !isObjectPath(path.toStdString()) ? QString() : path;
}

StatusItemClickTraits clickTraits(const QVariantMap& properties, bool hasMenu) {
    StatusItemClickTraits traits;
    traits.hasMenu = hasMenu;
    const QVariant isMenu = properties.value(QStringLiteral("ItemIsMenu"));
    if (isMenu.userType() == QMetaType::Bool) traits.itemIsMenu = isMenu.toBool();
    return traits;
}

}  // namespace

const StatusItemState::Picture& StatusItemState::shownIcon() const {
    return status == Status::needsAttention && !attentionIcon.isEmpty() ? attentionIcon : icon;
}

StatusItemState readStatusItemState(const QVariantMap& properties) {
    StatusItemState state;
    state.id = text(properties, "Id");
    state.title = title(properties);
    state.status = status(properties);
    state.icon = {iconName(properties, "IconName"), largestPicture(properties.value(QStringLiteral("IconPixmap")))};
    state.attentionIcon = {iconName(properties, "AttentionIconName"),
                           largestPicture(properties.value(QStringLiteral("AttentionIconPixmap")))};
    state.iconThemePath = iconName(properties, "IconThemePath");
    state.menuPath = menuPath(properties);
    state.clickTraits = clickTraits(properties, !state.menuPath.isEmpty());
    return state;
}

}  // namespace ovin
