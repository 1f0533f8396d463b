#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "platform/linux/items/ItemProperties.h"

namespace ovin {

/// The properties of the items of several processes, for a caller that reads one after the other. The first reading requests
/// all: programs that do not answer cost one timeout instead of one each. Nothing is requested before that, so no answer is
/// older than the first reading. Any thread.
class ItemPropertiesBatch {
public:
    /// `bus` must outlive this object.
    ItemPropertiesBatch(Bus& bus, const std::vector<StatusNotifierItem>& items) : bus_(bus) {
        for (const StatusNotifierItem& item : items) entries_[item.address.joined()].item = item;
    }

    [[nodiscard]] bool contains(const StatusNotifierItem& item) const {
        const auto found = entries_.find(item.address.joined());
        return found != entries_.end() && found->second.item == item;
    }

    /// The request for the properties of an item that the batch contains: the one that was sent together with the others,
    /// and after that a new one.
    [[nodiscard]] std::shared_ptr<ItemProperties> request(const StatusNotifierItem& item) {
        const std::lock_guard lock(mutex_);
        if (!std::exchange(wasAsked_, true)) {
            for (auto& [address, entry] : entries_) entry.request = ItemProperties::request(bus_, entry.item);
        }
        const auto sent = std::exchange(entries_.at(item.address.joined()).request, nullptr);
        return sent ? sent : ItemProperties::request(bus_, item);
    }

private:
    struct Entry {
        StatusNotifierItem item;
        std::shared_ptr<ItemProperties> request;
    };

    Bus& bus_;
    std::mutex mutex_;
    /// By address. Which items there are never changes.
    std::map<std::string, Entry> entries_;
    bool wasAsked_ = false;
};

}  // namespace ovin
