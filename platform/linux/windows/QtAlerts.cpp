#include "platform/linux/windows/QtAlerts.h"

#include <QMessageBox>
#include <QPushButton>
#include <algorithm>

#include "platform/linux/drawing/QtFonts.h"
#include "platform/linux/drawing/QtIcons.h"
#include "platform/linux/windows/WindowManager.h"

namespace ovin {
namespace {

constexpr Font messageFont{14, Font::Weight::semibold};
constexpr Font informativeFont{12, Font::Weight::regular};
constexpr int iconSide = 64;
/// Without it the box would be as narrow as its message, however long the explanation is.
constexpr int leastTextWidth = 280;

/// Finds the parts of the box by the toolkit's internal names, because there is no other way.
void layOut(QMessageBox& box) {
    box.setFont(qtFont(informativeFont));
    if (auto* const message = box.findChild<QWidget*>("qt_msgbox_label")) message->setFont(qtFont(messageFont));
    if (auto* const text = box.findChild<QWidget*>("qt_msgbox_informativelabel")) text->setMinimumWidth(leastTextWidth);
}

}  // namespace

QtAlerts::~QtAlerts() {
    for (const Shown& shown : shown_) delete shown.box;
}

void QtAlerts::run(const Alert& alert) {
    std::erase_if(shown_, [](const Shown& shown) { return shown.box.isNull(); });
    // One that was closed is there until the event loop deletes it.
    const auto same = std::find_if(shown_.begin(), shown_.end(),
                                   [&](const Shown& shown) { return shown.alert == alert && shown.box->isVisible(); });
    if (same != shown_.end()) return WindowManager::bringToFront(*same->box);
    // Shows the program's own icon, which tells whose alert it is.
    auto* const box = new QMessageBox(QMessageBox::NoIcon, "Ovin", QString::fromStdString(alert.message), QMessageBox::Ok);
    shown_.push_back({alert, box});
    box->setWindowIcon(ownWindowIcon());
    box->setIconPixmap(box->windowIcon().pixmap(QSize(iconSide, iconSide), box->devicePixelRatioF()));
    box->setTextFormat(Qt::PlainText);
    box->setInformativeText(QString::fromStdString(alert.informative));
    layOut(*box);
    box->setDefaultButton(QMessageBox::Ok);
    box->button(QMessageBox::Ok)->setIcon({});
    box->setAccessibleName(box->text());
    box->setAccessibleDescription(box->informativeText());
    box->setAttribute(Qt::WA_DeleteOnClose);
    // Above the card, which stays above all others, and not modal, so that the card's buttons work beside it.
    box->setWindowModality(Qt::NonModal);
    box->setWindowFlag(Qt::WindowStaysOnTopHint);
    WindowManager::bringToFront(*box);
}

}  // namespace ovin
