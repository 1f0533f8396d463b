#include "platform/linux/own_item/StatusNotifierObject.h"

#include <QDBusMetaType>

namespace ovin {

QDBusArgument& operator<<(QDBusArgument& argument, const BusPicture& picture) {
    argument.beginStructure();
    argument << picture.width << picture.height << picture.pixels;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, BusPicture& picture) {
    argument.beginStructure();
    argument >> picture.width >> picture.height >> picture.pixels;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const BusToolTip& toolTip) {
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.pictures << toolTip.title << toolTip.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, BusToolTip& toolTip) {
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.pictures >> toolTip.title >> toolTip.text;
    argument.endStructure();
    return argument;
}

StatusNotifierObject::StatusNotifierObject(const QString& id) : id_(id), title_(id) {
    qDBusRegisterMetaType<BusPicture>();
    qDBusRegisterMetaType<BusPictures>();
    qDBusRegisterMetaType<BusToolTip>();
}

void StatusNotifierObject::setIcon(const QString& name, const BusPictures& pictures) {
    iconName_ = name;
    pictures_ = pictures;
    Q_EMIT NewIcon();
}

void StatusNotifierObject::setTitle(const QString& title) {
    title_ = title;
    Q_EMIT NewTitle();
    Q_EMIT NewToolTip();
}

void StatusNotifierObject::setId(const QString& id) {
    id_ = id;
    hasToldId_ = false;
}

QString StatusNotifierObject::id() const {
    hasToldId_ = true;
    return id_;
}

void StatusNotifierObject::Activate(int, int) {
    if (activated) activated();
}

// A middle click does nothing, and neither does the wheel.
void StatusNotifierObject::SecondaryActivate(int, int) {}

void StatusNotifierObject::ContextMenu(int, int) {
    if (contextMenuRequested) contextMenuRequested();
}

void StatusNotifierObject::Scroll(int, const QString&) {}

}  // namespace ovin
