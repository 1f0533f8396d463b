// Draws the pictures that explain the menu bar's expander, with two pixels for each point: draw_explainers FOLDER writes
// FOLDER/explainer-collapsed.png and FOLDER/explainer-expanded.png.

#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QString>
#include <array>
#include <cstddef>
#include <cstdio>
#include <string_view>
#include <utility>

#include "resources/pictograms/Pictogram.h"

namespace {

/// All measures are points.
constexpr double pixelsPerPoint = 2;
constexpr QSize pictureSize{416, 60};
constexpr double cornerRadius = 8;
constexpr double barHeight = 26;
constexpr double textSize = 12;
constexpr double edgeMargin = 12;
constexpr double menuGap = 13;
constexpr int iconSide = 15;
constexpr double iconPitch = 22;
constexpr double clockGap = 7;
constexpr double expanderWidth = 22;

constexpr const char* application = "Atlas";
constexpr std::array menus{"File", "Edit", "View"};
constexpr const char* clockText = "Tue 10:24";

/// From the clock leftwards; the rest is behind the expander.
constexpr std::array<std::string_view, 12> icons{"battery", "network", "volume", "focus", "calendar", "cloud",
                                                 "bell",    "lock",    "camera", "chat",  "timer",    "clipboard"};
constexpr std::size_t fittingIcons = 6;

const QColor ink(24, 26, 34);

enum class State { collapsed, expanded };

QFont font(QFont::Weight weight) {
    QFont font;
    font.setFamilies({"Inter", "DejaVu Sans"});
    font.setPixelSize(static_cast<int>(textSize));
    font.setWeight(weight);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

/// A low sun over hills, so that the bar lies over something.
void drawWallpaper(QPainter& painter) {
    const QRectF all = QRect(QPoint(), pictureSize);
    QLinearGradient sky(all.topLeft(), all.bottomLeft());
    sky.setColorAt(0, QColor(92, 112, 166));
    sky.setColorAt(0.6, QColor(186, 150, 170));
    sky.setColorAt(1, QColor(246, 190, 140));
    painter.fillRect(all, sky);
    QRadialGradient sun(QPointF(296, 62), 120);
    sun.setColorAt(0, QColor(255, 214, 150, 220));
    sun.setColorAt(1, QColor(255, 214, 150, 0));
    painter.fillRect(all, sun);

    QPainterPath far(QPointF(0, 48));
    far.cubicTo(60, 36, 100, 40, 160, 50);
    far.cubicTo(220, 58, 250, 36, 330, 44);
    far.cubicTo(370, 48, 390, 42, 416, 38);
    far.lineTo(416, 60);
    far.lineTo(0, 60);
    painter.fillPath(far, QColor(112, 104, 146, 190));
    QPainterPath near(QPointF(0, 57));
    near.cubicTo(70, 50, 130, 46, 200, 54);
    near.cubicTo(270, 62, 330, 50, 416, 53);
    near.lineTo(416, 60);
    near.lineTo(0, 60);
    painter.fillPath(near, QColor(58, 62, 98, 220));
}

void drawBar(QPainter& painter) {
    painter.fillRect(QRectF(0, 0, pictureSize.width(), barHeight), QColor(246, 247, 252, 218));
    painter.fillRect(QRectF(0, barHeight, pictureSize.width(), 0.5), QColor(20, 22, 40, 60));
}

/// Returns where it ends.
double drawText(QPainter& painter, double x, const QString& text, QFont::Weight weight) {
    painter.setFont(font(weight));
    painter.setPen(ink);
    const QFontMetricsF metrics(painter.font());
    const double width = metrics.horizontalAdvance(text);
    painter.drawText(QRectF(x, 0, width + 1, barHeight), Qt::AlignVCenter | Qt::AlignLeft, text);
    return x + width;
}

void drawMenus(QPainter& painter, State state) {
    double x = drawText(painter, edgeMargin, application, QFont::Bold);
    if (state == State::expanded) return;  // the items lie over the rest
    for (const char* menu : menus) x = drawText(painter, x + menuGap, menu, QFont::Normal);
}

double drawClock(QPainter& painter) {
    const double width = QFontMetricsF(font(QFont::Medium)).horizontalAdvance(clockText);
    const double x = pictureSize.width() - edgeMargin - width;
    drawText(painter, x, clockText, QFont::Medium);
    return x;
}

void drawIcon(QPainter& painter, std::string_view name, double x) {
    const auto pictogram = ovin::drawPictogram(name, static_cast<int>(iconSide * pixelsPerPoint));
    if (!pictogram) return;
    QImage image(pictogram->side, pictogram->side, QImage::Format_ARGB32);
    std::size_t at = 0;
    for (int row = 0; row < pictogram->side; ++row) {
        for (int column = 0; column < pictogram->side; ++column, ++at) {
            QColor color = ink;
            color.setAlpha(pictogram->coverage[at]);
            image.setPixelColor(column, row, color);
        }
    }
    image.setDevicePixelRatio(pixelsPerPoint);
    // On whole pixels, or it would be blurred.
    const double left = qRound((x + (iconPitch - iconSide) / 2) * pixelsPerPoint) / pixelsPerPoint;
    painter.drawImage(QPointF(left, (barHeight - iconSide) / 2), image);
}

/// Two chevrons that point to where the rest is, or back to where it goes.
void drawExpander(QPainter& painter, double x, State state) {
    const QRectF place(x + 1, 3.5, expanderWidth - 2, barHeight - 7);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(240, 148, 40));
    painter.drawRoundedRect(place, 5, 5);
    constexpr double height = 3.75;
    constexpr double reach = 3.5;
    const double forward = state == State::expanded ? 1 : -1;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(ink, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    for (const double offset : {-2.5, 2.5}) {
        const QPointF tip = place.center() + QPointF(offset + forward * reach / 2, 0);
        QPainterPath chevron(tip + QPointF(-forward * reach, -height));
        chevron.lineTo(tip);
        chevron.lineTo(tip + QPointF(-forward * reach, height));
        painter.drawPath(chevron);
    }
}

void drawItems(QPainter& painter, double end, State state) {
    const std::size_t shown = state == State::expanded ? icons.size() : fittingIcons;
    double x = end - clockGap;
    for (std::size_t i = 0; i < shown; ++i) drawIcon(painter, icons[i], x -= iconPitch);
    drawExpander(painter, x - expanderWidth - 1, state);
}

QImage drawn(State state) {
    QImage image(pictureSize * pixelsPerPoint, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    image.setDevicePixelRatio(pixelsPerPoint);
    QImage content = image;
    QPainter painter(&content);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    drawWallpaper(painter);
    drawBar(painter);
    drawMenus(painter, state);
    drawItems(painter, drawClock(painter), state);
    painter.end();

    // A brush and not a clip, whose edge would have steps.
    content.setDevicePixelRatio(1);
    QBrush brush(content);
    brush.setTransform(QTransform::fromScale(1 / pixelsPerPoint, 1 / pixelsPerPoint));
    QPainter rounding(&image);
    rounding.setRenderHint(QPainter::Antialiasing);
    rounding.setPen(Qt::NoPen);
    rounding.setBrush(brush);
    rounding.drawRoundedRect(QRect(QPoint(), pictureSize), cornerRadius, cornerRadius);
    return image;
}

}  // namespace

int main(int argumentCount, char** arguments) {
    // Builds have no screen, and need none.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication gui(argumentCount, arguments);
    if (argumentCount != 2) {
        std::fputs("usage: draw_explainers FOLDER\n", stderr);
        return 2;
    }
    const QString folder = QString::fromLocal8Bit(arguments[1]);
    for (const auto& [name, state] : {std::pair{"collapsed", State::collapsed}, {"expanded", State::expanded}}) {
        const QString path = QString("%1/explainer-%2.png").arg(folder, name);
        QImage image = drawn(state);
        image.setDevicePixelRatio(1);
        // macOS takes the size in points from this statement in the file: a point is 1/72 inch.
        constexpr int dotsPerMeter = static_cast<int>(pixelsPerPoint * 72 / 0.0254 + 0.5);
        image.setDotsPerMeterX(dotsPerMeter);
        image.setDotsPerMeterY(dotsPerMeter);
        if (image.save(path, "PNG")) continue;
        std::fprintf(stderr, "draw_explainers: %s cannot be written\n", qPrintable(path));
        return 1;
    }
    return 0;
}
