#pragma once

#import <AppKit/NSControl.h>
#import <AppKit/NSImage.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSImageView : NSControl
+ (instancetype)imageViewWithImage:(NSImage*)image API_AVAILABLE(macos(10.12));
@property(nullable, strong) NSImage* image;
@property NSImageScaling imageScaling;
@property(nullable, copy) NSColor* contentTintColor API_AVAILABLE(macos(10.14));
@property(nullable, copy) NSImageSymbolConfiguration* symbolConfiguration API_AVAILABLE(macos(11.0));
@end

NS_ASSUME_NONNULL_END
