#include "tests/macos/views/NativeLooks.h"

#include <cmath>
#include <variant>

#include "platform/macos/drawing/NativeImages.h"
#include "platform/macos/system/Strings.h"

namespace ovin {
namespace {

NSFontWeight weight(Font::Weight weight) {
    switch (weight) {
        case Font::Weight::regular:
            return NSFontWeightRegular;
        case Font::Weight::medium:
            return NSFontWeightMedium;
        case Font::Weight::semibold:
            return NSFontWeightSemibold;
        case Font::Weight::bold:
            return NSFontWeightBold;
    }
    return NSFontWeightRegular;
}

NSColor* base(SystemColor color) {
    switch (color) {
        case SystemColor::label:
            return NSColor.labelColor;
        case SystemColor::secondaryLabel:
            return NSColor.secondaryLabelColor;
        case SystemColor::quaternaryLabel:
            return NSColor.quaternaryLabelColor;
        case SystemColor::separator:
            return NSColor.separatorColor;
        case SystemColor::controlAccent:
            return NSColor.controlAccentColor;
        case SystemColor::systemOrange:
            return NSColor.systemOrangeColor;
        case SystemColor::clear:
            return NSColor.clearColor;
    }
    return NSColor.labelColor;
}

/// In the appearance of the moment.
NSColor* expected(const Color& color) {
    if (const auto* fixed = std::get_if<SRGB>(&color.base))
        return [NSColor colorWithSRGBRed:fixed->red green:fixed->green blue:fixed->blue alpha:color.alpha];
    NSColor* system = base(std::get<SystemColor>(color.base));
    return color.alpha == 1 ? system : [system colorWithAlphaComponent:color.alpha];
}

bool looksLike(NSColor* _Nullable shown, NSColor* asked) {
    NSColor* one = [shown colorUsingColorSpace:NSColorSpace.sRGBColorSpace];
    NSColor* other = [asked colorUsingColorSpace:NSColorSpace.sRGBColorSpace];
    if (one == nil || other == nil) return false;
    constexpr double invisible = 0.002;
    return std::abs(one.redComponent - other.redComponent) < invisible &&
           std::abs(one.greenComponent - other.greenComponent) < invisible &&
           std::abs(one.blueComponent - other.blueComponent) < invisible &&
           std::abs(one.alphaComponent - other.alphaComponent) < invisible;
}

}  // namespace

bool isFont(NSFont* shown, const std::optional<Font>& asked) {
    NSFont* font = asked ? [NSFont systemFontOfSize:asked->size weight:weight(asked->weight)]
                         : [NSFont systemFontOfSize:NSFont.systemFontSize];
    return shown != nil && [shown isEqual:font];
}

bool isInEveryAppearance(const std::function<bool()>& holds) {
    __block bool result = true;
    for (NSAppearanceName name in @[ NSAppearanceNameAqua, NSAppearanceNameDarkAqua ]) {
        [[NSAppearance appearanceNamed:name] performAsCurrentDrawingAppearance:^{
          result = holds() && result;
        }];
    }
    return result;
}

bool isColor(NSColor* shown, const Color& asked) {
    return isInEveryAppearance([&] { return looksLike(shown, expected(asked)); });
}

bool isColor(CGColorRef shown, const Color& asked) {
    return shown != nullptr &&
           looksLike([NSColor colorWithCGColor:static_cast<CGColorRef _Nonnull>(shown)], expected(asked));
}

bool isText(NSString* shown, const std::string& asked) {
    return [shown != nil ? shown : @"" isEqualToString:toNSString(asked)];
}

bool isSizedImage(NSImage* shown, const SizedImage& asked) {
    NSImage* image = [nativeImage(asked.image) copy];
    image.size = NSMakeSize(asked.size.width, asked.size.height);
    NSData* picture = image.TIFFRepresentation;
    NSData* seen = shown.TIFFRepresentation;
    return shown.size.width == asked.size.width && shown.size.height == asked.size.height && picture != nil && seen != nil &&
           [seen isEqualToData:picture];
}

std::optional<double> fixedLength(NSView* view, NSLayoutAttribute attribute) {
    for (NSLayoutConstraint* constraint in view.constraints) {
        // What AppKit adds for the size that a view wants is of classes of its own.
        if (![constraint isMemberOfClass:NSLayoutConstraint.class] || !constraint.active) continue;
        if (constraint.firstItem != view || constraint.secondItem != nil) continue;
        if (constraint.firstAttribute != attribute || constraint.relation != NSLayoutRelationEqual) continue;
        if (constraint.priority == NSLayoutPriorityRequired) return constraint.constant;
    }
    return std::nullopt;
}

}  // namespace ovin
