#pragma once

#include <Foundation/NSDate.h>
#include <Foundation/NSDictionary.h>
#include <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

typedef struct {
    NSInteger majorVersion;
    NSInteger minorVersion;
    NSInteger patchVersion;
} NSOperatingSystemVersion;

@interface NSProcessInfo : NSObject
@property(class, readonly, strong) NSProcessInfo* processInfo;
@property(readonly, copy) NSDictionary<NSString*, NSString*>* environment;
@property(readonly, copy) NSArray<NSString*>* arguments;
@property(copy) NSString* processName;
@property(readonly) int processIdentifier;
@property(readonly) NSOperatingSystemVersion operatingSystemVersion API_AVAILABLE(macos(10.10));
- (BOOL)isOperatingSystemAtLeastVersion:(NSOperatingSystemVersion)version API_AVAILABLE(macos(10.10));
@property(readonly) NSTimeInterval systemUptime API_AVAILABLE(macos(10.6));
@end

NS_ASSUME_NONNULL_END
