#include "platform/macos/views/ButtonNode.h"

#include "platform/macos/drawing/NativeImages.h"
#include "platform/macos/system/Strings.h"
#include "platform/macos/views/ButtonTitle.h"
#include "platform/macos/views/Pinning.h"

using ovin::Button;

namespace {

NSCellImagePosition nativePosition(Button::ImagePosition position) {
    switch (position) {
        case Button::ImagePosition::none:
            return NSNoImage;
        case Button::ImagePosition::only:
            return NSImageOnly;
        case Button::ImagePosition::leading:
            return NSImageLeading;
    }
    return NSNoImage;
}

}  // namespace

@implementation OvinButtonNode

+ (instancetype)nodeWithButton:(const Button&)button target:(OvinClickTarget*)target {
    OvinButtonNode* node = [[self alloc] initWithFrame:NSZeroRect];
    node.tag = button.tag;
    node.bezelStyle = NSBezelStyleFlexiblePush;
    node.bordered = NO;
    node.imageScaling = NSImageScaleProportionallyDown;
    ovin::setTitle(node, button.title);
    if (button.image) node.image = ovin::sizedImage(*button.image);
    node.imagePosition = nativePosition(button.imagePosition);
    if (!button.toolTip.empty()) node.toolTip = node.accessibilityLabel = ovin::toNSString(button.toolTip);
    ovin::fixLength(node.widthAnchor, button.width);
    ovin::fixLength(node.heightAnchor, button.height);
    // An image may be narrower than the width that is stated for its button.
    const NSLayoutPriority hugging = button.width ? NSLayoutPriorityDefaultHigh : NSLayoutPriorityRequired;
    [node setContentHuggingPriority:hugging forOrientation:NSLayoutConstraintOrientationHorizontal];
    [target adopt:node];
    return node;
}

- (BOOL)acceptsFirstMouse:(NSEvent*)event {
    (void)event;
    return YES;
}

@end
