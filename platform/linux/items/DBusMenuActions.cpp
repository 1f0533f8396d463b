#include "platform/linux/items/DBusMenuActions.h"

#include <QActionGroup>
#include <QFontMetrics>
#include <QIcon>
#include <QPixmap>
#include <QScreen>
#include <QStyle>

#include "platform/linux/drawing/LedgeIcon.h"

namespace ovin {
namespace {

/// How much of the screen's width a label takes at most.
constexpr int widestLabelPart = 3;

/// The named icon if it has come, or else the picture that the program has sent.
QIcon icon(const QMenu& menu, const DBusMenuEntry& entry) {
    const int side = menu.style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, &menu);
    const double ratio = menu.devicePixelRatio();
    const auto named = namedPicture({entry.iconName, {}}, qRound(side * ratio), menu.palette().color(QPalette::Text));
    const bool isNamed = named && !named->isNull();
    QPixmap picture = QPixmap::fromImage(isNamed ? *named : entry.icon);
    if (isNamed) picture.setDevicePixelRatio(ratio);
    return picture.isNull() ? QIcon() : QIcon(picture);
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

void showMenuEntry(const QMenu& menu, QAction& action, const DBusMenuEntry& entry) {
    const DBusMenuEntry before = shownMenuEntry(action);
    if (before != entry) {
        action.setData(QVariant::fromValue(entry));
        action.setSeparator(entry.isSeparator);
        action.setText(text(menu, entry));
        action.setEnabled(entry.isEnabled);
        action.setVisible(entry.isVisible);
        showAsRadio(action, entry.toggle == DBusMenuEntry::Toggle::radio);
        action.setCheckable(entry.toggle != DBusMenuEntry::Toggle::none);
    }
    const bool isOther = before.iconName != entry.iconName || before.icon != entry.icon;
    if (isOther || (action.icon().isNull() && !entry.iconName.isEmpty())) {
        const QIcon shown = icon(menu, entry);
        if (isOther || !shown.isNull()) action.setIcon(shown);
    }
    // A click has changed this by itself.
    action.setChecked(entry.isOn);
}

DBusMenuEntry shownMenuEntry(const QAction& action) { return action.data().value<DBusMenuEntry>(); }

}  // namespace ovin
