#include "platform/macos/windows/MacLedgePanel.h"

#import <AppKit/AppKit.h>

#include <utility>

#include "platform/macos/displays/Coordinates.h"
#include "platform/macos/views/ClickTarget.h"
#include "platform/macos/views/NativeViews.h"
#include "platform/macos/windows/WindowContent.h"
#include "platform/macos/windows/WindowStyles.h"

namespace ovin {
namespace {

NSPanel* makePanel() {
    NSPanel* panel = [[NSPanel alloc] initWithContentRect:NSZeroRect
                                                styleMask:NSWindowStyleMaskNonactivatingPanel
                                                  backing:NSBackingStoreBuffered
                                                    defer:NO];
    keepToItsOwner(panel);
    showOverPrograms(panel, NSStatusWindowLevel);
    panel.opaque = NO;
    panel.backgroundColor = NSColor.clearColor;
    panel.hasShadow = YES;
    return panel;
}

class MacLedgePanel final : public LedgePanel {
public:
    ~MacLedgePanel() override { dismiss(panel_); }

    void show(const View& content, const Rect& frame, std::function<void(int tag)> clicked,
              std::function<void(int tag)> /*menuRequested*/) override {
        clickedBefore_ = std::exchange(clicked_, std::make_shared<const ClickHandler>(std::move(clicked)));
        target_ = [[OvinClickTarget alloc] initWithHandler:clicked_];
        setContent(panel_, makeNativeView(content, target_));
        [panel_ setFrame:toNative(frame) display:YES];
        // The shadow follows the content only when it is told to.
        [panel_ invalidateShadow];
        [panel_ orderFrontRegardless];
    }

private:
    std::shared_ptr<const ClickHandler> clicked_;
    /// The handler of the old content, kept because a click on that may still be queued.
    std::shared_ptr<const ClickHandler> clickedBefore_;
    OvinClickTarget* target_ = nil;
    NSPanel* const panel_ = makePanel();
};

}  // namespace

std::unique_ptr<LedgePanel> makeMacLedgePanel() { return std::make_unique<MacLedgePanel>(); }

}  // namespace ovin
