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
}  // namespace ovin
