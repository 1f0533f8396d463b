#include "platform/macos/windows/MacFloatingPanel.h"

#import <AppKit/AppKit.h>

#include <utility>

#include "platform/macos/displays/Coordinates.h"
#include "platform/macos/system/CallBack.h"
#include "platform/macos/views/ClickTarget.h"
#include "platform/macos/windows/CloseReporter.h"
#include "platform/macos/windows/WindowContent.h"
#include "platform/macos/windows/WindowStyles.h"

namespace ovin {
namespace {

NSPanel* makePanel(const std::string& title) {
    NSPanel* panel =
        [[NSPanel alloc] initWithContentRect:NSZeroRect
                                   styleMask:NSWindowStyleMaskTitled | NSWindowStyleMaskClosable |
                                             NSWindowStyleMaskNonactivatingPanel | NSWindowStyleMaskFullSizeContentView
                                     backing:NSBackingStoreBuffered
                                       defer:NO];
    keepToItsOwner(panel);
    coverTitleBar(panel, title);
    // Before the level, because this sets a level of its own.
    panel.floatingPanel = YES;
    showOverPrograms(panel, NSFloatingWindowLevel);
    return panel;
}

class MacFloatingPanel final : public FloatingPanel {
public:
    MacFloatingPanel(const std::string& title, ClickHandler clicked, std::function<void()> closed)
        : clicked_(std::make_shared<const ClickHandler>(std::move(clicked))),
          closed_(std::make_shared<const std::function<void()>>(std::move(closed))),
          target_([[OvinClickTarget alloc] initWithHandler:clicked_]),
          closeReporter_([[OvinCloseReporter alloc] initWithHandler:closed_]),
          panel_(makePanel(title)) {
        panel_.delegate = closeReporter_;
    }

    ~MacFloatingPanel() override { dismiss(panel_); }

    void show(const View& content, const Placement& placement) override {
        waiting_.reset();
        const Size size = fitContent(panel_, content, target_);
        if (placement) [panel_ setFrameTopLeftPoint:toNative(placement(size))];
        [panel_ orderFrontRegardless];
    }

    void replace(const View& content) override {
        waiting_ = std::make_shared<const View>(content);
        const auto showWaiting = [weak = std::weak_ptr(waiting_), panel = panel_, target = target_] {
            if (const auto view = weak.lock()) replaceContent(panel, *view, target);
        };
        // Not in the mode for tracking, in which the run loop runs while a mouse button is held down or a menu is open.
        [NSRunLoop.mainRunLoop performInModes:@[ NSDefaultRunLoopMode, NSModalPanelRunLoopMode ]
                                        block:^{
                                          callBack(showWaiting);
                                        }];
    }

private:
    /// Both are destroyed with this panel, so that events that are still queued are dropped.
    const std::shared_ptr<const ClickHandler> clicked_;
    const std::shared_ptr<const std::function<void()>> closed_;
    OvinClickTarget* const target_;
    OvinCloseReporter* const closeReporter_;
    NSPanel* const panel_;
    /// The newest content given to `replace`, which older content that still waits is dropped for. None after `show`.
    std::shared_ptr<const View> waiting_;
};

}  // namespace

std::unique_ptr<FloatingPanel> makeMacFloatingPanel(const std::string& title, std::function<void(int tag)> clicked,
                                                    std::function<void()> closed) {
    return std::make_unique<MacFloatingPanel>(title, std::move(clicked), std::move(closed));
}

}  // namespace ovin
