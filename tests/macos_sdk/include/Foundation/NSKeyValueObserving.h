#pragma once

#include <Foundation/NSDictionary.h>
#include <Foundation/NSObject.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_OPTIONS(NSUInteger, NSKeyValueObservingOptions) {
    NSKeyValueObservingOptionNew = 0x01,
    NSKeyValueObservingOptionOld = 0x02,
    NSKeyValueObservingOptionInitial = 0x04,
    NSKeyValueObservingOptionPrior = 0x08
};
typedef NSString* NSKeyValueChangeKey;
FOUNDATION_EXPORT NSKeyValueChangeKey const NSKeyValueChangeKindKey;
FOUNDATION_EXPORT NSKeyValueChangeKey const NSKeyValueChangeNewKey;
FOUNDATION_EXPORT NSKeyValueChangeKey const NSKeyValueChangeOldKey;

@interface NSObject (NSKeyValueObserving)
- (void)observeValueForKeyPath:(nullable NSString*)keyPath
                      ofObject:(nullable id)object
                        change:(nullable NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(nullable void*)context;
@end

@interface NSObject (NSKeyValueObserverRegistration)
- (void)addObserver:(NSObject*)observer
         forKeyPath:(NSString*)keyPath
            options:(NSKeyValueObservingOptions)options
            context:(nullable void*)context;
- (void)removeObserver:(NSObject*)observer
            forKeyPath:(NSString*)keyPath
               context:(nullable void*)context API_AVAILABLE(macos(10.7));
- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)keyPath;
@end

NS_ASSUME_NONNULL_END
