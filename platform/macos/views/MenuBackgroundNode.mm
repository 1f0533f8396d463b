#include "platform/macos/views/MenuBackgroundNode.h"

#import <QuartzCore/QuartzCore.h>

#include <memory>

#include "platform/macos/views/NativeViews.h"
#include "platform/macos/views/Pinning.h"

using ovin::MenuBackground;
using ovin::NativeView;

@implementation OvinMenuBackgroundNode {
    NativeView* _view;
}

@synthesize spacingAfter = _spacingAfter;

+ (instancetype)nodeWithBackground:(const MenuBackground&)background view:(NativeView*)view {
    OvinMenuBackgroundNode* node = [[self alloc] initWithFrame:NSZeroRect];
    node.material = NSVisualEffectMaterialMenu;
    node.blendingMode = NSVisualEffectBlendingModeBehindWindow;
    node.state = NSVisualEffectStateActive;
    node.wantsLayer = YES;
    node.layer.cornerRadius = background.cornerRadius;
    node.layer.masksToBounds = YES;
    ovin::fill(node, view);
    node->_view = view;
    return node;
}

- (ovin::ViewContent)shownContent {
    return MenuBackground{self.layer.cornerRadius, std::make_shared<const ovin::View>(ovin::readBack(_view))};
}

@end
