#include "platform/linux/own_item/MenuObject.h"

#include <QDBusMetaType>
#include <algorithm>
#include <cstddef>
#include <utility>

namespace ovin {
namespace {

bool looksTheSame(const std::optional<MenuEntry>& a, const std::optional<MenuEntry>& b) {
    return a.has_value() == b.has_value() && (!a || (a->title == b->title && a->isOn == b->isOn));
}

}  // namespace

QDBusArgument& operator<<(QDBusArgument& argument, const BusMenuLayout& layout) {
    argument.beginStructure();
    argument << layout.id << layout.properties << layout.children;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, BusMenuLayout& layout) {
    argument.beginStructure();
    argument >> layout.id >> layout.properties >> layout.children;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const BusMenuProperties& entry) {
    argument.beginStructure();
    argument << entry.id << entry.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, BusMenuProperties& entry) {
    argument.beginStructure();
    argument >> entry.id >> entry.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const BusMenuEvent& event) {
    argument.beginStructure();
    argument << event.id << event.name << event.data << event.timestamp;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, BusMenuEvent& event) {
    argument.beginStructure();
    argument >> event.id >> event.name >> event.data >> event.timestamp;
    argument.endStructure();
    return argument;
}

MenuObject::MenuObject() {
    qDBusRegisterMetaType<BusMenuLayout>();
    qDBusRegisterMetaType<BusMenuProperties>();
    qDBusRegisterMetaType<BusMenuGroup>();
    qDBusRegisterMetaType<BusMenuEvent>();
    qDBusRegisterMetaType<BusMenuEvents>();
}

void MenuObject::setMenu(std::function<Menu()> make) {
    make_ = std::move(make);
    refresh();
}

bool MenuObject::refresh() {
    Menu made = make_ ? make_() : Menu();
    const bool hasChanged = !std::equal(made.begin(), made.end(), menu_.begin(), menu_.end(), looksTheSame);
    menu_ = std::move(made);
    if (hasChanged) Q_EMIT LayoutUpdated(++revision_, 0);
    return hasChanged;
}

QVariantMap MenuObject::properties(int id, const QStringList& names) const {
    QVariantMap all;
    if (id == 0) {
        all = {{"children-display", "submenu"}};
    } else if (const auto& entry = menu_[static_cast<std::size_t>(id) - 1]; !entry) {
        all = {{"type", "separator"}};
    } else {
        // Doubled, because an underline marks the letter that chooses the entry.
        all = {{"label", QString::fromStdString(entry->title).replace("_", "__")}};
        if (entry->isOn) all.insert({{"toggle-type", "checkmark"}, {"toggle-state", 1}});
    }
    // Nobody named means all of them.
    if (!names.isEmpty()) all.removeIf([&](const auto& property) { return !names.contains(property.key()); });
    return all;
}

BusMenuLayout MenuObject::layoutOf(int id, const QStringList& names) const { return {id, properties(id, names), {}}; }

uint MenuObject::GetLayout(int parent, int depth, const QStringList& names, BusMenuLayout& layout) {
    refresh();
    layout = has(parent) ? layoutOf(parent, names) : BusMenuLayout{parent, {}, {}};
    if (parent != 0 || depth == 0) return revision_;
    for (int id = 1; has(id); ++id) {
        layout.children.append(QDBusVariant(QVariant::fromValue(layoutOf(id, names))));
    }
    return revision_;
}

BusMenuGroup MenuObject::GetGroupProperties(const QList<int>& ids, const QStringList& names) {
    BusMenuGroup group;
    // Each once, so that a long list of the same ids makes no huge answer.
    const auto add = [&](int id) {
        const bool isNew = std::ranges::none_of(group, [id](const BusMenuProperties& known) { return known.id == id; });
        if (isNew && has(id)) group.append({id, properties(id, names)});
    };
    for (const int id : ids) add(id);
    if (!ids.isEmpty()) return group;
    for (int id = 0; has(id); ++id) add(id);
    return group;
}

QDBusVariant MenuObject::GetProperty(int id, const QString& name) {
    // The bus carries no value without a type.
    return QDBusVariant(has(id) ? properties(id, {}).value(name, QString()) : QString());
}

/// Runs the entry later, so that the bar has its answer before and can close the menu.
void MenuObject::Event(int id, const QString& name, const QDBusVariant&, uint) {
    if (name != "clicked" || id == 0 || !has(id)) return;
    const auto& entry = menu_[static_cast<std::size_t>(id) - 1];
    if (!entry || !entry->action) return;
    QMetaObject::invokeMethod(this, entry->action, Qt::QueuedConnection);
    QMetaObject::invokeMethod(
        this, [this] { refresh(); }, Qt::QueuedConnection);
}

QList<int> MenuObject::EventGroup(const BusMenuEvents& events) {
    QList<int> unknown;
    for (const BusMenuEvent& event : events) {
        if (!has(event.id)) unknown.append(event.id);
        Event(event.id, event.name, event.data, event.timestamp);
    }
    return unknown;
}

bool MenuObject::AboutToShow(int) { return refresh(); }

QList<int> MenuObject::AboutToShowGroup(const QList<int>& ids, QList<int>& unknown) {
    for (const int id : ids) {
        if (!has(id)) unknown.append(id);
    }
    return refresh() ? QList<int>{0} : QList<int>{};
}

}  // namespace ovin
