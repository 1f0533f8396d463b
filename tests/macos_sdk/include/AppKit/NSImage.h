#pragma once

#import <AppKit/AppKitDefines.h>
#import <AppKit/NSColor.h>
#import <AppKit/NSFontDescriptor.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSString* NSImageName;
APPKIT_EXTERN NSImageName const NSImageNameApplicationIcon;

typedef NS_ENUM(NSUInteger, NSImageCacheMode) {
    NSImageCacheDefault = 0,
    NSImageCacheAlways = 1,
    NSImageCacheBySize = 2,
    NSImageCacheNever = 3
};

typedef NS_ENUM(NSInteger, NSImageSymbolScale) {
    NSImageSymbolScaleSmall = 1,
    NSImageSymbolScaleMedium = 2,
    NSImageSymbolScaleLarge = 3
};

API_AVAILABLE(macos(11.0))
@interface NSImageSymbolConfiguration : NSObject <NSCopying, NSSecureCoding>
+ (instancetype)configurationWithPointSize:(CGFloat)pointSize weight:(NSFontWeight)weight;
+ (instancetype)configurationWithPointSize:(CGFloat)pointSize weight:(NSFontWeight)weight scale:(NSImageSymbolScale)scale;
@end

@interface NSImage : NSObject <NSCopying, NSSecureCoding>
+ (nullable NSImage*)imageNamed:(NSImageName)name;
+ (nullable instancetype)imageWithSystemSymbolName:(NSString*)name
                          accessibilityDescription:(nullable NSString*)description API_AVAILABLE(macos(11.0));
- (instancetype)initWithSize:(NSSize)size NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithCoder:(NSCoder*)coder NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithData:(NSData*)data;
- (nullable instancetype)initWithContentsOfFile:(NSString*)fileName;
- (nullable instancetype)initWithContentsOfURL:(NSURL*)url;
+ (instancetype)imageWithSize:(NSSize)size
                      flipped:(BOOL)drawingHandlerShouldBeCalledWithFlippedContext
               drawingHandler:(BOOL (^)(NSRect dstRect))drawingHandler API_AVAILABLE(macos(10.8));
@property NSSize size;
@property(readonly, getter=isValid) BOOL valid;
@property(nullable, readonly, copy) NSData* TIFFRepresentation;
@property NSImageCacheMode cacheMode;
@property(nullable, copy) NSString* accessibilityDescription API_AVAILABLE(macos(10.6));
// A property `template`, which C++ has taken the name of: only its two methods can be written.
- (BOOL)isTemplate;
- (void)setTemplate:(BOOL)isTemplate;
- (void)drawInRect:(NSRect)rect;
- (nullable NSImage*)imageWithSymbolConfiguration:(NSImageSymbolConfiguration*)configuration API_AVAILABLE(macos(11.0));
@end

NS_ASSUME_NONNULL_END
