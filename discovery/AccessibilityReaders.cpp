#include "discovery/AccessibilityReaders.h"

#include <utility>

namespace ovin::AccessibilityReaders {
namespace {

/// The value of an attribute if it could be read and has the wanted type.
template <typename Value>
std::optional<Value> valueIn(AttributeAnswer&& answer) {
    if (answer.error != AccessibilityError::success) return std::nullopt;
    auto* value = std::get_if<Value>(&answer.value.content);
    if (value == nullptr) return std::nullopt;
    return std::move(*value);
}

}  // namespace

std::optional<AccessibilityElement> element(const Accessibility& accessibility, const AccessibilityElement& element,
                                            std::string_view attribute) {
    return valueIn<AccessibilityElement>(accessibility.copyAttributeValue(element, attribute));
}

std::optional<std::vector<AccessibilityElement>> elements(const Accessibility& accessibility,
                                                          const AccessibilityElement& element, std::string_view attribute) {
    auto array = valueIn<AttributeValue::Array>(accessibility.copyAttributeValue(element, attribute));
    if (!array) return std::nullopt;

    std::vector<AccessibilityElement> members;
    members.reserve(array->size());
    for (AttributeValue& value : *array) {
        auto* member = std::get_if<AccessibilityElement>(&value.content);
        if (member == nullptr) return std::nullopt;
        members.push_back(std::move(*member));
    }
    return members;
}

std::optional<Rect> frame(const Accessibility& accessibility, const AccessibilityElement& element) {
    AttributeAnswer position = accessibility.copyAttributeValue(element, "AXPosition");
    if (position.error != AccessibilityError::success) return std::nullopt;
    AttributeAnswer extent = accessibility.copyAttributeValue(element, "AXSize");
    const auto origin = valueIn<Point>(std::move(position));
    const auto size = valueIn<Size>(std::move(extent));
    if (!origin || !size) return std::nullopt;
    return Rect{*origin, *size};
}

std::optional<std::string> string(const Accessibility& accessibility, const AccessibilityElement& element,
                                  std::string_view attribute) {
    auto text = valueIn<std::string>(accessibility.copyAttributeValue(element, attribute));
    if (text && text->empty()) text.reset();
    return text;
}

}  // namespace ovin::AccessibilityReaders
