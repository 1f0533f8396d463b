#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSCursor : NSObject <NSSecureCoding>
@property(class, readonly, strong) NSCursor* arrowCursor;
@property(class, readonly, strong) NSCursor* pointingHandCursor;
@end

NS_ASSUME_NONNULL_END
