// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/Views.h"

NS_ASSUME_NONNULL_BEGIN

namespace ovin {

/// The style of text where a run does not set its own.
struct TextDefaults {
    NSFont* font;
    double lineSpacing = 0;
    NSLineBreakMode lineBreakMode = NSLineBreakByClipping;
    NSTextAlignment alignment = NSTextAlignmentNatural;
};

/// Text with a font and a colour everywhere, because a control does not fill in its own for an attributed text. Nothing in
/// it is taken for mark-up.
NSAttributedString* nativeText(const AttributedText& text, const TextDefaults& defaults);

/// The text without its styles.
NSString* plainText(const AttributedText& text);

}  // namespace ovin

NS_ASSUME_NONNULL_END
