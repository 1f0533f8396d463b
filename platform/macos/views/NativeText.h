// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Views.h"

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

/// What text has where it says nothing itself.
struct TextDefaults {
    NSFont* font;
    double lineSpacing = 0;
    NSLineBreakMode lineBreakMode = NSLineBreakByClipping;
    NSTextAlignment alignment = NSTextAlignmentNatural;
};

/// Text with a font and a colour everywhere: where an attributed text has none, a control does not fill in its own. Nothing
/// in it is mark-up.
NSAttributedString* nativeText(const AttributedText& text, const TextDefaults& defaults);

/// The text without its kinds.
NSString* plainText(const AttributedText& text);

}  // namespace ovin

NS_ASSUME_NONNULL_END
