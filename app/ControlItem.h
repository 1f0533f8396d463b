#pragma once

#include <memory>

#include "ledge/ItemsPanel.h"
#include "platform/Application.h"
#include "platform/StatusItem.h"

namespace ovin {

/// Ovin's own status item: a left click opens or closes the ledge, a right click shows the menu. Main thread only.
class ControlItem {
public:
    /// Everything is kept by the caller for as long as this lives.
    ControlItem(StatusItem& item, ItemsPanel& panel, Application& application);

private:
    void clicked(StatusItemClick click);
    [[nodiscard]] Menu menu() const;

    StatusItem& item_;
    ItemsPanel& panel_;
    Application& application_;
};

}  // namespace ovin
