#pragma once

#include <Foundation/NSDictionary.h>
#include <Foundation/NSObject.h>
#include <Foundation/NSURL.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSBundle : NSObject
@property(class, readonly, strong) NSBundle* mainBundle;
@property(readonly, copy) NSURL* bundleURL API_AVAILABLE(macos(10.6));
@property(nullable, readonly, copy) NSURL* executableURL API_AVAILABLE(macos(10.6));
@property(readonly, copy) NSString* bundlePath;
@property(nullable, readonly, copy) NSString* resourcePath;
@property(nullable, readonly, copy) NSString* bundleIdentifier;
@property(nullable, readonly, copy) NSDictionary<NSString*, id>* infoDictionary;
- (nullable id)objectForInfoDictionaryKey:(NSString*)key;
- (nullable NSURL*)URLForResource:(nullable NSString*)name withExtension:(nullable NSString*)ext API_AVAILABLE(macos(10.6));
- (nullable NSString*)pathForResource:(nullable NSString*)name ofType:(nullable NSString*)ext;
@end

NS_ASSUME_NONNULL_END
