#include "platform/macos/views/DisclosureNode.h"

#include "platform/macos/drawing/NativeFonts.h"
#include "platform/macos/system/Strings.h"
#include "platform/macos/views/NativeText.h"

using ovin::DisclosureTriangle;

namespace {

NSControlStateValue nativeState(bool isOn) { return isOn ? NSControlStateValueOn : NSControlStateValueOff; }

}  // namespace

@implementation OvinDisclosureNode {
    DisclosureTriangle _asked;
}

@synthesize spacingAfter = _spacingAfter;

+ (instancetype)nodeWithTriangle:(const DisclosureTriangle&)triangle target:(OvinClickTarget*)target {
    OvinDisclosureNode* node = [[self alloc] initWithFrame:NSZeroRect];
    node->_asked = triangle;
    node.tag = triangle.tag;
    [node setButtonType:NSButtonTypePushOnPushOff];
    node.bezelStyle = NSBezelStyleDisclosure;
    node.imagePosition = NSImageLeading;
    node.title = @"";
    node.font = ovin::nativeFont(triangle.font);
    node.state = nativeState(triangle.isOn);
    if (!triangle.accessibilityLabel.empty()) node.accessibilityLabel = ovin::toNSString(triangle.accessibilityLabel);
    [target adopt:node];
    return node;
}

- (BOOL)sendAction:(SEL)action to:(id)target {
    self.state = nativeState(_asked.isOn);
    return [super sendAction:action to:target];
}

- (ovin::ViewContent)shownContent {
    DisclosureTriangle triangle = _asked;
    triangle.isOn = self.state == NSControlStateValueOn;
    triangle.font = ovin::readBackFont(self.font, _asked.font).value_or(_asked.font);
    // Without a name of its own it has one that AppKit makes up.
    if (!_asked.accessibilityLabel.empty())
        triangle.accessibilityLabel = ovin::readBackString(self.accessibilityLabel, _asked.accessibilityLabel);
    triangle.tag = static_cast<int>(self.tag);
    return triangle;
}

@end
