#pragma once

#import <AppKit/AppKitDefines.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSString* NSAppearanceName;
APPKIT_EXTERN NSAppearanceName const NSAppearanceNameAqua API_AVAILABLE(macos(10.9));
APPKIT_EXTERN NSAppearanceName const NSAppearanceNameDarkAqua API_AVAILABLE(macos(10.14));

@interface NSAppearance : NSObject <NSSecureCoding>
@property(readonly, copy) NSAppearanceName name;
@property(class, strong, readonly) NSAppearance* currentDrawingAppearance API_AVAILABLE(macos(11.0));
- (void)performAsCurrentDrawingAppearance:(void (^NS_NOESCAPE)(void))block API_AVAILABLE(macos(11.0));
+ (nullable NSAppearance*)appearanceNamed:(NSAppearanceName)name;
- (nullable NSAppearanceName)bestMatchFromAppearancesWithNames:(NSArray<NSAppearanceName>*)appearances
    API_AVAILABLE(macos(10.14));
@end

@protocol NSAppearanceCustomization <NSObject>
@property(nullable, strong) NSAppearance* appearance API_AVAILABLE(macos(10.9));
@property(readonly, strong) NSAppearance* effectiveAppearance API_AVAILABLE(macos(10.9));
@end

NS_ASSUME_NONNULL_END
