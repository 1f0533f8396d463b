#include "platform/macos/applications/MacWorkspace.h"

#import <AppKit/AppKit.h>

#include <atomic>
#include <utility>

#include "platform/macos/applications/ApplicationsObserver.h"
#include "platform/macos/drawing/NativeImages.h"
#include "platform/macos/system/NotificationObserver.h"
#include "platform/macos/system/Strings.h"

namespace ovin {
namespace {

std::optional<std::string> textOf(NSString* _Nullable text) {
    if (text == nil) return std::nullopt;
    return toString(text);
}

/// An empty identifier counts as none.
std::optional<std::string> identifierOf(NSRunningApplication* application) {
    auto identifier = textOf(application.bundleIdentifier);
    if (identifier && identifier->empty()) identifier.reset();
    return identifier;
}

/// An application that ends before its icon is drawn loses it. Its button shows nothing else, so it then gets the icon of
/// the application's file, or the system's generic icon.
NSImage* iconOf(NSRunningApplication* application) {
    if (NSImage* icon = application.icon) return icon;
    NSString* path = application.bundleURL.path;
    return [NSWorkspace.sharedWorkspace iconForFile:path != nil ? path : @""];
}

RunningApplication describe(NSRunningApplication* application, pid_t pid) {
    return {pid, identifierOf(application), textOf(application.localizedName), textOf(application.bundleURL.path),
            makeImage([application] { return iconOf(application); })};
}

/// Has the main queue call a handler once for all changes that come before the call.
class Observation {
public:
    Observation(MainQueue& mainQueue, std::function<void()> handler)
        : shared_(std::make_shared<Shared>(mainQueue, std::move(handler))),
          changed_(std::make_shared<const std::function<void()>>([shared = shared_] { tell(shared); })),
          list_([[OvinApplicationsObserver alloc] initWithWorkspace:NSWorkspace.sharedWorkspace handler:changed_]),
          launches_(NSWorkspace.sharedWorkspace.notificationCenter, NSWorkspaceDidLaunchApplicationNotification, *changed_),
          ends_(NSWorkspace.sharedWorkspace.notificationCenter, NSWorkspaceDidTerminateApplicationNotification, *changed_) {}
    Observation(const Observation&) = delete;
    Observation& operator=(const Observation&) = delete;
    ~Observation() { [list_ stop]; }

private:
    struct Shared {
        Shared(MainQueue& queue, std::function<void()> called) : mainQueue(queue), handler(std::move(called)) {}

        MainQueue& mainQueue;
        const std::function<void()> handler;
        std::atomic<bool> isWaiting = false;
    };

    static void tell(const std::weak_ptr<Shared>& weak) {
        const auto shared = weak.lock();
        if (!shared || shared->isWaiting.exchange(true)) return;
        shared->mainQueue.async([weak] {
            const auto told = weak.lock();
            if (!told) return;
            // First, so that changes from now on lead to another call.
            told->isWaiting = false;
            told->handler();
        });
    }

    const std::shared_ptr<Shared> shared_;
    const std::shared_ptr<const std::function<void()>> changed_;
    OvinApplicationsObserver* const list_;
    const NotificationObserver launches_;
    const NotificationObserver ends_;
};

class MacWorkspace final : public Workspace {
public:
    MacWorkspace(MainQueue& mainQueue, SystemLog& log) : mainQueue_(mainQueue), log_(log) {}

    [[nodiscard]] std::vector<RunningApplication> runningApplications() const override {
        @autoreleasepool {
            std::vector<RunningApplication> applications;
            for (NSRunningApplication* application in NSWorkspace.sharedWorkspace.runningApplications) {
                // Read only once, because an application that ends loses it.
                const pid_t pid = application.processIdentifier;
                if (pid > 0) applications.push_back(describe(application, pid));
            }
            return applications;
        }
    }

    [[nodiscard]] std::string displayName(const std::string& path) const override {
        @autoreleasepool {
            return toString([NSFileManager.defaultManager displayNameAtPath:toNSString(path)]);
        }
    }

    [[nodiscard]] std::optional<Image> icon(const std::string& path) const override {
        return makeImage([path] { return [NSWorkspace.sharedWorkspace iconForFile:toNSString(path)]; });
    }

    void observeApplications(std::function<void()> handler) override {
        observations_.push_back(std::make_unique<Observation>(mainQueue_, std::move(handler)));
    }

    void open(const std::string& url) override {
        if (!mayBeOpened(url)) return log_.write("Ovin: not an address to be opened: " + url);
        NSURL* address = [NSURL URLWithString:toNSString(url)];
        if (address == nil || ![NSWorkspace.sharedWorkspace openURL:address]) log_.write("Ovin: nobody could open " + url);
    }

private:
    MainQueue& mainQueue_;
    SystemLog& log_;
    std::vector<std::unique_ptr<Observation>> observations_;
};

}  // namespace

std::unique_ptr<Workspace> makeMacWorkspace(MainQueue& mainQueue, SystemLog& log) {
    return std::make_unique<MacWorkspace>(mainQueue, log);
}

}  // namespace ovin
