#pragma once

#include <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSURL : NSObject <NSSecureCoding, NSCopying>
+ (nullable instancetype)URLWithString:(NSString*)URLString;
+ (nullable instancetype)URLWithString:(NSString*)URLString
             encodingInvalidCharacters:(BOOL)encodingInvalidCharacters API_AVAILABLE(macos(14.0));
+ (NSURL*)fileURLWithPath:(NSString*)path isDirectory:(BOOL)isDir;
+ (NSURL*)fileURLWithPath:(NSString*)path;
@property(nullable, readonly, copy) NSString* absoluteString;
@property(nullable, readonly, copy) NSString* scheme;
@property(nullable, readonly, copy) NSString* host;
@property(nullable, readonly, copy) NSString* path;
@property(nullable, readonly, copy) NSString* lastPathComponent;
@property(getter=isFileURL, readonly) BOOL fileURL;
@end

NS_ASSUME_NONNULL_END
