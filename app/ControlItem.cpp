#include "app/ControlItem.h"

#include <string>

#include "app/MenuBarIcon.h"

namespace ovin {

std::shared_ptr<ControlItem> ControlItem::create(const Platform& platform, const Commanded& commanded) {
    std::shared_ptr<ControlItem> control(new ControlItem(platform, commanded));
    control->install();
    return control;
}

ControlItem::ControlItem(const Platform& platform, const Commanded& commanded)
    : platform_(platform), commanded_(commanded), item_(platform.statusBar.makeStatusItem()) {}

template <typename Method>
auto ControlItem::calling(Method method) {
    return [weak = weak_from_this(), method](const auto&... arguments) {
        if (const auto control = weak.lock()) (*control.*method)(arguments...);
    };
}

void ControlItem::install() {
    commanded_.arrange.onItemsStillDoNotFit = [weak = weak_from_this()] {
        if (const auto control = weak.lock()) control->arrangeWindow().addFitWarning();
    };
    item_->setAutosaveName("Ovin.Control");
    item_->onClick(calling(&ControlItem::clicked));
    updateIcon();
}

void ControlItem::updateIcon() {
    if (commanded_.arrange.isActive() && item_->setSymbol("checkmark.circle.fill", "Done organizing")) return;
    item_->setImage(MenuBarIcon::image());
}

void ControlItem::clicked(StatusItemClick click) {
    if (click == StatusItemClick::rightMouseUp) {
        commanded_.panel.close();
        item_->showMenu(menu());
    } else if (commanded_.arrange.isActive()) {
        finishOrganizing();
    } else {
        commanded_.panel.toggle(item_->screen());
    }
}

void ControlItem::openLedge() {
    if (!commanded_.panel.isOpen()) commanded_.panel.open(item_->screen());
}

Menu ControlItem::menu() {
    const bool isActive = commanded_.arrange.isActive();
    const bool launchesAtLogin = platform_.launchAtLogin.status() == LaunchAtLogin::Status::enabled;
    return {
        MenuEntry{isActive ? "Done Organizing" : "Organize Menu Bar…", "", false, calling(&ControlItem::toggleArrange)},
        MenuEntry{"How This Works", "", false, calling(&ControlItem::showGuide)},
        std::nullopt,
        MenuEntry{"Launch at Login", "", launchesAtLogin, calling(&ControlItem::toggleLaunchAtLogin)},
        std::nullopt,
        MenuEntry{"About Ovin", "", false, calling(&ControlItem::showAbout)},
        MenuEntry{"Check for Updates…", "", false, calling(&ControlItem::checkForUpdates)},
        MenuEntry{"Quit Ovin", "q", false, calling(&ControlItem::quit)},
    };
}

void ControlItem::showGuide() { commanded_.guide.show(commanded_.arrange.isActive(), calling(&ControlItem::toggleArrange)); }

void ControlItem::toggleArrange() {
    if (commanded_.arrange.isActive()) {
        finishOrganizing();
    } else {
        startOrganizing();
    }
}

void ControlItem::startOrganizing() {
    if (commanded_.arrange.isActive()) return;
    commanded_.arrange.begin(calling(&ControlItem::organizingHasBegun));
}

void ControlItem::organizingHasBegun(const BeginResult& result) {
    updateIcon();
    switch (result.outcome) {
        case BeginResult::Outcome::started:
            return arrangeWindow().show(commanded_.widener.scale(), true);
        case BeginResult::Outcome::notNeeded:
            return alert({"Everything already fits",
                          "All of your menu bar items are drawn at this resolution. Hold ⌘ and drag them into the order you "
                          "want."});
        case BeginResult::Outcome::unavailable:
            return alert({"Can’t widen this display", result.text});
        case BeginResult::Outcome::superseded:
            return;
    }
}

void ControlItem::finishOrganizing() {
    arrangeWindow().close();
    commanded_.arrange.end();
    updateIcon();
    commanded_.panel.invalidate();
}

void ControlItem::alert(const Alert& alert) {
    platform_.application.activate();
    platform_.alerts.run(alert);
}

void ControlItem::toggleLaunchAtLogin() {
    LaunchAtLogin& login = platform_.launchAtLogin;
    const bool isEnabled = login.status() == LaunchAtLogin::Status::enabled;
    const auto failure = isEnabled ? login.unregisterApplication() : login.registerApplication();
    if (failure) platform_.log.write("Ovin: launch-at-login toggle failed: " + *failure);
}

void ControlItem::showAbout() { commanded_.about.show(); }

void ControlItem::checkForUpdates() { commanded_.updater.checkForUpdates(); }

void ControlItem::quit() { platform_.application.terminate(); }

ArrangeWindow& ControlItem::arrangeWindow() {
    if (!arrangeWindow_) arrangeWindow_.emplace(platform_, calling(&ControlItem::finishOrganizing));
    return *arrangeWindow_;
}

}  // namespace ovin
