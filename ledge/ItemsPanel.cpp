#include "ledge/ItemsPanel.h"

#include <cstddef>
#include <utility>

#include "discovery/ItemProvider.h"
#include "ledge/LedgePlace.h"
#include "ledge/LedgeView.h"

namespace ovin {
namespace {

using namespace std::chrono_literals;

/// A burst of launches and quits leads to one discovery, this long after the last of them.
constexpr auto warmRefreshDelay = 2s;
/// A click that follows a closing press outside within this time belongs to that press.
constexpr auto clickDuration = 500ms;

/// What stays free of the visible width beside the widest ledge.
constexpr double sideMargin = 40;

std::vector<std::string> identities(const std::vector<DiscoveredItem>& items) {
    std::vector<std::string> result;
    result.reserve(items.size());
    for (const DiscoveredItem& item : items) result.push_back(item.identity());
    return result;
}

}  // namespace

std::shared_ptr<ItemsPanel> ItemsPanel::create(const Platform& platform) {
    std::shared_ptr<ItemsPanel> panel(new ItemsPanel(platform));
    panel->observe();
    panel->scheduleWarmRefresh();
    return panel;
}

ItemsPanel::ItemsPanel(const Platform& platform) : platform_(platform) {}

ItemsPanel::~ItemsPanel() = default;

void ItemsPanel::observe() {
    const auto changed = [weak = weak_from_this()] {
        if (const auto self = weak.lock()) self->scheduleWarmRefresh();
    };
    platform_.workspace.observeApplications(changed);
    platform_.accessibility.observeBar(changed);
}

void ItemsPanel::toggle(const std::optional<Screen>& screen) {
    if (isOpen_) return close();
    if (closedByOutsideClickAt_ && platform_.clock.now() - *closedByOutsideClickAt_ < clickDuration) {
        closedByOutsideClickAt_.reset();
        return;
    }
    open(screen);
}

void ItemsPanel::open(const std::optional<Screen>& screen, std::function<void()> showMenu) {
    if (!ItemProvider::isTrusted(platform_)) return ItemProvider::requestTrust(platform_);
    isOpen_ = true;
    showMenu_ = std::move(showMenu);
    screen_ = screen ? screen : platform_.screens.main();
    present();
    refresh();
}

void ItemsPanel::close() {
    isOpen_ = false;
    clickMonitor_.reset();
    panel_.reset();
    displayedIdentities_.clear();
}

void ItemsPanel::invalidate() { scheduleWarmRefresh(); }

void ItemsPanel::present() {
    if (!screen_) return;
    displayedIdentities_ = identities(cachedItems_);

    const std::string_view whenEmpty =
        hasRefreshedOnce_ ? std::string_view(platform_.resources.words().emptyLedge) : "Loading…";
    const auto menuIcon = showMenu_ ? std::optional(platform_.resources.applicationIcon()) : std::nullopt;
    View row = ledgeRow(platform_.text, cachedItems_, whenEmpty, menuIcon);
    const double maximumWidth = ledgeRoom(*screen_).size.width - sideMargin;
    const Size fittingSize = platform_.windows.fittingSize(row);
    const LedgeContent content = ledgeContent(std::move(row), fittingSize, maximumWidth);
    host(content.view, content.size);
}

void ItemsPanel::host(const View& content, Size size) {
    if (!panel_) {
        panel_ = platform_.windows.makeLedgePanel();
        panel_->onDismissal([weak = weak_from_this()] {
            if (const auto self = weak.lock()) self->close();
        });
    }
    panel_->show(content, {ledgeOrigin(*screen_, size), size}, handlerFor(ItemProvider::activate),
                 handlerFor(ItemProvider::showMenu));
    if (!clickMonitor_) installClickMonitor();
}

/// A click is for the item that its button showed, also when the list has changed before the click is told of.
std::function<void(int tag)> ItemsPanel::handlerFor(ItemRequest request) {
    return [weak = weak_from_this(), shown = cachedItems_, request](int tag) {
        const auto self = weak.lock();
        if (self && tag == ledgeMenuTag) return self->menuClicked();
        if (self && tag >= 0 && static_cast<std::size_t>(tag) < shown.size()) {
            self->itemClicked(shown[static_cast<std::size_t>(tag)], request);
        }
    };
}

void ItemsPanel::installClickMonitor() {
    clickMonitor_ = platform_.events.monitorMouseDowns([weak = weak_from_this(), &queue = platform_.mainQueue] {
        queue.async([weak] {
            if (const auto self = weak.lock()) self->clickedOutside();
        });
    });
}

void ItemsPanel::clickedOutside() {
    // The ledge may have closed since the press.
    if (!isOpen_) return;
    closedByOutsideClickAt_ = platform_.clock.now();
    close();
}

void ItemsPanel::itemClicked(DiscoveredItem item, ItemRequest request) {
    // Before the press, so that the item's menu opens without the ledge.
    close();
    platform_.tasks.start(Tasks::Priority::userInitiated, [platform = platform_, item = std::move(item), request] {
        if (request(platform, item)) return;
        platform.mainQueue.async([&application = platform.application] { application.beep(); });
    });
}

void ItemsPanel::menuClicked() {
    if (!showMenu_) return;
    close();
    showMenu_();
}

void ItemsPanel::refresh() {
    if (!ItemProvider::isTrusted(platform_)) return;
    if (isRefreshing_) {
        refreshQueued_ = true;
        return;
    }
    startDiscovery();
}

void ItemsPanel::startDiscovery() {
    isRefreshing_ = true;
    auto apps = ItemProvider::snapshotApps(platform_);
    platform_.tasks.start(Tasks::Priority::userInitiated,
                          [platform = platform_, weak = weak_from_this(), apps = std::move(apps)] {
                              platform.mainQueue.async([weak, items = ItemProvider::discoverItems(platform, apps)] {
                                  if (const auto self = weak.lock()) self->finishDiscovery(items);
                              });
                          });
}

void ItemsPanel::finishDiscovery(Items items) {
    isRefreshing_ = false;
    hasRefreshedOnce_ = true;
    cachedItems_ = std::move(items);
    if (isOpen_ && identities(cachedItems_) != displayedIdentities_) present();
    if (!refreshQueued_) return;
    refreshQueued_ = false;
    refresh();
}

void ItemsPanel::scheduleWarmRefresh() {
    warmTimer_ = platform_.mainQueue.after(warmRefreshDelay, [weak = weak_from_this()] {
        if (const auto self = weak.lock()) self->refresh();
    });
}

}  // namespace ovin
