#pragma once

#include <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSUserDefaults : NSObject
@property(class, readonly, strong) NSUserDefaults* standardUserDefaults;
- (nullable instancetype)initWithSuiteName:(nullable NSString*)suitename NS_DESIGNATED_INITIALIZER
    API_AVAILABLE(macos(10.9));
- (nullable id)objectForKey:(NSString*)defaultName;
- (void)setObject:(nullable id)value forKey:(NSString*)defaultName;
- (void)removeObjectForKey:(NSString*)defaultName;
- (nullable NSString*)stringForKey:(NSString*)defaultName;
- (NSInteger)integerForKey:(NSString*)defaultName;
- (double)doubleForKey:(NSString*)defaultName;
- (BOOL)boolForKey:(NSString*)defaultName;
- (void)setInteger:(NSInteger)value forKey:(NSString*)defaultName;
- (void)setDouble:(double)value forKey:(NSString*)defaultName;
- (void)setBool:(BOOL)value forKey:(NSString*)defaultName;
- (void)removePersistentDomainForName:(NSString*)domainName;
- (BOOL)synchronize;
@end

NS_ASSUME_NONNULL_END
