#pragma once

#include <QDBusArgument>
#include <QDBusMessage>
#include <QVariantMap>
#include <optional>
#include <vector>

namespace ovin {

/// One entry of a `com.canonical.dbusmenu` menu with the entries below it.
struct DBusMenuNode {
    int id = 0;
    /// As the program sent them: any may be missing or of another type than expected.
    QVariantMap properties;
    std::vector<DBusMenuNode> children;

    [[nodiscard]] bool isSubmenu() const;
};

/// The answer to `GetLayout`; nothing when it is an error or not a layout. A menu that is absurdly long or deep is cut.
[[nodiscard]] std::optional<DBusMenuNode> readDBusMenuLayout(const QDBusMessage& answer);

/// The arguments of `ItemsPropertiesUpdated`, written into the tree below `root`. Ignores entries that the tree does not
/// hold.
void applyDBusMenuUpdates(DBusMenuNode& root, const QDBusMessage& signal);

}  // namespace ovin
