#pragma once

#import <AppKit/AppKitDefines.h>
#import <CoreGraphics/CoreGraphics.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@class NSAppearance, NSColorSpace;

typedef NSString* NSColorName;

@interface NSColor : NSObject <NSCopying, NSSecureCoding>
+ (NSColor*)colorWithSRGBRed:(CGFloat)red
                       green:(CGFloat)green
                        blue:(CGFloat)blue
                       alpha:(CGFloat)alpha API_AVAILABLE(macos(10.7));
+ (nullable NSColor*)colorWithCGColor:(CGColorRef)cgColor API_AVAILABLE(macos(10.8));
+ (NSColor*)colorWithName:(nullable NSColorName)colorName
          dynamicProvider:(NSColor* (^)(NSAppearance* appearance))dynamicProvider API_AVAILABLE(macos(10.15));
@property(class, strong, readonly) NSColor* blackColor;
@property(class, strong, readonly) NSColor* whiteColor;
@property(class, strong, readonly) NSColor* clearColor;
@property(class, strong, readonly) NSColor* labelColor API_AVAILABLE(macos(10.10));
@property(class, strong, readonly) NSColor* secondaryLabelColor API_AVAILABLE(macos(10.10));
@property(class, strong, readonly) NSColor* tertiaryLabelColor API_AVAILABLE(macos(10.10));
@property(class, strong, readonly) NSColor* quaternaryLabelColor API_AVAILABLE(macos(10.10));
@property(class, strong, readonly) NSColor* linkColor;
@property(class, strong, readonly) NSColor* separatorColor API_AVAILABLE(macos(10.14));
@property(class, strong, readonly) NSColor* windowBackgroundColor;
@property(class, strong, readonly) NSColor* controlAccentColor API_AVAILABLE(macos(10.14));
@property(class, strong, readonly) NSColor* systemOrangeColor API_AVAILABLE(macos(10.10));
@property(class, strong, readonly) NSColor* systemBlueColor API_AVAILABLE(macos(10.10));
- (NSColor*)colorWithAlphaComponent:(CGFloat)alpha;
- (nullable NSColor*)colorUsingColorSpace:(NSColorSpace*)space;
@property(readonly) CGFloat redComponent;
@property(readonly) CGFloat greenComponent;
@property(readonly) CGFloat blueComponent;
@property(readonly) CGFloat alphaComponent;
@property(readonly) CGColorRef CGColor API_AVAILABLE(macos(10.8));
- (void)set;
- (void)setFill;
- (void)setStroke;
@end

@interface NSColorSpace : NSObject
@property(class, strong, readonly) NSColorSpace* sRGBColorSpace;
@end

NS_ASSUME_NONNULL_END
