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
    explicit MacLedgePanel(ClickHandler clicked)
        : clicked_(std::make_shared<const ClickHandler>(std::move(clicked))), panel_(makePanel()) {}

    ~MacLedgePanel() override { dismiss(panel_); }

    void show(const View& content, const Rect& frame) override {
        // What was shown before has buttons with the same tags and other meanings.
        clicked_ = std::make_shared<const ClickHandler>(*clicked_);
        target_ = [[OvinClickTarget alloc] initWithHandler:clicked_];
        setContent(panel_, makeNativeView(content, target_));
        [panel_ setFrame:toNative(frame) display:YES];
        // It follows what is drawn, but not by itself.
        [panel_ invalidateShadow];
        [panel_ orderFrontRegardless];
    }

private:
    /// Goes with what is shown: a click that is still on its way then means nothing any more.
    std::shared_ptr<const ClickHandler> clicked_;
    OvinClickTarget* target_ = nil;
    NSPanel* const panel_;
};

}  // namespace

std::unique_ptr<LedgePanel> makeMacLedgePanel(std::function<void(int tag)> clicked) {
    return std::make_unique<MacLedgePanel>(std::move(clicked));
}

}  // namespace ovin
