#include "platform/macos/views/ImageNode.h"

#import <QuartzCore/QuartzCore.h>

#include <optional>

#include "platform/macos/drawing/NativeImages.h"
#include "platform/macos/system/Strings.h"
#include "platform/macos/views/NativeText.h"
#include "platform/macos/views/Pinning.h"

using ovin::ImageView;

@implementation OvinImageNode {
    /// Nothing until it is made; an image cannot be empty.
    std::optional<ImageView> _asked;
    NSLayoutConstraint* _width;
    NSLayoutConstraint* _height;
}

@synthesize spacingAfter = _spacingAfter;

+ (instancetype)nodeWithImage:(const ImageView&)image {
    OvinImageNode* node = [[self alloc] initWithFrame:NSZeroRect];
    node->_asked = image;
    node.image = ovin::nativeImage(image.image);
    node.imageScaling = NSImageScaleProportionallyUpOrDown;
    node.wantsLayer = YES;
    node.layer.cornerRadius = image.cornerRadius;
    node.layer.masksToBounds = YES;
    node->_width = ovin::fixLength(node.widthAnchor, image.size.width);
    node->_height = ovin::fixLength(node.heightAnchor, image.size.height);
    node.accessibilityElement = !image.accessibilityLabel.empty();
    node.accessibilityLabel = ovin::toNSString(image.accessibilityLabel);
    return node;
}

- (ovin::ViewContent)shownContent {
    ImageView image = *_asked;
    image.size = {ovin::fixedLengthOr(_width, 0), ovin::fixedLengthOr(_height, 0)};
    image.cornerRadius = self.layer.cornerRadius;
    image.accessibilityLabel = ovin::readBackString(self.accessibilityLabel, image.accessibilityLabel);
    return image;
}

@end
