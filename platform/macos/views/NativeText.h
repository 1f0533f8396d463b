// For Objective-C++ files only.
#pragma once

#import <AppKit/AppKit.h>

#include <string>

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

/// The text that a control shows: what was asked for, in its words and with its fonts and underlines as far as they are
/// still the same. Colours are not compared: those that follow the appearance are equal to none but themselves.
AttributedText readBackText(NSAttributedString* shown, const AttributedText& asked, const TextDefaults& defaults);

/// The same for text of one kind that a control holds plain.
AttributedText readBackText(NSString* shown, const AttributedText& asked);

/// A string that a control holds; its very bytes, ill-formed ones included, as long as it is the one that was asked for.
std::string readBackString(NSString* _Nullable shown, const std::string& asked);

}  // namespace ovin

NS_ASSUME_NONNULL_END
