#pragma once

#import <AppKit/NSFontDescriptor.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSFont : NSObject <NSSecureCoding, NSCopying>
+ (NSFont*)systemFontOfSize:(CGFloat)fontSize;
+ (NSFont*)boldSystemFontOfSize:(CGFloat)fontSize;
+ (NSFont*)systemFontOfSize:(CGFloat)fontSize weight:(NSFontWeight)weight API_AVAILABLE(macos(10.11));
@property(class, readonly) CGFloat systemFontSize;
@property(class, readonly) CGFloat smallSystemFontSize;
@property(readonly) CGFloat pointSize;
@property(readonly, copy) NSString* fontName;
@end

NS_ASSUME_NONNULL_END
