#include "discovery/AccessibilityReader.h"

#include <utility>

namespace ovin {
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

std::optional<AccessibilityElement> AccessibilityReader::element(const AccessibilityElement& element,
                                                                 std::string_view attribute) {
    return valueIn<AccessibilityElement>(read(element, attribute));
}

std::optional<std::vector<AccessibilityElement>> AccessibilityReader::elements(const AccessibilityElement& element,
                                                                               std::string_view attribute) {
    auto array = valueIn<AttributeValue::Array>(read(element, attribute));
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

std::optional<Rect> AccessibilityReader::frame(const AccessibilityElement& element) {
    AttributeAnswer position = read(element, "AXPosition");
    if (position.error != AccessibilityError::success) return std::nullopt;
    AttributeAnswer extent = read(element, "AXSize");
    const auto origin = valueIn<Point>(std::move(position));
    const auto size = valueIn<Size>(std::move(extent));
    if (!origin || !size) return std::nullopt;
    return Rect{*origin, *size};
}

std::optional<std::string> AccessibilityReader::string(const AccessibilityElement& element, std::string_view attribute) {
    auto text = valueIn<std::string>(read(element, attribute));
    if (text && text->empty()) text.reset();
    return text;
}

AttributeAnswer AccessibilityReader::read(const AccessibilityElement& element, std::string_view attribute) {
    if (hasFallenSilent()) return {AccessibilityError::cannotComplete, {}};
    AttributeAnswer answer = accessibility_.copyAttributeValue(element, attribute);
    unanswered_ = answer.error == AccessibilityError::cannotComplete ? unanswered_ + 1 : 0;
    isRefused_ = answer.error == AccessibilityError::apiDisabled;
    return answer;
}

}  // namespace ovin
