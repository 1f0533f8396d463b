#include "platform/macos/views/PushButtonNode.h"

#include "platform/macos/drawing/NativeFonts.h"
#include "platform/macos/system/Strings.h"
#include "platform/macos/views/NativeText.h"
#include "platform/macos/views/Pinning.h"

using ovin::KeyEquivalent;
using ovin::PushButton;

namespace {

NSString* const returnKey = @"\r";
NSString* const escapeKey = @"\x1b";

NSString* nativeKey(KeyEquivalent key) {
    switch (key) {
        case KeyEquivalent::none:
            return @"";
        case KeyEquivalent::returnKey:
            return returnKey;
        case KeyEquivalent::escape:
            return escapeKey;
    }
    return @"";
}

KeyEquivalent readBackKey(NSString* key) {
    if ([key isEqualToString:returnKey]) return KeyEquivalent::returnKey;
    return [key isEqualToString:escapeKey] ? KeyEquivalent::escape : KeyEquivalent::none;
}

}  // namespace

@implementation OvinPushButtonNode {
    PushButton _asked;
    NSLayoutConstraint* _width;
}

@synthesize spacingAfter = _spacingAfter;

+ (instancetype)nodeWithButton:(const PushButton&)button target:(OvinClickTarget*)target {
    OvinPushButtonNode* node = [[self alloc] initWithFrame:NSZeroRect];
    node->_asked = button;
    node.tag = button.tag;
    [node setButtonType:NSButtonTypeMomentaryPushIn];
    node.bezelStyle = NSBezelStylePush;
    node.controlSize = NSControlSizeLarge;
    node.font = button.font ? ovin::nativeFont(*button.font) : [NSFont systemFontOfSize:NSFont.systemFontSize];
    node.title = ovin::toNSString(button.title);
    node.keyEquivalent = nativeKey(button.keyEquivalent);
    if (button.isProminent) node.bezelColor = NSColor.controlAccentColor;
    node->_width = ovin::fixLength(node.widthAnchor, button.width);
    [target adopt:node];
    return node;
}

- (ovin::ViewContent)shownContent {
    PushButton button = _asked;
    button.title = ovin::readBackString(self.title, _asked.title);
    button.font = ovin::readBackFont(self.font, _asked.font);
    button.keyEquivalent = readBackKey(self.keyEquivalent);
    button.isProminent = self.bezelColor != nil;
    button.width = ovin::fixedLength(_width);
    button.tag = static_cast<int>(self.tag);
    return button;
}

@end
