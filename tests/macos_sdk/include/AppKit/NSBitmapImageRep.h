#pragma once

#import <AppKit/NSColor.h>
#import <AppKit/NSGraphics.h>
#import <AppKit/NSImage.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSImageRep : NSObject <NSCopying, NSCoding>
@property NSSize size;
@property NSInteger pixelsWide;
@property NSInteger pixelsHigh;
@end

@interface NSBitmapImageRep : NSImageRep <NSSecureCoding>
+ (nullable instancetype)imageRepWithData:(NSData*)data;
- (nullable instancetype)initWithBitmapDataPlanes:(unsigned char* _Nullable* _Nullable)planes
                                       pixelsWide:(NSInteger)width
                                       pixelsHigh:(NSInteger)height
                                    bitsPerSample:(NSInteger)bps
                                  samplesPerPixel:(NSInteger)spp
                                         hasAlpha:(BOOL)alpha
                                         isPlanar:(BOOL)isPlanar
                                   colorSpaceName:(NSColorSpaceName)colorSpaceName
                                      bytesPerRow:(NSInteger)rBytes
                                     bitsPerPixel:(NSInteger)pBits;
- (nullable NSColor*)colorAtX:(NSInteger)x y:(NSInteger)y;
@end

NS_ASSUME_NONNULL_END
