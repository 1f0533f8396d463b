#include "platform/linux/items/DBusMenuLayout.h"

#include <QDBusVariant>
#include <QHash>
#include <utility>

namespace ovin {
namespace {

constexpr int mostEntries = 5'000;
constexpr int deepest = 12;

DBusMenuNode readNode(const QDBusArgument& argument, int depth, int& entriesLeft);

void readChild(const QVariant& value, int depth, int& entriesLeft, DBusMenuNode& parent) {
    if (value.userType() != qMetaTypeId<QDBusArgument>()) return;
    const auto child = value.value<QDBusArgument>();
    if (child.currentSignature() != QLatin1String("(ia{sv}av)") || entriesLeft <= 0 || depth > deepest) return;
    parent.children.push_back(readNode(child, depth, --entriesLeft));
}

DBusMenuNode readNode(const QDBusArgument& argument, int depth, int& entriesLeft) {
    DBusMenuNode node;
    argument.beginStructure();
    argument >> node.id >> node.properties;
    argument.beginArray();
    while (entriesLeft > 0 && !argument.atEnd()) {
        QDBusVariant child;
        argument >> child;
        readChild(child.variant(), depth + 1, entriesLeft, node);
    }
    argument.endArray();
    argument.endStructure();
    return node;
}

using NodesByID = QHash<int, DBusMenuNode*>;

void collect(DBusMenuNode& node, NodesByID& nodes) {
    nodes.insert(node.id, &node);
    for (auto& child : node.children) collect(child, nodes);
}

void applyChanged(const QDBusArgument& changed, const NodesByID& nodes) {
    changed.beginArray();
    while (!changed.atEnd()) {
        int id = 0;
        QVariantMap properties;
        changed.beginStructure();
        changed >> id >> properties;
        changed.endStructure();
        if (DBusMenuNode* node = nodes.value(id)) node->properties.insert(properties);
    }
    changed.endArray();
}

void applyRemoved(const QDBusArgument& removed, const NodesByID& nodes) {
    removed.beginArray();
    while (!removed.atEnd()) {
        int id = 0;
        QStringList names;
        removed.beginStructure();
        removed >> id >> names;
        removed.endStructure();
        DBusMenuNode* node = nodes.value(id);
        for (const QString& name : std::as_const(names)) {
            if (node) node->properties.remove(name);
        }
    }
    removed.endArray();
}

}  // namespace

bool DBusMenuNode::isSubmenu() const {
    return !children.empty() || properties.value(QStringLiteral("children-display")).toString() == QLatin1String("submenu");
}

std::optional<DBusMenuNode> readDBusMenuLayout(const QDBusMessage& answer) {
    if (answer.type() != QDBusMessage::ReplyMessage || answer.signature() != QLatin1String("u(ia{sv}av)"))
        return std::nullopt;
    int entriesLeft = mostEntries;
    return readNode(answer.arguments().at(1).value<QDBusArgument>(), 0, entriesLeft);
}

void applyDBusMenuUpdates(DBusMenuNode& root, const QDBusMessage& signal) {
    if (signal.signature() != QLatin1String("a(ia{sv})a(ias)")) return;
    NodesByID nodes;
    collect(root, nodes);
    applyChanged(signal.arguments().at(0).value<QDBusArgument>(), nodes);
    applyRemoved(signal.arguments().at(1).value<QDBusArgument>(), nodes);
}

}  // namespace ovin
