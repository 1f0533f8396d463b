#include "platform/macos/MacInformationWindow.h"

#import <AppKit/AppKit.h>

#include <utility>

#include "platform/macos/ClickTarget.h"
#include "platform/macos/Strings.h"
#include "platform/macos/WindowContent.h"

namespace ovin {
namespace {

NSWindow* makeWindow(const std::string& title) {
    NSWindow* window = [[NSWindow alloc]
        initWithContentRect:NSZeroRect
                  styleMask:NSWindowStyleMaskTitled | NSWindowStyleMaskClosable | NSWindowStyleMaskFullSizeContentView
                    backing:NSBackingStoreBuffered
                      defer:NO];
    window.releasedWhenClosed = NO;
    window.restorable = NO;
    window.title = toNSString(title);
    window.titleVisibility = NSWindowTitleHidden;
    window.titlebarAppearsTransparent = YES;
    window.autorecalculatesKeyViewLoop = YES;
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

class MacInformationWindow final : public InformationWindow {
public:
    MacInformationWindow(const std::string& title, const View& content, Size size, ClickHandler clicked)
        : clicked_(std::make_shared<const ClickHandler>(std::move(clicked))),
          target_([[OvinClickTarget alloc] initWithHandler:clicked_]),
          window_(makeWindow(title)) {
        replaceContent(window_, content, size, target_);
    }

    ~MacInformationWindow() override { dismiss(window_); }

    void show() override {
        if (!std::exchange(hasBeenShown_, true)) centre(window_);
        [window_ makeKeyAndOrderFront:nil];
    }

    void close() override { [window_ close]; }

    [[nodiscard]] bool isOpen() const override { return window_.visible; }

    void scrollToEnd() override { ovin::scrollToEnd(window_); }

    void replace(const View& content, Size size) override { replaceContent(window_, content, size, target_); }

private:
    /// Goes with this window: a click that is still on its way then means nothing any more.
    const std::shared_ptr<const ClickHandler> clicked_;
    OvinClickTarget* const target_;
    NSWindow* const window_;
    bool hasBeenShown_ = false;
};

}  // namespace

std::unique_ptr<InformationWindow> makeMacInformationWindow(const std::string& title, const View& content, Size size,
                                                            std::function<void(int tag)> clicked) {
    return std::make_unique<MacInformationWindow>(title, content, size, std::move(clicked));
}

}  // namespace ovin
