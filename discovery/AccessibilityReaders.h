#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Accessibility.h"

/// Typed readers of Accessibility attributes. Each turns the interface's loosely typed answers into a plain value or
/// nothing: a process that does not answer, a missing attribute and a value of the wrong type look alike to the caller. The
/// readers keep nothing, log nothing and try nothing twice. Any thread; each blocks for up to the element's messaging
/// timeout per request.
namespace ovin::AccessibilityReaders {

/// The element that an attribute holds.
[[nodiscard]] std::optional<AccessibilityElement> element(const Accessibility& accessibility,
                                                          const AccessibilityElement& element, std::string_view attribute);

/// The elements that an attribute lists. An empty list is present; an array with a member of another type is not a list.
[[nodiscard]] std::optional<std::vector<AccessibilityElement>> elements(const Accessibility& accessibility,
                                                                        const AccessibilityElement& element,
                                                                        std::string_view attribute);

/// The frame of an element, "AXPosition" and "AXSize" exactly as delivered; nothing when either cannot be read.
[[nodiscard]] std::optional<Rect> frame(const Accessibility& accessibility, const AccessibilityElement& element);

/// A string attribute. The empty string counts as no string.
[[nodiscard]] std::optional<std::string> string(const Accessibility& accessibility, const AccessibilityElement& element,
                                                std::string_view attribute);

}  // namespace ovin::AccessibilityReaders
