#pragma once

#import <AppKit/AppKitDefines.h>
#import <Foundation/Foundation.h>

typedef NS_ENUM(NSUInteger, NSBackingStoreType) { NSBackingStoreBuffered = 2 };

APPKIT_EXTERN void NSBeep(void);
