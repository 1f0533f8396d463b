#pragma once

#include <QDBusMessage>
#include <QImage>
#include <QString>
#include <QVariantMap>
#include <optional>
#include <vector>

namespace ovin {

/// What one entry of a menu shows: what its program says of it, within bounds.
struct DBusMenuEntry {
    enum class Toggle { none, check, radio };

    int id = 0;
    /// As Qt writes a label.
    QString label;
    /// The keys of the entry's first shortcut, for example "Ctrl+Q".
    QString shortcut;
    QString iconName;
    QImage icon;
    Toggle toggle = Toggle::none;
    bool isOn = false;
    bool isSeparator = false;
    bool isSubmenu = false;
    bool isEnabled = true;
    bool isVisible = true;

    friend bool operator==(const DBusMenuEntry&, const DBusMenuEntry&) = default;
};

/// One entry of a `com.canonical.dbusmenu` menu with the entries below it.
struct DBusMenuNode {
    DBusMenuEntry entry;
    std::vector<DBusMenuNode> children;
};

/// Reads the properties of an entry, of which any may be missing or of another type than expected. Decodes its picture, if
/// that has at most `pixelsLeft` pixels, and takes these off.
[[nodiscard]] DBusMenuEntry readDBusMenuEntry(int id, const QVariantMap& properties, int& pixelsLeft);

/// The answer to `GetLayout`; nothing when it is an error or not a layout. A menu that is absurdly long or deep is cut. Any
/// thread; not the main one, because a layout may take a second to read.
[[nodiscard]] std::optional<DBusMenuNode> readDBusMenuLayout(const QDBusMessage& answer);

}  // namespace ovin
