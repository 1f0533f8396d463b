#include "app/ControlItem.h"

#include "app/MenuBarIcon.h"

namespace ovin {

ControlItem::ControlItem(const Platform& platform, ItemsPanel& panel)
    : item_(platform.statusBar.makeStatusItem()), panel_(panel), application_(platform.application) {
    item_->onClick([this](StatusItemClick click) { clicked(click); });
    item_->setImage(MenuBarIcon::image());
}

void ControlItem::clicked(StatusItemClick click) {
    if (click == StatusItemClick::leftMouseUp) return panel_.toggle(item_->screen());
    panel_.close();
    item_->showMenu(menu());
}

Menu ControlItem::menu() const {
    return {MenuEntry{"Quit Ovin", "q", false, [&application = application_] { application.terminate(); }}};
}

}  // namespace ovin
