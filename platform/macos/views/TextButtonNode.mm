#include "platform/macos/views/TextButtonNode.h"

#include "platform/macos/system/Strings.h"
#include "platform/macos/views/ButtonTitle.h"
#include "platform/macos/views/NativeText.h"

using ovin::TextButton;

@implementation OvinTextButtonNode {
    TextButton _asked;
}

@synthesize spacingAfter = _spacingAfter;

+ (instancetype)nodeWithButton:(const TextButton&)button target:(OvinClickTarget*)target {
    OvinTextButtonNode* node = [[self alloc] initWithFrame:NSZeroRect];
    node->_asked = button;
    node.tag = button.tag;
    [node setButtonType:NSButtonTypeMomentaryChange];
    node.bordered = NO;
    node.imagePosition = NSNoImage;
    ovin::setTitle(node, button.title);
    if (!button.toolTip.empty()) node.toolTip = ovin::toNSString(button.toolTip);
    if (button.isLink) node.accessibilityRole = NSAccessibilityLinkRole;
    [target adopt:node];
    return node;
}

- (void)resetCursorRects {
    if (!_asked.isLink) return [super resetCursorRects];
    [self addCursorRect:self.bounds cursor:NSCursor.pointingHandCursor];
}

- (ovin::ViewContent)shownContent {
    TextButton button = _asked;
    button.title = ovin::readBackTitle(self, _asked.title);
    button.toolTip = ovin::readBackString(self.toolTip, _asked.toolTip);
    button.isLink = [self.accessibilityRole isEqualToString:NSAccessibilityLinkRole];
    button.tag = static_cast<int>(self.tag);
    return button;
}

@end
