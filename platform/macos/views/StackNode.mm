#include "platform/macos/views/StackNode.h"

#import <QuartzCore/QuartzCore.h>

#include "platform/macos/drawing/NativeColors.h"
#include "platform/macos/views/NativeViews.h"
#include "platform/macos/views/Pinning.h"
#include "platform/macos/views/SpacerNodes.h"

using ovin::Box;
using ovin::NativeView;
using ovin::Stack;

namespace {

NSLayoutAttribute nativeAlignment(Stack::Orientation orientation, Stack::Alignment alignment) {
    const bool isRow = orientation == Stack::Orientation::horizontal;
    if (alignment == Stack::Alignment::center) return isRow ? NSLayoutAttributeCenterY : NSLayoutAttributeCenterX;
    return isRow ? NSLayoutAttributeTop : NSLayoutAttributeLeading;
}

Stack::Alignment readBackAlignment(NSLayoutAttribute shown, const Stack& asked) {
    if (shown == nativeAlignment(asked.orientation, asked.alignment)) return asked.alignment;
    if (shown == NSLayoutAttributeTop) return Stack::Alignment::top;
    return shown == NSLayoutAttributeLeading ? Stack::Alignment::leading : Stack::Alignment::center;
}

Stack withoutViews(Stack stack) {
    stack.views.clear();
    return stack;
}

}  // namespace

@interface OvinStackNode ()

/// Whether it makes use of more width than it needs: a flexible space in it does.
@property(nonatomic) BOOL takesSpareWidth;

- (void)arrangeAs:(const Stack&)stack;
- (void)addNode:(NativeView*)view;
- (void)stretchNode:(NativeView*)view;
- (void)showBox:(const Box&)box;
- (ovin::View)readBackNode:(NativeView*)view;

@end

namespace {

bool takesSpareWidth(NativeView* view) {
    if (view.hidden) return false;
    if ([view isKindOfClass:OvinFlexibleSpaceNode.class]) return true;
    return [view isKindOfClass:OvinStackNode.class] && static_cast<OvinStackNode*>(view).takesSpareWidth;
}

}  // namespace

@implementation OvinStackNode {
    /// All but the views.
    Stack _asked;
    NSLayoutConstraint* _width;
}

@synthesize spacingAfter = _spacingAfter;
@synthesize takesSpareWidth = _takesSpareWidth;

+ (instancetype)nodeWithStack:(const Stack&)stack views:(NSArray<NativeView*>*)views {
    OvinStackNode* node = [[self alloc] initWithFrame:NSZeroRect];
    [node arrangeAs:stack];
    for (NativeView* view in views) [node addNode:view];
    if (node.takesSpareWidth)
        [node setHuggingPriority:ovin::weakestPriority forOrientation:NSLayoutConstraintOrientationHorizontal];
    if (stack.box) [node showBox:*stack.box];
    return node;
}

- (void)arrangeAs:(const Stack&)stack {
    _asked = withoutViews(stack);
    const bool isRow = stack.orientation == Stack::Orientation::horizontal;
    self.orientation = isRow ? NSUserInterfaceLayoutOrientationHorizontal : NSUserInterfaceLayoutOrientationVertical;
    self.alignment = nativeAlignment(stack.orientation, stack.alignment);
    self.spacing = stack.spacing;
    self.edgeInsets = NSEdgeInsetsMake(stack.insets.top, stack.insets.left, stack.insets.bottom, stack.insets.right);
    self.detachesHiddenViews = YES;
    _width = ovin::fixLength(self.widthAnchor, stack.width);
}

- (void)addNode:(NativeView*)view {
    [self addArrangedSubview:view];
    if (view.spacingAfter) [self setCustomSpacing:*view.spacingAfter afterView:view];
    if (!takesSpareWidth(view)) return;
    if (!_asked.width) self.takesSpareWidth = YES;
    if (self.orientation == NSUserInterfaceLayoutOrientationVertical) return [self stretchNode:view];
    // Only this way what a row has to spare is shared out at all.
    self.distribution = NSStackViewDistributionFill;
}

/// Makes a view of a column as wide as the column is, unless it is wider by itself.
- (void)stretchNode:(NativeView*)view {
    NSLayoutConstraint* width = [view.widthAnchor constraintEqualToAnchor:self.widthAnchor
                                                                 constant:-_asked.insets.left - _asked.insets.right];
    width.priority = NSLayoutPriorityDefaultLow;
    width.active = YES;
}

- (void)showBox:(const Box&)box {
    self.wantsLayer = YES;
    self.layer.borderWidth = box.borderWidth;
    self.layer.cornerRadius = box.cornerRadius;
}

- (BOOL)wantsUpdateLayer {
    return _asked.box.has_value();
}

/// AppKit asks for it again whenever the appearance changes; a layer's own colours stay as they are.
- (void)updateLayer {
    if (!_asked.box) return;
    self.layer.backgroundColor = ovin::nativeColor(_asked.box->background).CGColor;
    self.layer.borderColor = ovin::nativeColor(_asked.box->border).CGColor;
}

- (ovin::ViewContent)shownContent {
    Stack stack = _asked;
    stack.orientation = self.orientation == NSUserInterfaceLayoutOrientationHorizontal ? Stack::Orientation::horizontal
                                                                                       : Stack::Orientation::vertical;
    stack.alignment = readBackAlignment(self.alignment, _asked);
    stack.spacing = self.spacing;
    const NSEdgeInsets insets = self.edgeInsets;
    stack.insets = {insets.top, insets.left, insets.bottom, insets.right};
    stack.width = ovin::fixedLength(_width);
    if (stack.box) {
        stack.box->borderWidth = self.layer.borderWidth;
        stack.box->cornerRadius = self.layer.cornerRadius;
    }
    for (NSView* view in self.arrangedSubviews) stack.views.push_back([self readBackNode:static_cast<NativeView*>(view)]);
    return stack;
}

- (ovin::View)readBackNode:(NativeView*)view {
    ovin::View result = ovin::readBack(view);
    const CGFloat shown = [self customSpacingAfterView:view];
    const CGFloat asked = result.spacingAfter.value_or(NSStackViewSpacingUseDefault);
    // A stack need not know the spacing after a view that it has taken out.
    if (result.isHidden || shown == asked) return result;
    if (shown == NSStackViewSpacingUseDefault) {
        result.spacingAfter.reset();
    } else {
        result.spacingAfter = shown;
    }
    return result;
}

@end
