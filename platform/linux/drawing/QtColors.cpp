#include "platform/linux/drawing/QtColors.h"

#include <algorithm>
#include <cmath>

namespace ovin {
namespace {

constexpr double secondaryOpacity = 0.6;
constexpr double quaternaryOpacity = 0.2;
constexpr double separatorOpacity = 0.15;

/// The light that a screen reflects, as the contrast of two colours counts it.
constexpr double surround = 0.05;
constexpr double enoughContrast = 3;
constexpr double enoughForSmallText = 4.5;
/// In percent, for QColor; so small that no single step is visible.
constexpr int darkerStep = 102;
constexpr int lighterStep = 102;
constexpr int mostSteps = 80;
constexpr double focusOpacity = 0.18;

/// The relative luminance of a colour, from 0 to 1.
double luminance(const QColor& color) {
    const auto linear = [](double part) { return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + surround) / (darker + surround);
}

/// The user's accent colour for links, with the contrast to the window's colour that small text needs.
QColor accentOn(const QPalette& palette) {
    const QColor window = palette.color(QPalette::Window);
    QColor accent = palette.color(QPalette::Highlight);
    for (int step = 0; step < mostSteps && contrast(accent, window) < enoughForSmallText; ++step)
        accent = isDark(palette) ? accent.lighter(lighterStep) : accent.darker(darkerStep);
    return accent;
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
            return accentOn(palette);
        case SystemColor::systemOrange:
            return isDark(palette) ? QColor(255, 159, 10) : QColor(166, 83, 0);
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

QColor faded(QColor color, double opacity) {
    color.setAlphaF(static_cast<float>(opacity));
    return color;
}

QColor over(const QColor& above, const QColor& below) {
    const auto mixed = [share = above.alphaF()](float on, float under) { return under + share * (on - under); };
    return QColor::fromRgbF(mixed(above.redF(), below.redF()), mixed(above.greenF(), below.greenF()),
                            mixed(above.blueF(), below.blueF()));
}

QColor readableOn(const QColor& background) {
    // White where it has the contrast that large letters need, because on saturated colours white reads better than black
    // even where black has more contrast.
    return contrast(Qt::white, background) >= enoughContrast ? Qt::white : Qt::black;
}

QColor behindText(const QColor& background) {
    QColor result = background;
    for (int step = 0; step < mostSteps && contrast(readableOn(background), result) < enoughForSmallText; ++step)
        result = result.darker(darkerStep);
    return result;
}

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness();
}

void drawFocus(QPainter& painter, const QRect& place, double cornerRadius, const QPalette& palette) {
    const QColor accent = palette.color(QPalette::Highlight);
    painter.setBrush(faded(accent, focusOpacity));
    painter.setPen(QPen(accent, 1));
    painter.drawRoundedRect(QRectF(place).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius, cornerRadius);
}

}  // namespace ovin
