#include "platform/linux/drawing/MenuLook.h"

#include <QApplication>
#include <QStyle>

#include "platform/linux/drawing/QtColors.h"

namespace ovin {
namespace {

/// The style that the toolkit falls back to.
const char* const plainStyle = "fusion";

}  // namespace

void giveMenuLook(QMenu& menu) {
    if (QApplication::style()->name() != QLatin1String(plainStyle)) return;
    const QPalette palette = menu.palette();
    const QColor window = palette.color(QPalette::Window);
    const QColor selection = behindText(palette.color(QPalette::Highlight));
    const auto onWindow = [&](SystemColor color) { return over(qtColor({color}, palette), window).name(); };
    menu.setStyleSheet(QString("QMenu { background: %1; color: %2; border: 1px solid %3; padding: 5px; menu-scrollable: 1; }"
                               "QMenu::item { padding: 5px 20px 5px 26px; border-radius: 5px; }"
                               "QMenu::item:selected { background: %4; color: %5; }"
                               "QMenu::item:disabled { color: %6; background: transparent; }"
                               "QMenu::icon { padding-left: 6px; }"
                               "QMenu::indicator { width: 12px; height: 12px; left: 7px; }"
                               "QMenu::separator { height: 1px; background: %7; margin: 5px 8px; }")
                           .arg(window.name(), palette.color(QPalette::WindowText).name(),
                                onWindow(SystemColor::quaternaryLabel), selection.name(), readableOn(selection).name(),
                                onWindow(SystemColor::secondaryLabel), onWindow(SystemColor::separator)));
}

}  // namespace ovin
