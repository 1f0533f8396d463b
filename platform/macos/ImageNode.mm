#include "platform/macos/ImageNode.h"

#import <QuartzCore/QuartzCore.h>

#include <optional>

#include "platform/macos/NativeImages.h"
#include "platform/macos/NativeText.h"
#include "platform/macos/Pinning.h"
#include "platform/macos/Strings.h"

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
    [node show:image];
    return node;
}

- (void)show:(const ImageView&)image {
    _asked = image;
    self.image = ovin::nativeImage(image.image);
    self.imageScaling = NSImageScaleProportionallyUpOrDown;
    self.wantsLayer = YES;
    self.layer.cornerRadius = image.cornerRadius;
    self.layer.masksToBounds = YES;
    _width = ovin::fixLength(self.widthAnchor, image.size.width);
    _height = ovin::fixLength(self.heightAnchor, image.size.height);
    self.accessibilityElement = !image.accessibilityLabel.empty();
    self.accessibilityLabel = ovin::toNSString(image.accessibilityLabel);
}

- (ovin::ViewContent)content {
    ImageView image = *_asked;
    image.size = {ovin::fixedLengthOr(_width, 0), ovin::fixedLengthOr(_height, 0)};
    image.cornerRadius = self.layer.cornerRadius;
    image.accessibilityLabel = ovin::readBackString(self.accessibilityLabel, image.accessibilityLabel);
    return image;
}

@end
