#include "platform/macos/views/PushButtonNode.h"

#include "platform/macos/drawing/NativeFonts.h"
#include "platform/macos/system/Strings.h"
#include "platform/macos/views/Pinning.h"

using ovin::KeyEquivalent;
using ovin::PushButton;

namespace {

NSString* nativeKey(KeyEquivalent key) {
    switch (key) {
        case KeyEquivalent::none:
            return @"";
        case KeyEquivalent::returnKey:
            return @"\r";
        case KeyEquivalent::escape:
            return @"\x1b";
    }
    return @"";
}

}  // namespace

@implementation OvinPushButtonNode

+ (instancetype)nodeWithButton:(const PushButton&)button target:(OvinClickTarget*)target {
    OvinPushButtonNode* node = [[self alloc] initWithFrame:NSZeroRect];
    node.tag = button.tag;
    [node setButtonType:NSButtonTypeMomentaryPushIn];
    node.bezelStyle = NSBezelStylePush;
    node.controlSize = NSControlSizeLarge;
    node.font = button.font ? ovin::nativeFont(*button.font) : [NSFont systemFontOfSize:NSFont.systemFontSize];
    node.title = ovin::toNSString(button.title);
    node.keyEquivalent = nativeKey(button.keyEquivalent);
    if (button.isProminent) node.bezelColor = NSColor.controlAccentColor;
    ovin::fixLength(node.widthAnchor, button.width);
    [target adopt:node];
    return node;
}

@end
