#include "platform/macos/views/ScrollNode.h"

#include <memory>

#include "platform/macos/views/NativeViews.h"
#include "platform/macos/views/Pinning.h"

using ovin::NativeView;
using ovin::ScrollView;
using ovin::Stack;

/// Counts from its top, where a page begins.
@interface OvinFlippedView : NSView
@end

@implementation OvinFlippedView

- (BOOL)isFlipped {
    return YES;
}

@end

@interface OvinScrollNode ()

- (void)showScrollersFor:(Stack::Orientation)orientation;
- (void)holdNode:(NativeView*)view;

@end

@implementation OvinScrollNode {
    NativeView* _view;
    NSLayoutConstraint* _width;
    NSLayoutConstraint* _height;
}

@synthesize spacingAfter = _spacingAfter;

+ (instancetype)nodeWithScroll:(const ScrollView&)scroll view:(NativeView*)view {
    OvinScrollNode* node = [[self alloc] initWithFrame:NSZeroRect];
    [node showScrollersFor:scroll.orientation];
    [node holdNode:view];
    node->_width = ovin::fixLength(node.widthAnchor, scroll.size.width);
    node->_height = ovin::fixLength(node.heightAnchor, scroll.size.height);
    return node;
}

- (void)showScrollersFor:(Stack::Orientation)orientation {
    const bool isUpright = orientation == Stack::Orientation::vertical;
    self.drawsBackground = NO;
    self.borderType = NSNoBorder;
    // The window's title bar lies over no scroll view.
    self.automaticallyAdjustsContentInsets = NO;
    self.hasVerticalScroller = isUpright;
    self.hasHorizontalScroller = !isUpright;
    self.autohidesScrollers = isUpright;
    self.verticalScrollElasticity = isUpright ? NSScrollElasticityAutomatic : NSScrollElasticityNone;
    self.horizontalScrollElasticity = isUpright ? NSScrollElasticityNone : NSScrollElasticityAllowed;
    self.scrollerStyle = NSScrollerStyleOverlay;
}

/// AppKit sets it too, when the user's preference changes.
- (void)setScrollerStyle:(NSScrollerStyle)style {
    (void)style;
    [super setScrollerStyle:NSScrollerStyleOverlay];
}

/// A page is as wide as what shows it and as high as it needs to be, a row the other way round.
- (void)holdNode:(NativeView*)view {
    _view = view;
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

- (ovin::ViewContent)shownContent {
    return ScrollView{{ovin::fixedLengthOr(_width, 0), ovin::fixedLengthOr(_height, 0)},
                      std::make_shared<const ovin::View>(ovin::readBack(_view)),
                      self.isUpright ? Stack::Orientation::vertical : Stack::Orientation::horizontal};
}

@end
