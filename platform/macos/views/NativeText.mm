#include "platform/macos/views/NativeText.h"

#include "platform/macos/drawing/NativeColors.h"
#include "platform/macos/drawing/NativeFonts.h"
#include "platform/macos/system/Strings.h"

namespace ovin {
namespace {

NSParagraphStyle* paragraphStyle(const TextDefaults& defaults) {
    NSMutableParagraphStyle* style = [[NSMutableParagraphStyle alloc] init];
    style.lineSpacing = defaults.lineSpacing;
    style.lineBreakMode = defaults.lineBreakMode;
    style.alignment = defaults.alignment;
    return style;
}

NSAttributedString* nativeRun(const TextRun& run, const TextDefaults& defaults) {
    return [[NSAttributedString alloc]
        initWithString:toNSString(run.text)
            attributes:@{
                NSFontAttributeName : run.font ? nativeFont(*run.font) : defaults.font,
                NSForegroundColorAttributeName : nativeColor(run.color.value_or(Color{SystemColor::label})),
                NSUnderlineStyleAttributeName : @(run.isUnderlined ? NSUnderlineStyleSingle : NSUnderlineStyleNone),
                NSParagraphStyleAttributeName : paragraphStyle(defaults)
            }];
}

}  // namespace

NSAttributedString* nativeText(const AttributedText& text, const TextDefaults& defaults) {
    NSMutableAttributedString* result = [[NSMutableAttributedString alloc] init];
    for (const TextRun& run : text) [result appendAttributedString:nativeRun(run, defaults)];
    return result;
}

NSString* plainText(const AttributedText& text) {
    NSMutableString* plain = [NSMutableString string];
    for (const TextRun& run : text) [plain appendString:toNSString(run.text)];
    return plain;
}

}  // namespace ovin
