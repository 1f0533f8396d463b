#include "platform/macos/own_item/MacStatusItem.h"

#import <AppKit/AppKit.h>

#include <functional>
#include <utility>

#include "platform/macos/displays/Coordinates.h"
#include "platform/macos/drawing/NativeDrawing.h"
#include "platform/macos/own_item/NativeMenu.h"
#include "platform/macos/system/CallBack.h"
#include "platform/macos/system/Strings.h"

namespace {

using ClickHandler = std::function<void(ovin::StatusItemClick)>;

}  // namespace

NS_ASSUME_NONNULL_BEGIN

/// The target of the item's button, and the delegate of its menu; the item keeps it alive.
@interface OvinStatusItemTarget : NSObject <NSMenuDelegate>

/// Empty when no handler is set.
@property(nonatomic) ClickHandler handler;

- (void)clicked:(nullable id)sender;
/// Shows a menu at an item. Clicks are dropped until it returns.
- (void)showMenu:(NSMenu*)menu at:(NSStatusItem*)item;

@end

NS_ASSUME_NONNULL_END

namespace {

ovin::StatusItemClick currentClick() {
    NSEvent* event = NSApp.currentEvent;
    if (event == nil) return ovin::StatusItemClick::other;
    if (event.type == NSEventTypeRightMouseUp) return ovin::StatusItemClick::rightMouseUp;
    if (event.type != NSEventTypeLeftMouseUp) return ovin::StatusItemClick::other;
    // The system makes a secondary click of a Control-click only where a view has a menu of its own.
    const bool isSecondary = (event.modifierFlags & NSEventModifierFlagControl) != 0;
    return isSecondary ? ovin::StatusItemClick::rightMouseUp : ovin::StatusItemClick::leftMouseUp;
}

}  // namespace

@implementation OvinStatusItemTarget {
    BOOL _isShowingMenu;
    BOOL _hasOpenedMenu;
}

@synthesize handler = _handler;

- (void)clicked:(id)sender {
    (void)sender;
    // Some systems may send this action for the click below that opens the menu, and the handler would open it again.
    if (_isShowingMenu) return;
    // A copy, because the handler may be replaced while it runs.
    if (const ClickHandler handler = self.handler) ovin::callBack([&] { handler(currentClick()); });
}

- (void)showMenu:(NSMenu*)menu at:(NSStatusItem*)item {
    _isShowingMenu = YES;
    _hasOpenedMenu = NO;
    menu.delegate = self;
    NSStatusBarButton* button = item.button;
    // The item has a menu only while the menu is open, because an item with a menu reports no clicks.
    item.menu = menu;
    [button performClick:nil];
    item.menu = nil;
    // On some systems that click may open no menu.
    if (!_hasOpenedMenu && button != nil) {
        [menu popUpMenuPositioningItem:nil atLocation:NSMakePoint(0, NSMaxY(button.bounds)) inView:button];
    }
    _isShowingMenu = NO;
}

- (void)menuWillOpen:(NSMenu*)menu {
    (void)menu;
    _hasOpenedMenu = YES;
}

@end

namespace ovin {
namespace {

NSStatusItem* makeItem() { return [NSStatusBar.systemStatusBar statusItemWithLength:NSVariableStatusItemLength]; }

class MacStatusItem final : public StatusItem {
public:
    MacStatusItem() {
        NSStatusBarButton* button = item_.button;
        button.target = target_;
        button.action = @selector(clicked:);
        [button sendActionOn:NSEventMaskLeftMouseUp | NSEventMaskRightMouseUp];
    }

    ~MacStatusItem() override {
        target_.handler = nullptr;
        [NSStatusBar.systemStatusBar removeStatusItem:item_];
    }

    void setAutosaveName(const std::string& name) override { item_.autosaveName = toNSString(name); }

    void onClick(std::function<void(StatusItemClick)> handler) override { target_.handler = std::move(handler); }

    void setImage(const DrawnImage& image) override { show(nativeImage(image)); }

    [[nodiscard]] bool setSymbol(std::string_view name, const std::string& accessibilityDescription) override {
        NSImage* symbol = nativeSymbol(name, accessibilityDescription);
        if (symbol == nil) return false;
        show(symbol);
        return true;
    }

    void showMenu(const Menu& menu) override {
        // Variables of this call, because this object may be destroyed while the menu is open.
        NSMenu* shown = menu_ = nativeMenu(menu);
        NSStatusItem* item = item_;
        OvinStatusItemTarget* target = target_;
        [target showMenu:shown at:item];
    }

    [[nodiscard]] std::optional<Screen> screen() const override {
        NSScreen* screen = item_.button.window.screen;
        if (screen == nil) return std::nullopt;
        return Screen{fromNative(screen.frame), fromNative(screen.visibleFrame)};
    }

private:
    void show(NSImage* image) {
        NSStatusBarButton* button = item_.button;
        button.title = @"";
        button.image = image;
    }

    NSStatusItem* const item_ = makeItem();
    OvinStatusItemTarget* const target_ = [[OvinStatusItemTarget alloc] init];
    /// The last menu that was shown, kept because a choice may be reported after the menu has closed, and only acts while
    /// its entry exists.
    NSMenu* menu_ = nil;
};

class MacStatusBar final : public StatusBar {
public:
    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem() override { return std::make_unique<MacStatusItem>(); }
};

}  // namespace

std::unique_ptr<StatusBar> makeMacStatusBar() { return std::make_unique<MacStatusBar>(); }

}  // namespace ovin
