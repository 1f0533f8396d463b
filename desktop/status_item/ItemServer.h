#pragma once

#include <systemd/sd-bus.h>
#include <systemd/sd-event.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "desktop/status_item/ItemObject.h"
#include "desktop/status_item/ItemOptions.h"
#include "desktop/status_item/MenuObject.h"
#include "desktop/status_item/MessageWriter.h"

namespace ovin {

struct EventUnref {
    void operator()(sd_event* event) const { sd_event_unref(event); }
};
struct TimerUnref {
    void operator()(sd_event_source* source) const { sd_event_source_disable_unref(source); }
};
struct BusClose {
    void operator()(sd_bus* bus) const { sd_bus_flush_close_unref(bus); }
};

/// The connection to the session bus: hands calls to the items and their menu, and registers them with every watcher that
/// appears.
class ItemServer {
public:
    explicit ItemServer(ItemOptions options);

    /// Runs until the connection ends or the items have vanished. Returns the exit status.
    int run();

private:
    using Timer = std::unique_ptr<sd_event_source, TimerUnref>;
    struct HeldCall {
        std::uint64_t due;  // microseconds of the monotonic clock
        Message call;
    };
    struct Registration {  // what a reply to RegisterStatusNotifierItem is about
        ItemServer* server;
        std::size_t item;
    };

    int connect();
    int listenToSignals();
    int listenToInput();
    void takeInput();
    void obey(const std::string& command);
    int listenToWatcher();
    std::string wellKnownName() const;
    void print(const std::string& line, const std::string& path) const;

    int take(sd_bus_message* call);
    int dispatch(sd_bus_message* call);
    int hold(sd_bus_message* call);
    void answerHeld(std::uint64_t now);

    void watcherAppeared(const std::string& owner);
    void registerItem(std::size_t item);
    std::string registrationArgument(const ItemObject& item) const;
    void registered(std::size_t item, const sd_bus_error* error);
    void allRegistered();
    void vanish();

    template <typename Expired>
    Timer startTimer(std::uint64_t microseconds, Expired);

    ItemOptions options_;
    std::vector<ItemObject> items_;
    std::unordered_map<std::string, std::size_t> itemByPath_;
    MenuObject menu_;
    std::vector<Registration> registrations_;
    std::unique_ptr<sd_event, EventUnref> event_;
    std::unique_ptr<sd_bus, BusClose> bus_;
    std::deque<HeldCall> held_;
    Timer heldTimer_;
    Timer vanishTimer_;
    sd_event_source* input_ = nullptr;         // lives as long as the event loop at most
    std::string commands_;                     // what has been read of the next line
    std::string watcher_;                      // the unique name of the watcher that has been told of the items
    std::unordered_set<std::size_t> awaited_;  // items that no watcher has taken yet
    bool ready_ = false;
    bool vanished_ = false;
};

}  // namespace ovin
