#include "platform/macos/updates/MacUpdates.h"

#import <Foundation/Foundation.h>
#import <Sparkle/Sparkle.h>

#include <cstdlib>
#include <utility>

#include "platform/macos/system/CallBack.h"
#include "platform/macos/system/Strings.h"

namespace {

/// The framework promises to call on the main thread, which owns all that the delegate uses.
void requireMainThread() {
    if (NSThread.isMainThread) return;
    NSLog(@"Ovin: the framework of updates has left the main thread");
    std::abort();
}

}  // namespace

NS_ASSUME_NONNULL_BEGIN

/// Passes the framework's questions to the product. All calls arrive on the main thread.
@interface OvinUpdaterDelegate : NSObject <SPUUpdaterDelegate, SPUStandardUserDriverDelegate>
- (instancetype)initWithDelegate:(ovin::UpdateFramework::Delegate)delegate;
- (instancetype)init NS_UNAVAILABLE;
/// The delegate is not called after this, however long the framework keeps this object.
- (void)forgetDelegate;
@end

NS_ASSUME_NONNULL_END

@implementation OvinUpdaterDelegate {
    ovin::UpdateFramework::Delegate _delegate;
}

- (instancetype)initWithDelegate:(ovin::UpdateFramework::Delegate)delegate {
    self = [super init];
    if (self) _delegate = std::move(delegate);
    return self;
}

- (void)forgetDelegate {
    _delegate = {};
}

/// Nil keeps the configured feed.
- (nullable NSString*)feedURLStringForUpdater:(SPUUpdater*)updater {
    (void)updater;
    const auto feed = _delegate.feedURLString ? ovin::callBack(_delegate.feedURLString) : std::nullopt;
    return feed ? ovin::toNSString(*feed) : nil;
}

- (BOOL)supportsGentleScheduledUpdateReminders {
    return YES;
}

- (void)standardUserDriverWillHandleShowingUpdate:(BOOL)handleShowingUpdate
                                        forUpdate:(SUAppcastItem*)update
                                            state:(SPUUserUpdateState*)state {
    (void)handleShowingUpdate;
    (void)update;
    (void)state;
    requireMainThread();
    if (_delegate.willHandleShowingUpdate) ovin::callBack(_delegate.willHandleShowingUpdate);
}

@end

namespace ovin {
namespace {

class SparkleController final : public UpdateFramework::Controller {
public:
    explicit SparkleController(UpdateFramework::Delegate delegate)
        : delegate_([[OvinUpdaterDelegate alloc] initWithDelegate:std::move(delegate)]),
          controller_([[SPUStandardUpdaterController alloc] initWithStartingUpdater:YES
                                                                    updaterDelegate:delegate_
                                                                 userDriverDelegate:delegate_]) {}
    SparkleController(const SparkleController&) = delete;
    SparkleController& operator=(const SparkleController&) = delete;
    ~SparkleController() override { [delegate_ forgetDelegate]; }

    void checkForUpdates() override { [controller_ checkForUpdates:nil]; }

private:
    OvinUpdaterDelegate* const delegate_;
    SPUStandardUpdaterController* const controller_;
};

class MacUpdates final : public UpdateFramework {
public:
    [[nodiscard]] std::unique_ptr<Controller> start(Delegate delegate) override {
        return std::make_unique<SparkleController>(std::move(delegate));
    }
};

}  // namespace

std::unique_ptr<UpdateFramework> makeMacUpdates() { return std::make_unique<MacUpdates>(); }

}  // namespace ovin
