#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/linux/items/StatusNotifierItems.h"
#include "platform/linux/system/BusRequest.h"

namespace ovin {

/// The properties of a status item, requested together. Programs differ: the interface has two names, some programs do not
/// know `GetAll`, and any property may be missing or of any type.
class ItemProperties final : public BusRequest, public std::enable_shared_from_this<ItemProperties> {
public:
    /// Sends the request. `bus` must outlive the request.
    [[nodiscard]] static std::shared_ptr<ItemProperties> request(Bus& bus, const StatusNotifierItem& item);

    // The answers. Read them only after `wait` has returned true.

    /// The error of the last attempt when no property could be read; empty otherwise.
    [[nodiscard]] const std::string& error() const { return error_; }
    [[nodiscard]] std::string title() const;
    /// The tool tip, or else the icon's description.
    [[nodiscard]] std::string description() const;
    [[nodiscard]] StatusItemTraits traits() const;

private:
    ItemProperties(Bus& bus, StatusNotifierItem item) : bus_(bus), item_(std::move(item)) {}

    /// Tries the ways to read an item's properties one after the other, from `attempt` on.
    void attempt(int attempt);
    void askForAll(int attempt);
    void askForEach(int attempt);
    void collected(int attempt, const std::string& error);
    void keep();
    [[nodiscard]] std::optional<std::string> menu() const;
    [[nodiscard]] std::optional<bool> isMenu() const;
    [[nodiscard]] const BusValue& property(const std::string& name) const;

    Bus& bus_;
    const StatusNotifierItem item_;
    // Written on the bus's thread until the request is finished, and only read after that.
    std::string interface_;
    std::string error_;
    BusValue::Dictionary properties_;
    int outstanding_ = 0;
};

}  // namespace ovin
