#pragma once

#include <memory>
#include <optional>
#include <string>

#include "app/Command.h"
#include "app/Updater.h"
#include "info/AboutWindow.h"
#include "info/GuideWindow.h"
#include "ledge/ItemsPanel.h"
#include "organize/ArrangeSession.h"
#include "organize/ArrangeWindow.h"
#include "organize/DisplayWidener.h"
#include "platform/Platform.h"

namespace ovin {

/// Ovin's own status item: a left click opens or closes the ledge, or finishes organizing; a right click shows the menu.
/// Main thread only. Everything that outlives a call holds the control item weakly.
class ControlItem : public std::enable_shared_from_this<ControlItem> {
public:
    /// What the item commands.
    struct Commanded {
        ItemsPanel& panel;
        ArrangeSession& arrange;
        Updater& updater;
        DisplayWidener& widener;
        GuideWindow& guide;
        AboutWindow& about;
    };

    /// Puts the item into the menu bar. Everything behind `platform` and `commanded` must outlive it.
    [[nodiscard]] static std::shared_ptr<ControlItem> create(const Platform& platform, const Commanded& commanded);

    ControlItem(const ControlItem&) = delete;
    ControlItem& operator=(const ControlItem&) = delete;
    ~ControlItem() = default;

    /// Does what the entry of the menu does. `showHiddenItems` opens the ledge on the item's screen, or leaves it open, also
    /// while the user organizes.
    void perform(Command command);
    /// Begins to organize, unless that is under way.
    void startOrganizing();

private:
    ControlItem(const Platform& platform, const Commanded& commanded);
    void install();
    /// A function that calls `method` on this object for as long as it exists.
    template <typename Method>
    [[nodiscard]] auto calling(Method method);

    void clicked(StatusItemClick click);
    [[nodiscard]] Menu menu();
    /// For bars that open the menu by themselves, some also with a left click.
    [[nodiscard]] Menu barMenu();
    [[nodiscard]] MenuEntry entry(std::string title, Command command, std::string keyEquivalent = {}, bool isOn = false);
    void showMenu();
    void openLedge();
    /// Begins to organize, or finishes it.
    void toggleArrange();
    void toggleLaunchAtLogin();
    void showGuide();
    void updateIcon();

    void organizingHasBegun(const BeginResult& result);
    void finishOrganizing();
    void alert(const Alert& alert);
    ArrangeWindow& arrangeWindow();

    const Platform platform_;
    const Commanded commanded_;
    std::unique_ptr<StatusItem> item_;
    /// Made at its first use.
    std::optional<ArrangeWindow> arrangeWindow_;
};

}  // namespace ovin
