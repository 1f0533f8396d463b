#include "platform/macos/TextButtonNode.h"

#include "platform/macos/ButtonTitle.h"
#include "platform/macos/NativeText.h"
#include "platform/macos/Strings.h"

using ovin::TextButton;

@implementation OvinTextButtonNode {
    TextButton _asked;
}

@synthesize spacingAfter = _spacingAfter;

+ (instancetype)nodeWithButton:(const TextButton&)button target:(OvinClickTarget*)target {
    OvinTextButtonNode* node = [[self alloc] initWithFrame:NSZeroRect];
    [node show:button];
    [target adopt:node];
    return node;
}

- (void)show:(const TextButton&)button {
    _asked = button;
    self.tag = button.tag;
    [self setButtonType:NSButtonTypeMomentaryChange];
    self.bordered = NO;
    self.imagePosition = NSNoImage;
    ovin::setTitle(self, button.title);
    if (!button.toolTip.empty()) self.toolTip = ovin::toNSString(button.toolTip);
    if (button.isLink) self.accessibilityRole = NSAccessibilityLinkRole;
}

- (void)resetCursorRects {
    if (!_asked.isLink) return [super resetCursorRects];
    [self addCursorRect:self.bounds cursor:NSCursor.pointingHandCursor];
}

- (ovin::ViewContent)content {
    TextButton button = _asked;
    button.title = ovin::readBackTitle(self, _asked.title);
    button.toolTip = ovin::readBackString(self.toolTip, _asked.toolTip);
    button.isLink = [self.accessibilityRole isEqualToString:NSAccessibilityLinkRole];
    button.tag = static_cast<int>(self.tag);
    return button;
}

@end
