#include "platform/macos/accessibility/ElementValues.h"

#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

#include <utility>

#include "platform/macos/system/Strings.h"

namespace ovin {
namespace {

AttributeValue geometryValue(AXValueRef value) {
    CGPoint point = CGPointZero;
    if (AXValueGetValue(value, kAXValueTypeCGPoint, &point)) return {Point{point.x, point.y}};
    CGSize size = CGSizeZero;
    if (AXValueGetValue(value, kAXValueTypeCGSize, &size)) return {Size{size.width, size.height}};
    return {AttributeValue::Other{}};
}

AttributeValue singleValue(CFTypeRef value, MessagingTimeout timeout) {
    if (value == nullptr) return {AttributeValue::Null{}};
    const CFTypeID type = CFGetTypeID(value);
    if (type == CFStringGetTypeID()) return {toString((__bridge NSString*)value)};
    if (type == AXValueGetTypeID()) return geometryValue(static_cast<AXValueRef>(value));
    if (type == AXUIElementGetTypeID()) {
        return {makeElement(Reference<AXUIElementRef>::retain(static_cast<AXUIElementRef>(value)), timeout)};
    }
    return {AttributeValue::Other{}};
}

}  // namespace

AttributeValue attributeValue(CFTypeRef value, MessagingTimeout timeout) {
    if (value == nullptr || CFGetTypeID(value) != CFArrayGetTypeID()) return singleValue(value, timeout);
    const auto array = static_cast<CFArrayRef>(value);
    AttributeValue::Array members;
    const CFIndex count = CFArrayGetCount(array);
    members.reserve(static_cast<std::size_t>(count));
    for (CFIndex i = 0; i < count; ++i) members.push_back(singleValue(CFArrayGetValueAtIndex(array, i), timeout));
    return {std::move(members)};
}

}  // namespace ovin
