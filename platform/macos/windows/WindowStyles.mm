#include "platform/macos/windows/WindowStyles.h"

#include "platform/macos/system/Strings.h"

namespace ovin {

void keepToItsOwner(NSWindow* window) {
    window.releasedWhenClosed = NO;
    window.restorable = NO;
}

void coverTitleBar(NSWindow* window, const std::string& title) {
    window.title = toNSString(title);
    window.titleVisibility = NSWindowTitleHidden;
    window.titlebarAppearsTransparent = YES;
    window.autorecalculatesKeyViewLoop = YES;
}

void showOverPrograms(NSPanel* panel, NSWindowLevel level) {
    panel.level = level;
    panel.collectionBehavior = NSWindowCollectionBehaviorCanJoinAllSpaces | NSWindowCollectionBehaviorFullScreenAuxiliary;
    panel.hidesOnDeactivate = NO;
    // Must be set before the panel is first shown.
    panel.allowsToolTipsWhenApplicationIsInactive = YES;
}

}  // namespace ovin
