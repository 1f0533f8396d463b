#include "platform/macos/drawing/NativeColors.h"

#include <variant>

namespace ovin {
namespace {

NSColor* systemColor(SystemColor color) {
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

/// `colorWithAlphaComponent:` may fix the present appearance; this colour reads the appearance at each drawing.
NSColor* systemColor(SystemColor color, CGFloat alpha) {
    return [NSColor colorWithName:nil
                  dynamicProvider:^NSColor*(NSAppearance* appearance) {
                    __block NSColor* result = systemColor(color);
                    [appearance performAsCurrentDrawingAppearance:^{
                      result = [result colorWithAlphaComponent:alpha];
                    }];
                    return result;
                  }];
}

}  // namespace

NSColor* nativeColor(const Color& color) {
    if (const auto* fixed = std::get_if<SRGB>(&color.base)) {
        return [NSColor colorWithSRGBRed:fixed->red green:fixed->green blue:fixed->blue alpha:color.alpha];
    }
    const auto base = std::get<SystemColor>(color.base);
    return color.alpha == 1 ? systemColor(base) : systemColor(base, color.alpha);
}

}  // namespace ovin
