#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/Geometry.h"
#include "platform/linux/system/Bus.h"
#include "platform/linux/system/BusRequest.h"

namespace ovin {

/// The name of an accessible object on the accessibility bus.
struct AccessibleName {
    std::string destination;
    std::string path;
};

/// An accessible object's frame, the status item that it stands for, and its children, requested together.
class AccessibleDetails final : public BusRequest, public std::enable_shared_from_this<AccessibleDetails> {
public:
    /// Whether a description is that of a status item. Runs on the bus's thread.
    using StandsForItem = std::function<bool(const std::string& description)>;

    /// Sends the request. `bus` is the accessibility bus and must outlive the request. Without `standsForItem` the
    /// description is not read; with it, an object that stands for an item is not asked for its children.
    [[nodiscard]] static std::shared_ptr<AccessibleDetails> request(Bus& bus, const AccessibleName& object,
                                                                    StandsForItem standsForItem);

    // The answers. Read them only after `wait` has returned true.

    /// In screen coordinates; nothing when the object has no frame.
    [[nodiscard]] const std::optional<Rect>& frame() const { return frame_; }
    /// Empty when the description was not read.
    [[nodiscard]] const std::string& description() const { return description_; }
    /// Nothing when the object gave no answer or was not asked.
    [[nodiscard]] const std::optional<std::vector<AccessibleName>>& children() const { return children_; }

private:
    AccessibleDetails(Bus& bus, AccessibleName object, StandsForItem standsForItem)
        : bus_(bus), object_(std::move(object)), standsForItem_(std::move(standsForItem)) {}

    void ask();
    void askForDescription();
    void askForChildren();
    void answered();

    Bus& bus_;
    const AccessibleName object_;
    const StandsForItem standsForItem_;
    // Written on the bus's thread until the request is finished, and only read after that.
    std::optional<Rect> frame_;
    std::string description_;
    std::optional<std::vector<AccessibleName>> children_;
    std::size_t outstanding_ = 0;
};

/// Reads the pairs of bus name and path in which objects are listed.
[[nodiscard]] std::vector<AccessibleName> accessibleNames(const BusValue& list);

}  // namespace ovin
