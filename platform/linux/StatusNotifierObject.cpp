#include "platform/linux/StatusNotifierObject.h"

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

StatusNotifierObject::StatusNotifierObject(const QString& name) : name_(name), title_(name) {
    qDBusRegisterMetaType<BusPicture>();
    qDBusRegisterMetaType<BusPictures>();
}

void StatusNotifierObject::setPictures(const BusPictures& pictures) {
    pictures_ = pictures;
    Q_EMIT NewIcon();
}

void StatusNotifierObject::setTitle(const QString& title) {
    title_ = title;
    Q_EMIT NewTitle();
}

void StatusNotifierObject::Activate(int x, int y) {
    if (activated) activated(x, y);
}

// A middle click is a click.
void StatusNotifierObject::SecondaryActivate(int x, int y) { Activate(x, y); }

void StatusNotifierObject::ContextMenu(int x, int y) {
    if (contextMenuRequested) contextMenuRequested(x, y);
}

void StatusNotifierObject::Scroll(int, const QString&) {}

}  // namespace ovin
