#include "platform/macos/views/SpacerNodes.h"

#include "platform/macos/views/Pinning.h"

@implementation OvinSeparatorNode

+ (instancetype)nodeWithSeparator:(const ovin::Separator&)separator {
    OvinSeparatorNode* node = [[self alloc] initWithFrame:NSZeroRect];
    node.boxType = NSBoxSeparator;
    ovin::fixLength(node.widthAnchor, separator.width);
    return node;
}

@end

@implementation OvinSpacerNode

+ (instancetype)nodeWithSpacer:(const ovin::Spacer&)spacer {
    OvinSpacerNode* node = [[self alloc] initWithFrame:NSZeroRect];
    ovin::fixLength(node.heightAnchor, spacer.height);
    ovin::fixLength(node.widthAnchor, 1.0);
    return node;
}

@end

@implementation OvinFlexibleSpaceNode

+ (instancetype)node {
    OvinFlexibleSpaceNode* node = [[self alloc] initWithFrame:NSZeroRect];
    [node setContentHuggingPriority:ovin::weakestPriority forOrientation:NSLayoutConstraintOrientationHorizontal];
    return node;
}

/// An ordinary view has none, and then its priorities would hold neither width nor height.
- (NSSize)intrinsicContentSize {
    return NSZeroSize;
}

@end
