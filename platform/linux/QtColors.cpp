#include "platform/linux/QtColors.h"

namespace ovin {
namespace {

constexpr double secondaryOpacity = 0.6;
constexpr double quaternaryOpacity = 0.2;
constexpr double separatorOpacity = 0.15;

QColor faded(QColor color, double opacity) {
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

QColor systemColor(SystemColor color, const QPalette& palette) {
    const QColor text = palette.color(QPalette::WindowText);
    switch (color) {
        case SystemColor::label:
            return text;
        case SystemColor::secondaryLabel:
            return faded(text, secondaryOpacity);
        case SystemColor::quaternaryLabel:
            return faded(text, quaternaryOpacity);
        case SystemColor::separator:
            return faded(text, separatorOpacity);
        case SystemColor::controlAccent:
            return palette.color(QPalette::Highlight);
        case SystemColor::systemOrange:
            return isDark(palette) ? QColor(255, 159, 10) : QColor(201, 104, 0);
        case SystemColor::clear:
            return Qt::transparent;
    }
    return text;
}

}  // namespace

QColor qtColor(const Color& color, const QPalette& palette) {
    QColor result;
    if (const auto* fixed = std::get_if<SRGB>(&color.base)) {
        result.setRgbF(static_cast<float>(fixed->red), static_cast<float>(fixed->green), static_cast<float>(fixed->blue));
    } else {
        result = systemColor(std::get<SystemColor>(color.base), palette);
    }
    return color.alpha == 1 ? result : faded(result, color.alpha);
}

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness();
}

}  // namespace ovin
