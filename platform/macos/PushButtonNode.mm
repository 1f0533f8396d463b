#include "platform/macos/PushButtonNode.h"

#include "platform/macos/NativeFonts.h"
#include "platform/macos/NativeText.h"
#include "platform/macos/Pinning.h"
#include "platform/macos/Strings.h"

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
    [node show:button];
    [target adopt:node];
    return node;
}

- (void)show:(const PushButton&)button {
    _asked = button;
    self.tag = button.tag;
    [self setButtonType:NSButtonTypeMomentaryPushIn];
    self.bezelStyle = NSBezelStylePush;
    self.controlSize = NSControlSizeLarge;
    self.font = button.font ? ovin::nativeFont(*button.font) : [NSFont systemFontOfSize:NSFont.systemFontSize];
    self.title = ovin::toNSString(button.title);
    self.keyEquivalent = nativeKey(button.keyEquivalent);
    if (button.isProminent) self.bezelColor = NSColor.controlAccentColor;
    _width = ovin::fixLength(self.widthAnchor, button.width);
}

- (ovin::ViewContent)content {
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
