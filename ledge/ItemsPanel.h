#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "discovery/DiscoveredItem.h"
#include "platform/Platform.h"

namespace ovin {

/// The ledge: a panel at the bar that was clicked or, where that is not told, under the menu bar at the right-hand end of
/// the screen, with one button for each status item that the system is not drawing. It opens at once with the latest list
/// that it has; discovery runs away from the main thread, one at a time, and an open ledge is laid out again only when the
/// list has changed.
///
/// Main thread only. Whatever outlives a call (tasks, timers, observers) holds the ledge weakly.
class ItemsPanel : public std::enable_shared_from_this<ItemsPanel> {
public:
    /// Begins to watch the running applications and the bar: the first discovery runs two seconds later. Everything behind
    /// `platform` must outlive the ledge.
    [[nodiscard]] static std::shared_ptr<ItemsPanel> create(const Platform& platform);

    ItemsPanel(const ItemsPanel&) = delete;
    ItemsPanel& operator=(const ItemsPanel&) = delete;
    ~ItemsPanel();

    /// The click on the status item. It closes the ledge when it is open, and does nothing when its own press has just
    /// closed it as a press outside.
    void toggle(const std::optional<Screen>& screen);

    /// Opens the ledge on `screen`, or on the main one when none is given. With `showMenu` it ends with a button that closes
    /// the ledge and calls it. Without trust it only lets the system ask the user for trust.
    void open(const std::optional<Screen>& screen, std::function<void()> showMenu = {});

    void close();

    /// The order of the menu bar has changed: the list is read anew soon.
    void invalidate();

    [[nodiscard]] bool isOpen() const { return isOpen_; }

private:
    using Items = std::vector<DiscoveredItem>;

    explicit ItemsPanel(const Platform& platform);
    void observe();

    void present();
    void host(const View& content, Size size);
    void installClickMonitor();
    void clickedOutside();
    /// What the system is asked to do with an item.
    using ItemRequest = bool (*)(const Platform&, const DiscoveredItem&);
    std::function<void(int tag)> handlerFor(ItemRequest request);
    void itemClicked(DiscoveredItem item, ItemRequest request);
    void menuClicked();

    void refresh();
    void startDiscovery();
    void finishDiscovery(Items items);
    void scheduleWarmRefresh();

    const Platform platform_;
    std::unique_ptr<LedgePanel> panel_;
    std::unique_ptr<EventMonitor::Token> clickMonitor_;
    /// The result of the latest discovery.
    Items cachedItems_;
    /// Of the items on the open ledge, in order; empty while the ledge is closed.
    std::vector<std::string> displayedIdentities_;
    bool hasRefreshedOnce_ = false;
    bool isOpen_ = false;
    bool isRefreshing_ = false;
    /// Another discovery was asked for while one was running.
    bool refreshQueued_ = false;
    std::optional<Screen> screen_;
    std::function<void()> showMenu_;
    std::unique_ptr<MainQueue::Timer> warmTimer_;
    std::optional<std::chrono::nanoseconds> closedByOutsideClickAt_;
};

}  // namespace ovin
