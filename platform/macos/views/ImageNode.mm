#include "platform/macos/views/ImageNode.h"

#import <QuartzCore/QuartzCore.h>

#include "platform/macos/drawing/NativeImages.h"
#include "platform/macos/system/Strings.h"
#include "platform/macos/views/Pinning.h"

using ovin::ImageView;

@implementation OvinImageNode

+ (instancetype)nodeWithImage:(const ImageView&)image {
    OvinImageNode* node = [[self alloc] initWithFrame:NSZeroRect];
    node.image = ovin::nativeImage(image.image);
    node.imageScaling = NSImageScaleProportionallyUpOrDown;
    node.wantsLayer = YES;
    node.layer.cornerRadius = image.cornerRadius;
    node.layer.masksToBounds = YES;
    ovin::fixLength(node.widthAnchor, image.size.width);
    ovin::fixLength(node.heightAnchor, image.size.height);
    node.accessibilityElement = !image.accessibilityLabel.empty();
    node.accessibilityLabel = ovin::toNSString(image.accessibilityLabel);
    return node;
}

@end
