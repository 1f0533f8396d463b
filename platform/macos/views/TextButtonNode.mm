#include "platform/macos/views/TextButtonNode.h"

#include "platform/macos/system/Strings.h"
#include "platform/macos/views/ButtonTitle.h"

using ovin::TextButton;

@implementation OvinTextButtonNode {
    BOOL _isLink;
}

+ (instancetype)nodeWithButton:(const TextButton&)button target:(OvinClickTarget*)target {
    OvinTextButtonNode* node = [[self alloc] initWithFrame:NSZeroRect];
    node->_isLink = button.isLink;
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
    if (!_isLink) return [super resetCursorRects];
    [self addCursorRect:self.bounds cursor:NSCursor.pointingHandCursor];
}

@end
