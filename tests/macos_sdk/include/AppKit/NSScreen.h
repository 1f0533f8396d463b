#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSString* NSDeviceDescriptionKey;

@interface NSScreen : NSObject
@property(class, readonly, copy) NSArray<NSScreen*>* screens;
@property(class, nullable, readonly, strong) NSScreen* mainScreen;
@property(readonly) NSRect frame;
@property(readonly) NSRect visibleFrame;
@property(readonly, copy) NSDictionary<NSDeviceDescriptionKey, id>* deviceDescription;
@property(readonly) CGFloat backingScaleFactor API_AVAILABLE(macos(10.7));
@end

NS_ASSUME_NONNULL_END
