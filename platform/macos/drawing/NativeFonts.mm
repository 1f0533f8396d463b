#include "platform/macos/drawing/NativeFonts.h"

namespace ovin {
namespace {

NSFontWeight nativeWeight(Font::Weight weight) {
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

}  // namespace

NSFont* nativeFont(const Font& font) { return [NSFont systemFontOfSize:font.size weight:nativeWeight(font.weight)]; }

std::optional<Font> readBackFont(NSFont* shown, const std::optional<Font>& asked) {
    // Without a font of its own a control has whatever the system gives it.
    if (!asked || shown == nil || [shown isEqual:nativeFont(*asked)]) return asked;
    return Font{shown.pointSize, asked->weight};
}

}  // namespace ovin
