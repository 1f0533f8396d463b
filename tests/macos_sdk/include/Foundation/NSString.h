#pragma once

#include <Foundation/NSObject.h>
#include <Foundation/NSRange.h>

NS_ASSUME_NONNULL_BEGIN

@class NSArray<ObjectType>, NSCharacterSet, NSData, NSError, NSLocale;

typedef unsigned short unichar;

typedef NS_OPTIONS(NSUInteger, NSStringCompareOptions) {
    NSCaseInsensitiveSearch = 1,
    NSLiteralSearch = 2,
    NSBackwardsSearch = 4,
    NSAnchoredSearch = 8,
    NSNumericSearch = 64,
    NSDiacriticInsensitiveSearch = 128,
    NSWidthInsensitiveSearch = 256,
    NSForcedOrderingSearch = 512
};
typedef NS_OPTIONS(NSUInteger, NSStringEnumerationOptions) {
    NSStringEnumerationByLines = 0,
    NSStringEnumerationByParagraphs = 1,
    NSStringEnumerationByComposedCharacterSequences = 2,
    NSStringEnumerationByWords = 3,
    NSStringEnumerationBySentences = 4,
    NSStringEnumerationReverse = 1UL << 8,
    NSStringEnumerationSubstringNotRequired = 1UL << 9
};
typedef NSUInteger NSStringEncoding;
enum : NSStringEncoding {
    NSASCIIStringEncoding = 1,
    NSUTF8StringEncoding = 4,
    NSISOLatin1StringEncoding = 5,
    NSUnicodeStringEncoding = 10,
    NSUTF16StringEncoding = NSUnicodeStringEncoding,
    NSUTF16BigEndianStringEncoding = 0x90000100,
    NSUTF16LittleEndianStringEncoding = 0x94000100
};
typedef NS_OPTIONS(NSUInteger, NSStringEncodingConversionOptions) {
    NSStringEncodingConversionAllowLossy = 1,
    NSStringEncodingConversionExternalRepresentation = 2
};

@interface NSString : NSObject <NSCopying, NSMutableCopying, NSSecureCoding>
@property(readonly) NSUInteger length;
- (unichar)characterAtIndex:(NSUInteger)index;
- (instancetype)init NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_DESIGNATED_INITIALIZER;
@end

@interface NSString (NSStringExtensionMethods)
+ (instancetype)string;
+ (instancetype)stringWithString:(NSString*)string;
+ (instancetype)stringWithFormat:(NSString*)format, ... NS_FORMAT_FUNCTION(1, 2);
+ (nullable instancetype)stringWithUTF8String:(const char*)nullTerminatedCString;
+ (instancetype)stringWithCharacters:(const unichar*)characters length:(NSUInteger)length;
- (instancetype)initWithCharacters:(const unichar*)characters length:(NSUInteger)length;
- (nullable instancetype)initWithUTF8String:(const char*)nullTerminatedCString;
- (nullable instancetype)initWithData:(NSData*)data encoding:(NSStringEncoding)encoding;
- (nullable instancetype)initWithBytes:(const void*)bytes length:(NSUInteger)len encoding:(NSStringEncoding)encoding;
@property(nullable, readonly) const char* UTF8String NS_RETURNS_INNER_POINTER;
- (NSUInteger)lengthOfBytesUsingEncoding:(NSStringEncoding)enc;
- (NSUInteger)maximumLengthOfBytesUsingEncoding:(NSStringEncoding)enc;
- (nullable NSData*)dataUsingEncoding:(NSStringEncoding)encoding;
- (nullable NSData*)dataUsingEncoding:(NSStringEncoding)encoding allowLossyConversion:(BOOL)lossy;
- (BOOL)getBytes:(nullable void*)buffer
         maxLength:(NSUInteger)maxBufferCount
        usedLength:(nullable NSUInteger*)usedBufferCount
          encoding:(NSStringEncoding)encoding
           options:(NSStringEncodingConversionOptions)options
             range:(NSRange)range
    remainingRange:(nullable NSRange*)leftover;
- (void)getCharacters:(unichar*)buffer range:(NSRange)range;
- (NSComparisonResult)compare:(NSString*)string;
- (NSComparisonResult)compare:(NSString*)string options:(NSStringCompareOptions)mask;
- (NSComparisonResult)caseInsensitiveCompare:(NSString*)string;
- (NSComparisonResult)localizedCompare:(NSString*)string;
- (NSComparisonResult)localizedCaseInsensitiveCompare:(NSString*)string;
- (BOOL)isEqualToString:(NSString*)aString;
- (BOOL)hasPrefix:(NSString*)str;
- (BOOL)hasSuffix:(NSString*)str;
- (BOOL)containsString:(NSString*)str API_AVAILABLE(macos(10.10));
- (NSRange)rangeOfString:(NSString*)searchString;
- (NSRange)rangeOfString:(NSString*)searchString options:(NSStringCompareOptions)mask;
- (NSRange)rangeOfString:(NSString*)searchString options:(NSStringCompareOptions)mask range:(NSRange)rangeOfReceiverToSearch;
- (NSRange)rangeOfComposedCharacterSequenceAtIndex:(NSUInteger)index;
- (NSString*)substringFromIndex:(NSUInteger)from;
- (NSString*)substringToIndex:(NSUInteger)to;
- (NSString*)substringWithRange:(NSRange)range;
- (NSString*)stringByAppendingString:(NSString*)aString;
- (NSString*)stringByTrimmingCharactersInSet:(NSCharacterSet*)set;
- (NSString*)stringByReplacingOccurrencesOfString:(NSString*)target withString:(NSString*)replacement;
- (NSArray<NSString*>*)componentsSeparatedByString:(NSString*)separator;
- (void)enumerateSubstringsInRange:(NSRange)range
                           options:(NSStringEnumerationOptions)opts
                        usingBlock:(void (^NS_NOESCAPE)(NSString* _Nullable substring, NSRange substringRange,
                                                        NSRange enclosingRange, BOOL* stop))block API_AVAILABLE(macos(10.6));
@property(readonly) double doubleValue;
@property(readonly) int intValue;
@property(readonly) NSInteger integerValue;
@property(readonly) long long longLongValue;
@property(readonly) BOOL boolValue;
@property(readonly, copy) NSString* lowercaseString;
@property(readonly, copy) NSString* uppercaseString;
@property(readonly, copy) NSString* precomposedStringWithCanonicalMapping;
@property(readonly, copy) NSString* decomposedStringWithCanonicalMapping;
@end

@interface NSMutableString : NSString
- (void)replaceCharactersInRange:(NSRange)range withString:(NSString*)aString;
- (void)appendString:(NSString*)aString;
@end

NS_ASSUME_NONNULL_END
