#pragma once

#include <Foundation/NSDictionary.h>
#include <Foundation/NSString.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSString* NSAttributedStringKey;

typedef NS_OPTIONS(NSUInteger, NSAttributedStringEnumerationOptions) {
    NSAttributedStringEnumerationReverse = 1UL << 1,
    NSAttributedStringEnumerationLongestEffectiveRangeNotRequired = 1UL << 20
};

@interface NSAttributedString : NSObject <NSCopying, NSMutableCopying, NSSecureCoding>
@property(readonly, copy) NSString* string;
- (NSDictionary<NSAttributedStringKey, id>*)attributesAtIndex:(NSUInteger)location effectiveRange:(nullable NSRange*)range;
@end

@interface NSAttributedString (NSExtendedAttributedString)
@property(readonly) NSUInteger length;
- (nullable id)attribute:(NSAttributedStringKey)attrName
                 atIndex:(NSUInteger)location
          effectiveRange:(nullable NSRange*)range;
- (BOOL)isEqualToAttributedString:(NSAttributedString*)other;
- (instancetype)initWithString:(NSString*)str;
- (instancetype)initWithString:(NSString*)str attributes:(nullable NSDictionary<NSAttributedStringKey, id>*)attrs;
- (void)enumerateAttribute:(NSAttributedStringKey)attrName
                   inRange:(NSRange)enumerationRange
                   options:(NSAttributedStringEnumerationOptions)opts
                usingBlock:(void (^NS_NOESCAPE)(id _Nullable value, NSRange range, BOOL* stop))block
    API_AVAILABLE(macos(10.6));
- (void)enumerateAttributesInRange:(NSRange)enumerationRange
                           options:(NSAttributedStringEnumerationOptions)opts
                        usingBlock:(void (^NS_NOESCAPE)(NSDictionary<NSAttributedStringKey, id>* attrs, NSRange range,
                                                        BOOL* stop))block API_AVAILABLE(macos(10.6));
@end

@interface NSMutableAttributedString : NSAttributedString
- (void)replaceCharactersInRange:(NSRange)range withString:(NSString*)str;
- (void)setAttributes:(nullable NSDictionary<NSAttributedStringKey, id>*)attrs range:(NSRange)range;
@end

@interface NSMutableAttributedString (NSExtendedMutableAttributedString)
- (void)addAttribute:(NSAttributedStringKey)name value:(id)value range:(NSRange)range;
- (void)addAttributes:(NSDictionary<NSAttributedStringKey, id>*)attrs range:(NSRange)range;
- (void)removeAttribute:(NSAttributedStringKey)name range:(NSRange)range;
- (void)appendAttributedString:(NSAttributedString*)attrString;
@end

NS_ASSUME_NONNULL_END
