#pragma once

#include <memory>

#include "ledge/ItemsPanel.h"
#include "platform/Platform.h"

namespace ovin {

/// Ovin's own status item: a left click opens or closes the ledge, a right click shows the menu. Main thread only.
class ControlItem {
public:
    /// Everything is kept by the caller for as long as this lives.
    ControlItem(const Platform& platform, ItemsPanel& panel);

private:
    void clicked(StatusItemClick click);
    [[nodiscard]] Menu menu() const;

    const std::unique_ptr<StatusItem> item_;
    ItemsPanel& panel_;
    Application& application_;
};

}  // namespace ovin
