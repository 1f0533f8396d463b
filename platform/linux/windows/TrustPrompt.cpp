#include "platform/linux/windows/TrustPrompt.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <utility>

#include "platform/linux/windows/WindowManager.h"

namespace ovin {
namespace {

const QString promptName = "TrustPrompt";

/// The prompt that waits for an answer; null when there is none.
QWidget* shownPrompt() {
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        if (widget->objectName() == promptName && widget->isVisible()) return widget;
    }
    return nullptr;
}

QWidget* makePrompt(std::function<void()> enable) {
    auto* const prompt = new QMessageBox;
    prompt->setObjectName(promptName);
    prompt->setAttribute(Qt::WA_DeleteOnClose);
    prompt->setWindowTitle("Accessibility");
    prompt->setIcon(QMessageBox::Question);
    prompt->setText("Ovin would like to read the menu bar");
    prompt->setInformativeText(
        "Ovin finds and opens the items of your menu bar through the accessibility support of this desktop, which is "
        "switched off. It can be switched on for this session.");
    prompt->addButton("Not Now", QMessageBox::RejectRole);
    const QPushButton* const accept = prompt->addButton("Switch On", QMessageBox::AcceptRole);
    QObject::connect(prompt, &QMessageBox::buttonClicked,
                     [accept, enable = std::move(enable)](const QAbstractButton* clicked) {
                         if (clicked == accept) enable();
                     });
    return prompt;
}

}  // namespace

void askForTrust(std::function<void()> enable) {
    QWidget* const shown = shownPrompt();
    WindowManager::bringToFront(shown != nullptr ? *shown : *makePrompt(std::move(enable)));
}

}  // namespace ovin
