#include "platform/linux/QtAlerts.h"

#include <QMessageBox>

namespace ovin {

void QtAlerts::run(const Alert& alert) {
    auto* const box = new QMessageBox(QMessageBox::Information, "Ovin", QString::fromStdString(alert.message));
    box->setTextFormat(Qt::PlainText);
    box->setInformativeText(QString::fromStdString(alert.informative));
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::ApplicationModal);
    box->show();
    box->raise();
    box->activateWindow();
}

}  // namespace ovin
