#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Geometry.h"
#include "platform/linux/Bus.h"
#include "platform/linux/BusRequest.h"

namespace ovin {

/// The name of an accessible object on the accessibility bus.
struct AccessibleName {
    std::string destination;
    std::string path;
};

/// What is to be known of an accessible object, asked for together: its frame, its children and, if wanted, how they
/// describe themselves.
class AccessibleDetails final : public BusRequest, public std::enable_shared_from_this<AccessibleDetails> {
public:
    /// Descriptions are a request for each child.
    enum class Descriptions { read, leaveOut };

    struct Child {
        AccessibleName name;
        /// Empty when it is left out.
        std::string description;
    };

    /// Sends the request. `bus` is the accessibility bus and must outlive it.
    [[nodiscard]] static std::shared_ptr<AccessibleDetails> request(Bus& bus, const AccessibleName& object,
                                                                    Descriptions descriptions);

    // What was answered. Only after `wait` has returned true.

    /// In screen coordinates; nothing when the object has no frame.
    [[nodiscard]] const std::optional<Rect>& frame() const { return frame_; }
    /// Nothing when the object could not say.
    [[nodiscard]] const std::optional<std::vector<Child>>& children() const { return children_; }

private:
    AccessibleDetails(Bus& bus, AccessibleName object, Descriptions descriptions)
        : bus_(bus), object_(std::move(object)), descriptions_(descriptions) {}

    void ask();
    void listChildren(const BusValue& list);
    void askForDescriptions();
    void answered();

    Bus& bus_;
    const AccessibleName object_;
    const Descriptions descriptions_;
    // Written on the bus's thread until the request is finished, and only read after that.
    std::optional<Rect> frame_;
    std::optional<std::vector<Child>> children_;
    std::size_t outstanding_ = 0;
};

/// Reads the pairs of bus name and path in which objects are listed.
[[nodiscard]] std::vector<AccessibleName> accessibleNames(const BusValue& list);

}  // namespace ovin
