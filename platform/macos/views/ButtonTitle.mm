#include "platform/macos/views/ButtonTitle.h"

#include "platform/macos/drawing/NativeFonts.h"
#include "platform/macos/views/NativeText.h"

namespace ovin {
namespace {

bool isPlain(const AttributedText& title) {
    if (title.empty()) return true;
    return title.size() == 1 && !title.front().color && !title.front().isUnderlined;
}

/// As in a plain title.
TextDefaults defaults() {
    return {[NSFont systemFontOfSize:NSFont.systemFontSize], 0, NSLineBreakByClipping, NSTextAlignmentCenter};
}

}  // namespace

void setTitle(NSButton* button, const AttributedText& title) {
    // Set always, because a new button has a default title.
    button.title = plainText(title);
    if (!isPlain(title)) {
        button.attributedTitle = nativeText(title, defaults());
    } else if (!title.empty() && title.front().font) {
        button.font = nativeFont(*title.front().font);
    }
}

}  // namespace ovin
