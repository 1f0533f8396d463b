#pragma once

#include <cstddef>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

#include "platform/linux/items/ItemProperties.h"

namespace ovin {

/// The properties of the items of one process. Callers that list items read the texts of one after the other, so the first
/// reading requests all: a program that does not answer costs one timeout instead of one for each item. Nothing is requested
/// before that, so no answer is older than the first reading. Any thread.
class ItemPropertiesBatch {
public:
    /// `bus` must outlive this object.
    ItemPropertiesBatch(Bus& bus, std::vector<StatusNotifierItem> items)
        : bus_(bus), items_(std::move(items)), requests_(items_.size()) {}

    /// The request for the properties of the item at `index`. The request that was sent together with the others is returned
    /// once, and only while it is fresh.
    [[nodiscard]] std::shared_ptr<ItemProperties> request(std::size_t index) {
        const std::lock_guard lock(mutex_);
        if (!std::exchange(wasAsked_, true)) {
            for (std::size_t i = 0; i < items_.size(); ++i) requests_[i] = ItemProperties::request(bus_, items_[i]);
        }
        const auto prepared = std::exchange(requests_[index], nullptr);
        return prepared && !prepared->isStale() ? prepared : ItemProperties::request(bus_, items_[index]);
    }

private:
    Bus& bus_;
    const std::vector<StatusNotifierItem> items_;
    std::mutex mutex_;
    bool wasAsked_ = false;
    std::vector<std::shared_ptr<ItemProperties>> requests_;
};

}  // namespace ovin
