#include "platform/linux/TrustPrompt.h"

#include <QMessageBox>
#include <QPushButton>
#include <utility>

namespace ovin {

void askForTrust(std::function<void()> enable) {
    auto* const prompt = new QMessageBox;
    prompt->setAttribute(Qt::WA_DeleteOnClose);
    prompt->setWindowTitle("Accessibility");
    prompt->setIcon(QMessageBox::Question);
    prompt->setText("Ovin would like to read the menu bar");
    prompt->setInformativeText(
        "Ovin finds and opens the items of your menu bar through the accessibility support of this desktop, which is "
        "switched "
        "off. It can be switched on for this session.");
    prompt->addButton("Not Now", QMessageBox::RejectRole);
    const QPushButton* const accept = prompt->addButton("Switch On", QMessageBox::AcceptRole);
    QObject::connect(prompt, &QMessageBox::buttonClicked,
                     [accept, enable = std::move(enable)](const QAbstractButton* clicked) {
                         if (clicked == accept) enable();
                     });
    prompt->show();
    prompt->raise();
    prompt->activateWindow();
}

}  // namespace ovin
