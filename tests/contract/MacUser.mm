#include "tests/contract/MacUser.h"

#include <functional>
#include <map>
#include <stdexcept>
#include <utility>

#include "platform/macos/displays/Coordinates.h"
#include "platform/macos/system/Strings.h"

namespace ovin {
namespace {

void collect(NSView* root, Class kind, NSMutableArray* found) {
    if (root.hidden) return;
    if ([root isKindOfClass:kind]) [found addObject:root];
    for (NSView* view in root.subviews) collect(view, kind, found);
}

/// All views of a kind that are not hidden, `root` included.
NSArray* shown(NSView* root, Class kind) {
    NSMutableArray* found = [NSMutableArray array];
    if (root != nil) collect(root, kind, found);
    return found;
}

/// Windows that are shown, without those of items in the menu bar.
NSArray<NSWindow*>* shownWindows() {
    NSMutableArray<NSWindow*>* found = [NSMutableArray array];
    for (NSWindow* window in NSApp.windows) {
        if (window.visible && shown(window.contentView, NSStatusBarButton.class).count == 0) [found addObject:window];
    }
    return found;
}

/// The texts of an alert from top to bottom: its message stands above what explains it.
std::vector<std::string> textsOf(NSView* content) {
    std::multimap<double, std::string, std::greater<>> byHeight;
    for (NSTextField* field in shown(content, NSTextField.class)) {
        const double top = NSMaxY([field convertRect:field.bounds toView:nil]);
        if (field.stringValue.length > 0) byHeight.emplace(top, toString(field.stringValue));
    }
    std::vector<std::string> texts;
    for (const auto& [top, text] : byHeight) texts.push_back(text);
    return texts;
}

/// Without a nested event loop, which `performClick:` would run for a moment.
void press(NSButton* button) { [button sendAction:button.action to:button.target]; }

}  // namespace

MacUser::MacUser()
    : acknowledging_([NSTimer timerWithTimeInterval:0.02
                                            repeats:YES
                                              block:^(NSTimer*) {
                                                if (NSWindow* alert = NSApp.modalWindow) acknowledge(alert);
                                              }]) {
    [NSRunLoop.mainRunLoop addTimer:acknowledging_ forMode:NSModalPanelRunLoopMode];
}

MacUser::~MacUser() {
    [acknowledging_ invalidate];
    forgetChoice();
}

/// An alert with several buttons, or with none, is taken off the screen without being noted, so that nobody has to.
void MacUser::acknowledge(NSWindow* alert) {
    NSArray<NSButton*>* buttons = shown(alert.contentView, NSButton.class);
    const auto texts = textsOf(alert.contentView);
    if (buttons.count != 1 || texts.empty()) return [NSApp abortModal];
    acknowledged_.push_back({texts[0], texts.size() > 1 ? texts[1] : ""});
    press(buttons.firstObject);
}

NSArray<NSStatusBarButton*>* MacUser::itemButtons() {
    NSMutableArray<NSStatusBarButton*>* buttons = [NSMutableArray array];
    for (NSWindow* window in NSApp.windows) {
        if (window.visible) collect(window.contentView, NSStatusBarButton.class, buttons);
    }
    return buttons;
}

NSWindow* MacUser::window() {
    NSArray<NSWindow*>* windows = shownWindows();
    return windows.count == 1 ? windows.firstObject : nil;
}

NSEvent* MacUser::takeEvent(NSEventType type, NSEventModifierFlags modifiers) {
    NSEvent* event = [NSEvent mouseEventWithType:type
                                        location:NSMakePoint(0, 0)
                                   modifierFlags:modifiers
                                       timestamp:NSProcessInfo.processInfo.systemUptime
                                    windowNumber:0
                                         context:nil
                                     eventNumber:0
                                      clickCount:1
                                        pressure:0];
    if (event != nil) [NSApp postEvent:event atStart:YES];
    return [NSApp nextEventMatchingMask:1ULL << type untilDate:nil inMode:NSDefaultRunLoopMode dequeue:YES];
}

std::vector<std::string> MacUser::items() {
    std::vector<std::string> names;
    for (NSStatusBarButton* button in itemButtons()) names.push_back(toString(button.image.accessibilityDescription));
    return names;
}

/// An action finds out about its event from the application object.
void MacUser::clickItem(StatusItemClick click) {
    (void)takeEvent(click == StatusItemClick::rightMouseUp ? NSEventTypeRightMouseUp : NSEventTypeLeftMouseUp);
    press(itemButtons().firstObject);
}

/// A menu that is open runs the loop in the mode for tracking, and returns to whoever has opened it only when it is closed.
void MacUser::willChoose(const std::string& title) {
    forgetChoice();
    NSString* wanted = toNSString(title);
    const auto choose = ^(NSNotification* opening) {
      NSMenu* menu = opening.object;
      forgetChoice();
      [NSRunLoop.mainRunLoop performInModes:@[ NSEventTrackingRunLoopMode ]
                                      block:^{
                                        const NSInteger index = [menu indexOfItemWithTitle:wanted];
                                        if (index >= 0) [menu performActionForItemAtIndex:index];
                                        [menu cancelTracking];
                                      }];
    };
    choice_ = [NSNotificationCenter.defaultCenter addObserverForName:NSMenuDidBeginTrackingNotification
                                                              object:nil
                                                               queue:nil
                                                          usingBlock:choose];
}

void MacUser::forgetChoice() {
    if (const id choice = std::exchange(choice_, nil)) [NSNotificationCenter.defaultCenter removeObserver:choice];
}

std::vector<Rect> MacUser::windows() {
    std::vector<Rect> frames;
    for (NSWindow* window in shownWindows()) frames.push_back(fromNative(window.frame));
    return frames;
}

void MacUser::click(int tag) {
    for (NSButton* button in shown(window().contentView, NSButton.class)) {
        if (button.tag == tag) return press(button);
    }
    throw std::logic_error("there is no such button");
}

void MacUser::moveWindow(Point origin) { [window() setFrameTopLeftPoint:toNative(origin)]; }

void MacUser::closeWindow() { [window() performClose:nil]; }

void MacUser::pressElsewhere(MouseButton) {
    throw std::logic_error("a press would need leave, and hit what somebody has open");
}

}  // namespace ovin
