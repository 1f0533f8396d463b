#include "platform/macos/views/DisclosureNode.h"

#include "platform/macos/drawing/NativeFonts.h"
#include "platform/macos/system/Strings.h"

using ovin::DisclosureTriangle;

@implementation OvinDisclosureNode {
    NSControlStateValue _described;
}

+ (instancetype)nodeWithTriangle:(const DisclosureTriangle&)triangle target:(OvinClickTarget*)target {
    OvinDisclosureNode* node = [[self alloc] initWithFrame:NSZeroRect];
    node.tag = triangle.tag;
    [node setButtonType:NSButtonTypePushOnPushOff];
    node.bezelStyle = NSBezelStyleDisclosure;
    node.imagePosition = NSImageLeading;
    node.title = @"";
    node.font = ovin::nativeFont(triangle.font);
    node.state = node->_described = triangle.isOn ? NSControlStateValueOn : NSControlStateValueOff;
    if (!triangle.accessibilityLabel.empty()) node.accessibilityLabel = ovin::toNSString(triangle.accessibilityLabel);
    [target adopt:node];
    return node;
}

- (BOOL)sendAction:(SEL)action to:(id)target {
    self.state = _described;
    return [super sendAction:action to:target];
}

@end
