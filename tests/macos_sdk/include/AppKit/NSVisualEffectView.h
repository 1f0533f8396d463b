#pragma once

#import <AppKit/NSView.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSInteger, NSVisualEffectMaterial) {
    NSVisualEffectMaterialMenu API_AVAILABLE(macos(10.11)) = 5,
    NSVisualEffectMaterialPopover API_AVAILABLE(macos(10.11)) = 6,
    NSVisualEffectMaterialWindowBackground API_AVAILABLE(macos(10.14)) = 12
};
typedef NS_ENUM(NSInteger, NSVisualEffectBlendingMode) {
    NSVisualEffectBlendingModeBehindWindow = 0,
    NSVisualEffectBlendingModeWithinWindow = 1
};
typedef NS_ENUM(NSInteger, NSVisualEffectState) {
    NSVisualEffectStateFollowsWindowActiveState = 0,
    NSVisualEffectStateActive = 1,
    NSVisualEffectStateInactive = 2
};

API_AVAILABLE(macos(10.10))
@interface NSVisualEffectView : NSView
@property NSVisualEffectMaterial material;
@property NSVisualEffectBlendingMode blendingMode;
@property NSVisualEffectState state;
@property(nullable, strong) NSImage* maskImage;
@end

NS_ASSUME_NONNULL_END
