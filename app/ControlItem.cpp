#include "app/ControlItem.h"

#include <functional>
#include <string>
#include <utility>

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
        const auto control = weak.lock();
        using Result = decltype((*control.*method)(arguments...));
        return control ? (*control.*method)(arguments...) : Result();
    };
}

void ControlItem::install() {
    commanded_.arrange.onItemsStillDoNotFit = [weak = weak_from_this()] {
        if (const auto control = weak.lock()) control->arrangeWindow().addFitWarning();
    };
    item_->setAutosaveName("Ovin.Control");
    item_->onClick(calling(&ControlItem::clicked));
    item_->setMenu(calling(&ControlItem::barMenu));
    updateIcon();
}

void ControlItem::updateIcon() {
    if (commanded_.arrange.isActive() && item_->setSymbol("checkmark.circle.fill", "Done organizing")) return;
    item_->setImage(MenuBarIcon::image());
}

void ControlItem::clicked(StatusItemClick click) {
    if (click == StatusItemClick::rightMouseUp) {
        commanded_.panel.close();
        showMenu();
    } else if (commanded_.arrange.isActive()) {
        finishOrganizing();
    } else {
        commanded_.panel.toggle(item_->screen());
    }
}

void ControlItem::perform(Command command) {
    switch (command) {
        case Command::showHiddenItems:
            return openLedge();
        case Command::organize:
            return toggleArrange();
        case Command::howThisWorks:
            return showGuide();
        case Command::launchAtLogin:
            return toggleLaunchAtLogin();
        case Command::about:
            return commanded_.about.show();
        case Command::checkForUpdates:
            return commanded_.updater.checkForUpdates();
        case Command::quit:
            return platform_.application.terminate();
    }
}

/// Where no bar draws the item, the ledge has its menu.
void ControlItem::openLedge() {
    if (commanded_.panel.isOpen()) return;
    commanded_.panel.open(item_->screen(),
                          item_->isDrawn() ? nullptr : std::function<void()>(calling(&ControlItem::showMenu)));
}

void ControlItem::showMenu() { item_->showMenu(menu()); }

MenuEntry ControlItem::entry(std::string title, Command command, std::string keyEquivalent, bool isOn) {
    return {std::move(title), std::move(keyEquivalent), isOn, [weak = weak_from_this(), command] {
                if (const auto control = weak.lock()) control->perform(command);
            }};
}

Menu ControlItem::menu() {
    const bool launchesAtLogin = platform_.launchAtLogin.status() == LaunchAtLogin::Status::enabled;
    return {
        entry(commanded_.arrange.isActive() ? "Done Organizing" : "Organize Menu Bar…", Command::organize),
        entry("How This Works", Command::howThisWorks),
        std::nullopt,
        entry("Launch at Login", Command::launchAtLogin, "", launchesAtLogin),
        std::nullopt,
        entry("About Ovin", Command::about),
        entry("Check for Updates…", Command::checkForUpdates),
        entry("Quit Ovin", Command::quit, "q"),
    };
}

Menu ControlItem::barMenu() {
    Menu all = menu();
    all.insert(all.begin(), {entry("Show Hidden Items", Command::showHiddenItems), std::nullopt});
    return all;
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
            return alert({"Everything already fits", platform_.resources.words().everythingIsDrawn});
        case BeginResult::Outcome::unavailable:
            return alert({"Can’t widen this display", result.text});
        case BeginResult::Outcome::notPermitted:
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

ArrangeWindow& ControlItem::arrangeWindow() {
    if (!arrangeWindow_) arrangeWindow_.emplace(platform_, calling(&ControlItem::finishOrganizing));
    return *arrangeWindow_;
}

}  // namespace ovin
