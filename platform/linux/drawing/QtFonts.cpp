#include "platform/linux/drawing/QtFonts.h"

#include <QGuiApplication>

namespace ovin {
namespace {

QFont::Weight weight(Font::Weight weight) {
    switch (weight) {
        case Font::Weight::regular:
            return QFont::Normal;
        case Font::Weight::medium:
            return QFont::Medium;
        case Font::Weight::semibold:
            return QFont::DemiBold;
        case Font::Weight::bold:
            return QFont::Bold;
    }
    return QFont::Normal;
}

}  // namespace

QFont qtFont(const Font& font) {
    QFont result;
    // The desktop's font.
    result.setFamilies(QGuiApplication::font().families());
    result.setPixelSize(qRound(font.size));
    result.setWeight(weight(font.weight));
    return result;
}

}  // namespace ovin
