#include "platform/macos/windows/WindowContent.h"

#include <optional>

#include "platform/macos/views/NativeViews.h"
#include "platform/macos/views/Pinning.h"
#include "platform/macos/views/ScrollNode.h"

namespace ovin {
namespace {

/// The run loop is not in its default mode while a mouse button is held down.
void keepUntilIdle(id object) {
    [NSRunLoop.mainRunLoop performInModes:@[ NSDefaultRunLoopMode ]
                                    block:^{
                                      (void)object;
                                    }];
}

/// The first view of class `kind` for which `isMeant` holds: `root` or one below it, in the order in which they were added.
NSView* _Nullable first(NSView* root, Class kind, BOOL (^isMeant)(__kindof NSView* view)) {
    if ([root isKindOfClass:kind] && isMeant(root)) return root;
    for (NSView* view in root.subviews) {
        if (NSView* found = first(view, kind, isMeant)) return found;
    }
    return nil;
}

/// The tag of the button that has the keyboard.
std::optional<NSInteger> focusedTag(NSWindow* window) {
    NSResponder* responder = window.firstResponder;
    if (![responder isKindOfClass:NSButton.class]) return std::nullopt;
    return static_cast<NSButton*>(responder).tag;
}

void giveKeyboard(NSWindow* window, NSInteger tag) {
    const auto isSame = ^BOOL(NSButton* button) {
      return button.tag == tag;
    };
    if (NSView* button = first(window.contentView, NSButton.class, isSame)) [window makeFirstResponder:button];
}

}  // namespace

void setContent(NSWindow* window, NSView* view) {
    const auto tag = focusedTag(window);
    keepUntilIdle(window.contentView);
    // The window lays out only its content view, so `view` is laid out within another view.
    NSView* content = [[NSView alloc] initWithFrame:NSZeroRect];
    fill(content, view);
    window.contentView = content;
    if (tag) giveKeyboard(window, *tag);
}

Size fitContent(NSWindow* window, const View& view, OvinClickTarget* target) {
    NSView* native = makeNativeView(view, target);
    const Size size = fittingSize(native);
    setContent(window, native);
    [window setContentSize:NSMakeSize(size.width, size.height)];
    return size;
}

void replaceContent(NSWindow* window, const View& view, OvinClickTarget* target) {
    const NSPoint corner = NSMakePoint(NSMinX(window.frame), NSMaxY(window.frame));
    (void)fitContent(window, view, target);
    [window setFrameTopLeftPoint:corner];
}

void scrollToEnd(NSWindow* window) {
    const auto isPage = ^BOOL(OvinScrollNode* scroll) {
      return scroll.isUpright;
    };
    auto* page = static_cast<OvinScrollNode*>(first(window.contentView, OvinScrollNode.class, isPage));
    [window layoutIfNeeded];
    [page scrollToEnd];
}

void dismiss(NSWindow* window) {
    window.delegate = nil;
    [window close];
    keepUntilIdle(window);
}

}  // namespace ovin
