#include "platform/macos/windows/MacInformationWindow.h"

#import <AppKit/AppKit.h>

#include <functional>
#include <memory>
#include <utility>

#include "platform/macos/views/ClickTarget.h"
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

/// Centres on the screen that the user works on. AppKit centres a window on the screen where it is, and a window that was
/// never placed is beyond the corner of the primary screen: perhaps on another, perhaps on none.
void centre(NSWindow* window) {
    if (NSScreen* screen = NSScreen.mainScreen) [window setFrameOrigin:screen.visibleFrame.origin];
    [window center];
}

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

    void close() override { [window_ close]; }

    void scrollToEnd() override { ovin::scrollToEnd(window_); }

private:
    /// Destroyed with this window, so that a click that is still queued is dropped.
    const std::shared_ptr<const ClickHandler> clicked_;
    OvinClickTarget* const target_;
    NSWindow* const window_;
    bool hasBeenShown_ = false;
};

}  // namespace

std::unique_ptr<InformationWindow> makeMacInformationWindow(const std::string& title, const View& content,
                                                            std::function<void(int tag)> clicked) {
    return std::make_unique<MacInformationWindow>(title, content, std::move(clicked));
}

}  // namespace ovin
