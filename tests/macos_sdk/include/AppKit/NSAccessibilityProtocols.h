#pragma once

#import <AppKit/NSAccessibilityConstants.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@protocol NSAccessibility <NSObject>
@property(getter=isAccessibilityElement) BOOL accessibilityElement API_AVAILABLE(macos(10.10));
@property(nullable, copy) NSString* accessibilityLabel API_AVAILABLE(macos(10.10));
@property(nullable, copy) NSString* accessibilityTitle API_AVAILABLE(macos(10.10));
@property(nullable, copy) NSAccessibilityRole accessibilityRole API_AVAILABLE(macos(10.10));
@property(nullable, copy) NSString* accessibilityHelp API_AVAILABLE(macos(10.10));
@property(nullable, copy) NSString* accessibilityIdentifier API_AVAILABLE(macos(10.10));
@end

NS_ASSUME_NONNULL_END
