#include "platform/macos/views/SpacerNodes.h"

#include "platform/macos/views/Pinning.h"

@implementation OvinSeparatorNode {
    NSLayoutConstraint* _width;
}

@synthesize spacingAfter = _spacingAfter;

+ (instancetype)nodeWithSeparator:(const ovin::Separator&)separator {
    OvinSeparatorNode* node = [[self alloc] initWithFrame:NSZeroRect];
    node.boxType = NSBoxSeparator;
    node->_width = ovin::fixLength(node.widthAnchor, separator.width);
    return node;
}

- (ovin::ViewContent)shownContent {
    return ovin::Separator{ovin::fixedLengthOr(_width, 0)};
}

@end

@implementation OvinSpacerNode {
    NSLayoutConstraint* _height;
}

@synthesize spacingAfter = _spacingAfter;

+ (instancetype)nodeWithSpacer:(const ovin::Spacer&)spacer {
    OvinSpacerNode* node = [[self alloc] initWithFrame:NSZeroRect];
    node->_height = ovin::fixLength(node.heightAnchor, spacer.height);
    ovin::fixLength(node.widthAnchor, 1.0);
    return node;
}

- (ovin::ViewContent)shownContent {
    return ovin::Spacer{ovin::fixedLengthOr(_height, 0)};
}

@end

@implementation OvinFlexibleSpaceNode

@synthesize spacingAfter = _spacingAfter;

+ (instancetype)node {
    OvinFlexibleSpaceNode* node = [[self alloc] initWithFrame:NSZeroRect];
    [node setContentHuggingPriority:ovin::weakestPriority forOrientation:NSLayoutConstraintOrientationHorizontal];
    return node;
}

/// An ordinary view has none, and then nothing would hold on to its height either.
- (NSSize)intrinsicContentSize {
    return NSZeroSize;
}

- (ovin::ViewContent)shownContent {
    return ovin::FlexibleSpace{};
}

@end
