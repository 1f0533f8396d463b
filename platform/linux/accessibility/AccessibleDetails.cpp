#include "platform/linux/accessibility/AccessibleDetails.h"

#include <utility>

#include "platform/linux/system/BusNames.h"

namespace ovin {
namespace {

/// Coordinates with their origin at the screen's top left corner.
constexpr std::uint32_t screenCoordinates = 0;

constexpr const char* accessible = "org.a11y.atspi.Accessible";

std::optional<Rect> frameIn(const BusValue& extents) {
    const BusValue::Array& numbers = extents.members();
    if (numbers.size() != 4) return std::nullopt;
    const auto number = [&](std::size_t index) { return static_cast<double>(numbers[index].integer()); };
    return Rect{{number(0), number(1)}, {number(2), number(3)}};
}

}  // namespace

std::vector<AccessibleName> accessibleNames(const BusValue& list) {
    std::vector<AccessibleName> names;
    for (const BusValue& entry : list.members()) {
        const BusValue::Array& pair = entry.members();
        if (pair.size() == 2) names.push_back({pair[0].string(), pair[1].string()});
    }
    return names;
}

std::shared_ptr<AccessibleDetails> AccessibleDetails::request(Bus& bus, const AccessibleName& object,
                                                              StandsForItem standsForItem) {
    std::shared_ptr<AccessibleDetails> request(new AccessibleDetails(bus, object, std::move(standsForItem)));
    request->ask();
    return request;
}

void AccessibleDetails::ask() {
    outstanding_ = 2;
    bus_.call({object_.destination, object_.path, "org.a11y.atspi.Component", "GetExtents", {screenCoordinates}},
              abandonedCallTimeout, [self = shared_from_this()](const BusReply& reply) {
                  if (!reply.isError()) self->frame_ = frameIn(reply.first());
                  self->answered();
              });
    standsForItem_ ? askForDescription() : askForChildren();
}

void AccessibleDetails::askForDescription() {
    bus_.call(propertyCall(object_.destination, object_.path, accessible, "Description"), abandonedCallTimeout,
              [self = shared_from_this()](const BusReply& reply) {
                  self->description_ = reply.first().string();
                  self->standsForItem_(self->description_) ? self->answered() : self->askForChildren();
              });
}

void AccessibleDetails::askForChildren() {
    bus_.call({object_.destination, object_.path, accessible, "GetChildren", {}}, abandonedCallTimeout,
              [self = shared_from_this()](const BusReply& reply) {
                  if (!reply.isError()) self->children_ = accessibleNames(reply.first());
                  self->answered();
              });
}

void AccessibleDetails::answered() {
    if (--outstanding_ == 0) finish();
}

}  // namespace ovin
