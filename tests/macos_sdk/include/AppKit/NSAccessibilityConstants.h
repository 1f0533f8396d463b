#pragma once

#import <AppKit/AppKitDefines.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSString* NSAccessibilityRole;
APPKIT_EXTERN NSAccessibilityRole const NSAccessibilityLinkRole;

NS_ASSUME_NONNULL_END
