#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSGraphicsContext : NSObject
@property(class, nullable, strong) NSGraphicsContext* currentContext;
+ (void)saveGraphicsState;
+ (void)restoreGraphicsState;
@end

NS_ASSUME_NONNULL_END
