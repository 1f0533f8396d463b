#include "platform/macos/drawing/NativeDrawing.h"

#include "platform/macos/drawing/NativeColors.h"
#include "platform/macos/system/CallBack.h"
#include "platform/macos/system/Strings.h"

namespace ovin {
namespace {

/// The appearance of the place that is being drawn into.
Appearance currentAppearance() {
    NSAppearanceName match = [NSAppearance.currentDrawingAppearance
        bestMatchFromAppearancesWithNames:@[ NSAppearanceNameAqua, NSAppearanceNameDarkAqua ]];
    return [match isEqualToString:NSAppearanceNameDarkAqua] ? Appearance::dark : Appearance::light;
}

NSBezierPath* pathOf(const DrawnShape& shape) {
    const Rect& rect = shape.rect;
    NSBezierPath* path =
        [NSBezierPath bezierPathWithRoundedRect:NSMakeRect(rect.origin.x, rect.origin.y, rect.size.width, rect.size.height)
                                        xRadius:shape.cornerRadius
                                        yRadius:shape.cornerRadius];
    // Each step is prepended to those before it, so the shape turns first.
    NSAffineTransform* transform = [NSAffineTransform transform];
    [transform translateXBy:shape.translation.x yBy:shape.translation.y];
    [transform rotateByDegrees:shape.rotationDegrees];
    [path transformUsingAffineTransform:transform];
    return path;
}

void drawOutline(NSBezierPath* path, const InnerOutline& outline) {
    [NSGraphicsContext saveGraphicsState];
    [path addClip];
    path.lineWidth = outline.width;
    [nativeColor(outline.color) setStroke];
    [path stroke];
    [NSGraphicsContext restoreGraphicsState];
}

void draw(const DrawnShape& shape) {
    NSBezierPath* path = pathOf(shape);
    [nativeColor(shape.fill) setFill];
    [path fill];
    if (shape.outline) drawOutline(path, *shape.outline);
}

}  // namespace

NSImage* nativeImage(const DrawnImage& image) {
    const auto shapes = image.shapes;
    NSImage* result = [NSImage imageWithSize:NSMakeSize(image.size.width, image.size.height)
                                     flipped:NO
                              drawingHandler:^BOOL(NSRect) {
                                callBack([&] {
                                    for (const DrawnShape& shape : shapes(currentAppearance())) draw(shape);
                                });
                                return YES;
                              }];
    [result setTemplate:NO];
    // A cached drawing would also be shown in another appearance.
    result.cacheMode = NSImageCacheNever;
    result.accessibilityDescription = toNSString(image.accessibilityDescription);
    return result;
}

NSImage* nativeSymbol(std::string_view name, const std::string& accessibilityDescription) {
    return [NSImage imageWithSystemSymbolName:toNSString(name)
                     accessibilityDescription:toNSString(accessibilityDescription)];
}

}  // namespace ovin
