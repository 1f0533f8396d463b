#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSUInteger, NSLineBreakMode) {
    NSLineBreakByWordWrapping = 0,
    NSLineBreakByCharWrapping = 1,
    NSLineBreakByClipping = 2,
    NSLineBreakByTruncatingHead = 3,
    NSLineBreakByTruncatingTail = 4,
    NSLineBreakByTruncatingMiddle = 5
};

// On processors of Apple's make Center is 1 and Right is 2; on others it is the other way round.
typedef NS_ENUM(NSInteger, NSTextAlignment) {
    NSTextAlignmentLeft = 0,
#if __arm64__
    NSTextAlignmentCenter = 1,
    NSTextAlignmentRight = 2,
#else
    NSTextAlignmentRight = 1,
    NSTextAlignmentCenter = 2,
#endif
    NSTextAlignmentJustified = 3,
    NSTextAlignmentNatural = 4
};

@interface NSParagraphStyle : NSObject <NSCopying, NSMutableCopying, NSSecureCoding>
@property(class, readonly, copy) NSParagraphStyle* defaultParagraphStyle;
@property(readonly) CGFloat lineSpacing;
@property(readonly) CGFloat paragraphSpacing;
@property(readonly) NSTextAlignment alignment;
@property(readonly) NSLineBreakMode lineBreakMode;
@end

@interface NSMutableParagraphStyle : NSParagraphStyle
@property CGFloat lineSpacing;
@property CGFloat paragraphSpacing;
@property NSTextAlignment alignment;
@property NSLineBreakMode lineBreakMode;
@end

NS_ASSUME_NONNULL_END
