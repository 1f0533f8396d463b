#pragma once

#import <AppKit/AppKitDefines.h>
#import <Foundation/Foundation.h>

typedef NS_ENUM(NSUInteger, NSBackingStoreType) { NSBackingStoreBuffered = 2 };

NS_ASSUME_NONNULL_BEGIN

typedef NSString* NSColorSpaceName;
APPKIT_EXTERN NSColorSpaceName const NSCalibratedRGBColorSpace;

APPKIT_EXTERN void NSBeep(void);

NS_ASSUME_NONNULL_END
