#include "platform/macos/views/ButtonNode.h"

#include "platform/macos/drawing/NativeImages.h"
#include "platform/macos/system/Strings.h"
#include "platform/macos/views/ButtonTitle.h"
#include "platform/macos/views/NativeText.h"
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

Button::ImagePosition readBackPosition(NSCellImagePosition position) {
    if (position == NSImageOnly) return Button::ImagePosition::only;
    return position == NSImageLeading ? Button::ImagePosition::leading : Button::ImagePosition::none;
}

}  // namespace

@implementation OvinButtonNode {
    Button _asked;
    NSLayoutConstraint* _width;
    NSLayoutConstraint* _height;
}

@synthesize spacingAfter = _spacingAfter;

+ (instancetype)nodeWithButton:(const Button&)button target:(OvinClickTarget*)target {
    OvinButtonNode* node = [[self alloc] initWithFrame:NSZeroRect];
    node->_asked = button;
    node.tag = button.tag;
    node.bezelStyle = NSBezelStyleFlexiblePush;
    node.bordered = NO;
    node.imageScaling = NSImageScaleProportionallyDown;
    ovin::setTitle(node, button.title);
    if (button.image) node.image = ovin::sizedImage(*button.image);
    node.imagePosition = nativePosition(button.imagePosition);
    if (!button.toolTip.empty()) node.toolTip = node.accessibilityLabel = ovin::toNSString(button.toolTip);
    node->_width = ovin::fixLength(node.widthAnchor, button.width);
    node->_height = ovin::fixLength(node.heightAnchor, button.height);
    [node setContentHuggingPriority:NSLayoutPriorityRequired forOrientation:NSLayoutConstraintOrientationHorizontal];
    [target adopt:node];
    return node;
}

- (ovin::ViewContent)shownContent {
    Button button = _asked;
    button.title = ovin::readBackTitle(self, _asked.title);
    if (button.image && self.image != nil) button.image->size = {self.image.size.width, self.image.size.height};
    button.imagePosition = readBackPosition(self.imagePosition);
    button.toolTip = ovin::readBackString(self.toolTip, _asked.toolTip);
    button.width = ovin::fixedLength(_width);
    button.height = ovin::fixedLength(_height);
    button.tag = static_cast<int>(self.tag);
    return button;
}

- (BOOL)acceptsFirstMouse:(NSEvent*)event {
    (void)event;
    return YES;
}

@end
