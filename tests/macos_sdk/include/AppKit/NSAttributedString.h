#pragma once

#import <AppKit/AppKitDefines.h>
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

APPKIT_EXTERN NSAttributedStringKey const NSFontAttributeName;
APPKIT_EXTERN NSAttributedStringKey const NSForegroundColorAttributeName;
APPKIT_EXTERN NSAttributedStringKey const NSParagraphStyleAttributeName;
APPKIT_EXTERN NSAttributedStringKey const NSUnderlineStyleAttributeName;

typedef NS_OPTIONS(NSInteger, NSUnderlineStyle) {
    NSUnderlineStyleNone = 0,
    NSUnderlineStyleSingle = 1,
    NSUnderlineStyleThick = 2
};

@interface NSAttributedString (NSStringDrawing)
- (NSSize)size;
@end

NS_ASSUME_NONNULL_END
