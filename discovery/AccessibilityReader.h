#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Accessibility.h"

namespace ovin {

/// Reads attributes of the elements of one program, and turns the interface's loosely typed answers into plain values or
/// nothing: a request that found no answer, a missing attribute and a value of the wrong type look alike to the caller.
///
/// A program that leaves two requests in a row unanswered (`AccessibilityError::cannotComplete`) has fallen silent. From
/// then on it is asked nothing, and every value is missing. So a program that hangs delays its reader by two messaging
/// timeouts, however much there would be to read. A single lost answer costs only its own value.
///
/// Each request blocks for up to the element's messaging timeout. One thread at a time.
class AccessibilityReader {
public:
    /// `accessibility` must outlive the reader.
    explicit AccessibilityReader(const Accessibility& accessibility) : accessibility_(accessibility) {}

    [[nodiscard]] bool hasFallenSilent() const { return unanswered_ >= patience; }
    /// Whether the last request was refused because this program may not use the interface.
    [[nodiscard]] bool isRefused() const { return isRefused_; }

    /// The element that an attribute holds.
    [[nodiscard]] std::optional<AccessibilityElement> element(const AccessibilityElement& element,
                                                              std::string_view attribute);

    /// The elements that an attribute lists. An empty list is present; an array with a member of another type is not a list.
    [[nodiscard]] std::optional<std::vector<AccessibilityElement>> elements(const AccessibilityElement& element,
                                                                            std::string_view attribute);

    /// The frame of an element, "AXPosition" and "AXSize" exactly as delivered; nothing when either cannot be read.
    [[nodiscard]] std::optional<Rect> frame(const AccessibilityElement& element);

    /// A string attribute. The empty string counts as no string.
    [[nodiscard]] std::optional<std::string> string(const AccessibilityElement& element, std::string_view attribute);

private:
    static constexpr int patience = 2;

    AttributeAnswer read(const AccessibilityElement& element, std::string_view attribute);

    const Accessibility& accessibility_;
    /// How many requests in a row have found no answer.
    int unanswered_ = 0;
    bool isRefused_ = false;
};

}  // namespace ovin
