#include "platform/macos/windows/MacInformationWindow.h"

#import <AppKit/AppKit.h>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "platform/macos/system/CallBack.h"
#include "platform/macos/views/ClickTarget.h"
#include "platform/macos/windows/CloseReporter.h"
#include "platform/macos/windows/WindowContent.h"
#include "platform/macos/windows/WindowStyles.h"

namespace ovin {
namespace {

NSWindow* makeWindow(const std::string& title) {
    NSWindow* window = [[NSWindow alloc]
        initWithContentRect:NSZeroRect
                  styleMask:NSWindowStyleMaskTitled | NSWindowStyleMaskClosable | NSWindowStyleMaskFullSizeContentView
                    backing:NSBackingStoreBuffered
                      defer:NO];
    keepToItsOwner(window);
    coverTitleBar(window, title);
    [window standardWindowButton:NSWindowCloseButton].hidden = YES;
    [window standardWindowButton:NSWindowMiniaturizeButton].hidden = YES;
    [window standardWindowButton:NSWindowZoomButton].hidden = YES;
    return window;
}

/// On the screen that the user works on. AppKit centres a window on the screen that it lies on, and one that was never
/// placed lies beyond the corner of the primary screen: perhaps on another, perhaps on none.
void centre(NSWindow* window) {
    if (NSScreen* screen = NSScreen.mainScreen) [window setFrameOrigin:screen.visibleFrame.origin];
    [window center];
}

/// Whether the user holds a button, or whatever else the mouse can hold, down.
bool isTracking() { return [NSRunLoop.mainRunLoop.currentMode isEqualToString:NSEventTrackingRunLoopMode]; }

class MacInformationWindow final : public InformationWindow {
public:
    MacInformationWindow(const std::string& title, const View& content, ClickHandler clicked)
        : clicked_(std::make_shared<const ClickHandler>(std::move(clicked))),
          target_([[OvinClickTarget alloc] initWithHandler:clicked_]),
          window_(makeWindow(title)) {
        replaceContent(window_, content, target_);
    }

    ~MacInformationWindow() override { dismiss(window_); }

    void show() override {
        if (!std::exchange(hasBeenShown_, true)) centre(window_);
        [window_ makeKeyAndOrderFront:nil];
    }

    void close() override {
        // In silence: it is the user's closing that is told.
        window_.delegate = nil;
        [window_ close];
        window_.delegate = closeReporter_;
    }

    [[nodiscard]] bool isOpen() const override { return window_.visible; }

    void onClose(std::function<void()> closed) override {
        closed_ = std::make_shared<const std::function<void()>>(std::move(closed));
        closeReporter_ = [[OvinCloseReporter alloc] initWithHandler:closed_];
        window_.delegate = closeReporter_;
    }

    void scrollToEnd() override { ovin::scrollToEnd(window_); }

    void replace(const View& content) override {
        if (isTracking()) return replaceLater(content);
        waiting_->reset();
        replaceContent(window_, content, target_);
    }

private:
    /// When the loop runs in its usual mode again, if nothing has come in between.
    void replaceLater(const View& content) {
        *waiting_ = content;
        const auto show = [weak = std::weak_ptr(waiting_), window = window_, target = target_] {
            const auto waiting = weak.lock();
            if (!waiting || !*waiting) return;
            replaceContent(window, *std::exchange(*waiting, std::nullopt), target);
        };
        [NSRunLoop.mainRunLoop performInModes:@[ NSDefaultRunLoopMode ]
                                        block:^{
                                          callBack(show);
                                        }];
    }

    /// Goes with this window: a click that is still on its way then means nothing any more.
    const std::shared_ptr<const ClickHandler> clicked_;
    OvinClickTarget* const target_;
    NSWindow* const window_;
    std::shared_ptr<const std::function<void()>> closed_;
    /// The window does not keep it.
    OvinCloseReporter* closeReporter_ = nil;
    const std::shared_ptr<std::optional<View>> waiting_ = std::make_shared<std::optional<View>>();
    bool hasBeenShown_ = false;
};

}  // namespace

std::unique_ptr<InformationWindow> makeMacInformationWindow(const std::string& title, const View& content,
                                                            std::function<void(int tag)> clicked) {
    return std::make_unique<MacInformationWindow>(title, content, std::move(clicked));
}

}  // namespace ovin
