#include "platform/macos/views/NativeText.h"

#include <utility>

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

/// A run as it is shown at a place; an empty one is nowhere.
TextRun readBackRun(NSAttributedString* shown, NSUInteger place, const TextRun& asked, const TextDefaults& defaults) {
    TextRun run = asked;
    NSFont* font = [shown attribute:NSFontAttributeName atIndex:place effectiveRange:nullptr];
    const bool hasOwnFont = run.font.has_value() || ![font isEqual:defaults.font];
    if (hasOwnFont) run.font = readBackFont(font, run.font.value_or(Font{}));
    NSNumber* underline = [shown attribute:NSUnderlineStyleAttributeName atIndex:place effectiveRange:nullptr];
    run.isUnderlined = underline.integerValue != NSUnderlineStyleNone;
    return run;
}

/// Other words than those that were asked for are all of one kind.
AttributedText otherWords(NSString* shown, const AttributedText& asked) {
    TextRun run = asked.empty() ? TextRun{} : asked.front();
    run.text = toString(shown);
    return {std::move(run)};
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

AttributedText readBackText(NSAttributedString* shown, const AttributedText& asked, const TextDefaults& defaults) {
    if (![shown.string isEqualToString:plainText(asked)]) return otherWords(shown.string, asked);
    AttributedText text;
    NSUInteger place = 0;
    for (const TextRun& run : asked) {
        const NSUInteger length = toNSString(run.text).length;
        text.push_back(length == 0 ? run : readBackRun(shown, place, run, defaults));
        place += length;
    }
    return text;
}

AttributedText readBackText(NSString* shown, const AttributedText& asked) {
    return [shown isEqualToString:plainText(asked)] ? asked : otherWords(shown, asked);
}

std::string readBackString(NSString* shown, const std::string& asked) {
    NSString* string = shown != nil ? shown : @"";
    return [string isEqualToString:toNSString(asked)] ? asked : toString(string);
}

}  // namespace ovin
