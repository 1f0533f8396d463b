#include "platform/linux/windows/TrustPrompt.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <utility>

#include "platform/linux/drawing/QtIcons.h"
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

QWidget* makePrompt(std::function<void(bool)> answered) {
    auto* const prompt = new QMessageBox;
    prompt->setObjectName(promptName);
    prompt->setAttribute(Qt::WA_DeleteOnClose);
    // Above the card, which stays above all others, and beside it, so that the card's buttons work.
    prompt->setWindowModality(Qt::NonModal);
    prompt->setWindowFlag(Qt::WindowStaysOnTopHint);
    prompt->setWindowTitle("Accessibility");
    prompt->setWindowIcon(ownWindowIcon());
    prompt->setIcon(QMessageBox::Question);
    prompt->setText("Ovin would like to read the menu bar");
    prompt->setInformativeText(
        "To leave out the items that your menu bar draws already, and to organize the others, Ovin reads the bar through "
        "the accessibility support of this desktop, which is switched off. Switched on, it has all programs tell others "
        "what their windows show. It stays on in later sessions too: where the desktop forgets it, Ovin switches it on "
        "again when it starts, until you switch it off in the settings of the desktop while Ovin runs.\n\nWithout it Ovin "
        "shows all items. It asks again only when you choose to organize the menu bar.");
    prompt->addButton("Not Now", QMessageBox::RejectRole);
    const QPushButton* const accept = prompt->addButton("Switch On", QMessageBox::AcceptRole);
    QObject::connect(prompt, &QMessageBox::finished,
                     [prompt, accept, answered = std::move(answered)] { answered(prompt->clickedButton() == accept); });
    return prompt;
}

}  // namespace

void askForTrust(std::function<void(bool)> answered) {
    QWidget* const shown = shownPrompt();
    WindowManager::bringToFront(shown != nullptr ? *shown : *makePrompt(std::move(answered)));
}

}  // namespace ovin
