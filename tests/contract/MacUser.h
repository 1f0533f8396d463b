// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "tests/contract/StagedUser.h"

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

/// Sees what AppKit shows, and clicks by events and actions that reach this program alone, so that neither a permission nor
/// a person is needed. Alerts are acknowledged as they come up.
class MacUser final : public StagedUser {
public:
    MacUser();
    ~MacUser() override;

    /// The buttons of this program's items in the menu bar.
    [[nodiscard]] static NSArray<NSStatusBarButton*>* itemButtons();
    /// The only window of this program that is shown, besides those of its items; nil when there is none, or more than one.
    [[nodiscard]] static NSWindow* _Nullable window();
    /// Lets the application object take an event of the mouse from its queue, as if the system had put it there.
    static NSEvent* _Nullable takeEvent(NSEventType type, NSEventModifierFlags modifiers = 0);

    [[nodiscard]] std::vector<std::string> items() override;
    void clickItem(StatusItemClick click) override;
    void willChoose(const std::string& title) override;

    [[nodiscard]] std::vector<Alert> acknowledged() override { return acknowledged_; }

    [[nodiscard]] std::vector<Rect> windows() override;
    void click(int tag) override;
    void moveWindow(Point origin) override;
    void closeWindow() override;

    void pressElsewhere(MouseButton button) override;

private:
    void acknowledge(NSWindow* alert);
    void forgetChoice();

    std::vector<Alert> acknowledged_;
    NSTimer* const acknowledging_;
    id<NSObject> _Nullable choice_ = nil;
};

}  // namespace ovin

NS_ASSUME_NONNULL_END
