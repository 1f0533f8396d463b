#include "platform/macos/views/MenuBackgroundNode.h"

#import <QuartzCore/QuartzCore.h>

#include "platform/macos/views/Pinning.h"

using ovin::MenuBackground;

@implementation OvinMenuBackgroundNode

+ (instancetype)nodeWithBackground:(const MenuBackground&)background view:(NSView*)view {
    OvinMenuBackgroundNode* node = [[self alloc] initWithFrame:NSZeroRect];
    node.material = NSVisualEffectMaterialMenu;
    node.blendingMode = NSVisualEffectBlendingModeBehindWindow;
    node.state = NSVisualEffectStateActive;
    node.wantsLayer = YES;
    node.layer.cornerRadius = background.cornerRadius;
    node.layer.masksToBounds = YES;
    ovin::fill(node, view);
    return node;
}

@end
