#pragma once

#include <Foundation/NSArray.h>
#include <Foundation/NSString.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSString (NSStringPathExtensions)
+ (NSString*)pathWithComponents:(NSArray<NSString*>*)components;
@property(readonly, copy) NSArray<NSString*>* pathComponents;
@property(readonly, copy) NSString* lastPathComponent;
@property(readonly, copy) NSString* pathExtension;
@property(readonly, copy) NSString* stringByDeletingPathExtension;
@property(readonly, copy) NSString* stringByDeletingLastPathComponent;
- (NSString*)stringByAppendingPathComponent:(NSString*)str;
@end

NS_ASSUME_NONNULL_END
