#include "platform/macos/session/FirstInstance.h"

#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>
#include <unistd.h>

#include <utility>

#include "platform/macos/system/NotificationObserver.h"
#include "platform/macos/system/Strings.h"

namespace ovin {
namespace {

/// The notification from one instance to the other. If any other program sends it, only the ledge opens.
NSNotificationName requestName(const std::string& bundleIdentifier) { return toNSString(bundleIdentifier + ".openAgain"); }

bool isAnother(NSRunningApplication* application) {
    return application.processIdentifier != getpid() && application.finishedLaunching && !application.terminated;
}

}  // namespace

struct FirstInstance::Native {
    Native(const std::string& bundleIdentifier, std::function<void()> handler)
        : requests(NSDistributedNotificationCenter.defaultCenter, requestName(bundleIdentifier), std::move(handler)) {}

    NotificationObserver requests;
};

bool FirstInstance::askAnother(const std::string& bundleIdentifier) {
    bool isThere = false;
    NSString* identifier = toNSString(bundleIdentifier);
    for (NSRunningApplication* application in [NSRunningApplication runningApplicationsWithBundleIdentifier:identifier]) {
        isThere = isThere || isAnother(application);
    }
    if (!isThere) return false;
    // At once, because otherwise the system holds back notifications to an inactive program, which Ovin nearly always is.
    [NSDistributedNotificationCenter.defaultCenter postNotificationName:requestName(bundleIdentifier)
                                                                 object:nil
                                                               userInfo:nil
                                                     deliverImmediately:YES];
    return true;
}

FirstInstance::FirstInstance(const std::string& bundleIdentifier, std::function<void()> handler)
    : native_(std::make_unique<Native>(bundleIdentifier, std::move(handler))) {}

FirstInstance::~FirstInstance() = default;

}  // namespace ovin
