#include "platform/macos/views/StackNode.h"

#import <QuartzCore/QuartzCore.h>

#include <optional>

#include "platform/macos/drawing/NativeColors.h"
#include "platform/macos/views/Pinning.h"
#include "platform/macos/views/SpacerNodes.h"

using ovin::Box;
using ovin::Stack;

namespace {

NSLayoutAttribute nativeAlignment(Stack::Orientation orientation, Stack::Alignment alignment) {
    const bool isRow = orientation == Stack::Orientation::horizontal;
    if (alignment == Stack::Alignment::center) return isRow ? NSLayoutAttributeCenterY : NSLayoutAttributeCenterX;
    return isRow ? NSLayoutAttributeTop : NSLayoutAttributeLeading;
}

}  // namespace

@interface OvinStackNode ()

/// Whether it uses more width than it needs, because it has a flexible space.
@property(nonatomic) BOOL takesSpareWidth;

- (void)arrangeAs:(const Stack&)stack;
- (void)addNode:(NSView*)view spacingAfter:(const std::optional<double>&)spacing;
- (void)stretchNode:(NSView*)view;
- (void)showBox:(const Box&)box;

@end

namespace {

bool takesSpareWidth(NSView* view) {
    if (view.hidden) return false;
    if ([view isKindOfClass:OvinFlexibleSpaceNode.class]) return true;
    return [view isKindOfClass:OvinStackNode.class] && static_cast<OvinStackNode*>(view).takesSpareWidth;
}

}  // namespace

@implementation OvinStackNode {
    std::optional<Box> _box;
}

@synthesize takesSpareWidth = _takesSpareWidth;

+ (instancetype)nodeWithStack:(const Stack&)stack views:(NSArray<NSView*>*)views {
    OvinStackNode* node = [[self alloc] initWithFrame:NSZeroRect];
    [node arrangeAs:stack];
    for (NSUInteger i = 0; i < views.count; ++i) [node addNode:views[i] spacingAfter:stack.views[i].spacingAfter];
    if (stack.width) node.takesSpareWidth = NO;
    if (node.takesSpareWidth)
        [node setHuggingPriority:ovin::weakestPriority forOrientation:NSLayoutConstraintOrientationHorizontal];
    if (stack.box) [node showBox:*stack.box];
    return node;
}

- (void)arrangeAs:(const Stack&)stack {
    const bool isRow = stack.orientation == Stack::Orientation::horizontal;
    self.orientation = isRow ? NSUserInterfaceLayoutOrientationHorizontal : NSUserInterfaceLayoutOrientationVertical;
    self.alignment = nativeAlignment(stack.orientation, stack.alignment);
    self.spacing = stack.spacing;
    self.edgeInsets = NSEdgeInsetsMake(stack.insets.top, stack.insets.left, stack.insets.bottom, stack.insets.right);
    self.detachesHiddenViews = YES;
    ovin::fixLength(self.widthAnchor, stack.width);
}

- (void)addNode:(NSView*)view spacingAfter:(const std::optional<double>&)spacing {
    [self addArrangedSubview:view];
    if (spacing) [self setCustomSpacing:*spacing afterView:view];
    if (!takesSpareWidth(view)) return;
    self.takesSpareWidth = YES;
    if (self.orientation == NSUserInterfaceLayoutOrientationVertical) return [self stretchNode:view];
    // The only distribution that gives spare room to views.
    self.distribution = NSStackViewDistributionFill;
}

/// Makes a view of a column as wide as the column, unless it is wider by itself.
- (void)stretchNode:(NSView*)view {
    NSLayoutConstraint* width = [view.widthAnchor constraintEqualToAnchor:self.widthAnchor
                                                                 constant:-self.edgeInsets.left - self.edgeInsets.right];
    width.priority = NSLayoutPriorityDefaultLow;
    width.active = YES;
}

- (void)showBox:(const Box&)box {
    _box = box;
    self.wantsLayer = YES;
    self.layer.borderWidth = box.borderWidth;
    self.layer.cornerRadius = box.cornerRadius;
}

- (BOOL)wantsUpdateLayer {
    return _box.has_value();
}

/// AppKit calls this whenever the appearance changes, because colours of a layer do not follow it by themselves.
- (void)updateLayer {
    if (!_box) return;
    self.layer.backgroundColor = ovin::nativeColor(_box->background).CGColor;
    self.layer.borderColor = ovin::nativeColor(_box->border).CGColor;
}

@end
