#pragma once

#include <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSFileManager : NSObject
@property(class, readonly, strong) NSFileManager* defaultManager;
- (BOOL)fileExistsAtPath:(NSString*)path;
- (NSString*)displayNameAtPath:(NSString*)path;
@end

NS_ASSUME_NONNULL_END
