#include "platform/linux/items/DBusMenuActions.h"

#include <QActionGroup>
#include <QFontMetrics>
#include <QIcon>
#include <QPixmap>
#include <QScreen>
#include <QStyle>

#include "platform/linux/drawing/SymbolicIcon.h"

namespace ovin {
namespace {

/// How much of the screen's width a label takes at most.
constexpr int widestLabelPart = 3;

QIcon icon(DBusMenuList& menu, const DBusMenuEntry& entry) {
    if (!entry.iconName.isEmpty() && menu.mayLookForIcon()) {
        const int side = menu.style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, &menu);
        const QIcon named = themeIcon(entry.iconName, side, menu.devicePixelRatio(), menu.palette().color(QPalette::Text));
        if (!named.isNull()) return named;
    }
    return entry.icon.isNull() ? QIcon() : QIcon(QPixmap::fromImage(entry.icon));
}

QString text(const QMenu& menu, const DBusMenuEntry& entry) {
    const int widest = menu.screen()->size().width() / widestLabelPart;
    const QString label = menu.fontMetrics().elidedText(entry.label, Qt::ElideMiddle, widest, Qt::TextShowMnemonic);
    return entry.shortcut.isEmpty() ? label : label + QLatin1Char('\t') + entry.shortcut;
}

/// Styles draw a round mark for an entry that is one of a group.
void showAsRadio(QAction& action, bool isRadio) {
    if (isRadio && !action.actionGroup()) action.setActionGroup(new QActionGroup(&action));
    if (!isRadio && action.actionGroup()) delete action.actionGroup();
}

}  // namespace

void showMenuEntry(DBusMenuList& menu, QAction& action, const DBusMenuEntry& entry) {
    const DBusMenuEntry before = shownMenuEntry(action);
    if (before != entry) {
        const bool hasIcon = before.iconName == entry.iconName && before.icon == entry.icon;
        action.setData(QVariant::fromValue(entry));
        action.setSeparator(entry.isSeparator);
        action.setText(text(menu, entry));
        action.setEnabled(entry.isEnabled);
        action.setVisible(entry.isVisible);
        if (!hasIcon) action.setIcon(icon(menu, entry));
        showAsRadio(action, entry.toggle == DBusMenuEntry::Toggle::radio);
        action.setCheckable(entry.toggle != DBusMenuEntry::Toggle::none);
    }
    // A click has changed this by itself.
    action.setChecked(entry.isOn);
}

DBusMenuEntry shownMenuEntry(const QAction& action) { return action.data().value<DBusMenuEntry>(); }

}  // namespace ovin
