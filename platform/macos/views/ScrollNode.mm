#include "platform/macos/views/ScrollNode.h"

#include "platform/macos/views/Pinning.h"

using ovin::ScrollView;
using ovin::Stack;

/// Its y coordinates begin at the top, like a page.
@interface OvinFlippedView : NSView
@end

@implementation OvinFlippedView

- (BOOL)isFlipped {
    return YES;
}

@end

@interface OvinScrollNode ()

- (void)showScrollersFor:(Stack::Orientation)orientation;
- (void)holdNode:(NSView*)view;

@end

@implementation OvinScrollNode

+ (instancetype)nodeWithScroll:(const ScrollView&)scroll view:(NSView*)view {
    OvinScrollNode* node = [[self alloc] initWithFrame:NSZeroRect];
    [node showScrollersFor:scroll.orientation];
    [node holdNode:view];
    ovin::fixLength(node.widthAnchor, scroll.size.width);
    ovin::fixLength(node.heightAnchor, scroll.size.height);
    return node;
}

- (void)showScrollersFor:(Stack::Orientation)orientation {
    const bool isUpright = orientation == Stack::Orientation::vertical;
    self.drawsBackground = NO;
    self.borderType = NSNoBorder;
    // No insets, because no scroll view lies under a window's title bar.
    self.automaticallyAdjustsContentInsets = NO;
    self.hasVerticalScroller = isUpright;
    self.hasHorizontalScroller = !isUpright;
    self.autohidesScrollers = isUpright;
    self.verticalScrollElasticity = isUpright ? NSScrollElasticityAutomatic : NSScrollElasticityNone;
    self.horizontalScrollElasticity = isUpright ? NSScrollElasticityNone : NSScrollElasticityAllowed;
    self.scrollerStyle = NSScrollerStyleOverlay;
}

/// Ignores the argument, because AppKit also calls this when the user's preference changes.
- (void)setScrollerStyle:(NSScrollerStyle)style {
    (void)style;
    [super setScrollerStyle:NSScrollerStyleOverlay];
}

/// A page is as wide as the scroll view and as high as it needs to be, a row the other way round.
- (void)holdNode:(NSView*)view {
    OvinFlippedView* document = [[OvinFlippedView alloc] initWithFrame:NSZeroRect];
    ovin::fill(document, view);
    document.translatesAutoresizingMaskIntoConstraints = NO;
    self.documentView = document;
    NSClipView* clip = self.contentView;
    [NSLayoutConstraint activateConstraints:@[
        [document.leadingAnchor constraintEqualToAnchor:clip.leadingAnchor],
        [document.topAnchor constraintEqualToAnchor:clip.topAnchor],
        self.isUpright ? [document.widthAnchor constraintEqualToAnchor:clip.widthAnchor]
                       : [document.heightAnchor constraintEqualToAnchor:clip.heightAnchor]
    ]];
}

- (BOOL)isUpright {
    return self.hasVerticalScroller;
}

- (void)scrollToEnd {
    NSView* document = self.documentView;
    [document scrollPoint:NSMakePoint(0, NSMaxY(document.bounds))];
}

@end
