// Draws the application's icon: draw_icon linux|macos FOLDER SIDE... writes FOLDER/SIDE.png for each side, in pixels.

#include <QColor>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QString>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <optional>
#include <string_view>
#include <system_error>
#include <vector>

namespace {

/// The drawing is made for a tile of this size; y grows downwards.
constexpr double canvas = 512;

struct Look {
    int side;
    /// Between the tile and the edge of the picture.
    double margin;
    double barHeight;
    double barInset;
    double squareSide;
    /// Of the square's lowest corner above the bar.
    double squareRest;
    /// Half of it lies outside, and is cut off.
    double edgeWidth;
    bool hasFineParts;
};

/// Small pictures have few pixels to spend: less air around everything, and nothing that would only blur.
Look linuxLook(int side) {
    if (side <= 24) return {side, 0, 64, 96, 212, 0, 40, false};
    if (side <= 48) return {side, 16, 48, 96, 198, 2, 20, false};
    return {side, 28, 40, 110, 184, 4, 6, true};
}

/// On the grid of all icons of macOS, where a tile fills 824 of 1024 parts, in small pictures somewhat more.
Look macLook(int side) {
    if (side <= 16) return {side, 32, 64, 112, 188, 0, 40, false};
    if (side <= 32) return {side, 32, 48, 112, 186, 2, 20, false};
    return {side, 50, 38, 124, 166, 4, 6, true};
}

QPainterPath rounded(const QRectF& rect, double radius) {
    QPainterPath path;
    path.addRoundedRect(rect, radius, radius);
    return path;
}

/// A soft shadow of rings, each of which adds a little: more of them overlap nearer to the shape.
void drawShadow(QPainter& painter, const QPainterPath& shape, double distance, double spread, double opacity) {
    constexpr int rings = 24;
    for (int ring = 1; ring <= rings; ++ring) {
        const double reach = spread * ring / rings;
        const double nearness = 1 - static_cast<double>(ring - 1) / rings;
        QPainterPathStroker stroker;
        stroker.setWidth(2 * reach);
        stroker.setJoinStyle(Qt::RoundJoin);
        QColor color(8, 10, 18);
        color.setAlphaF(static_cast<float>(2 * opacity * nearness / rings));
        painter.fillPath(shape.united(stroker.createStroke(shape)).translated(0, distance), color);
    }
}

void drawTile(QPainter& painter, const Look& look) {
    const QRectF tile(look.margin, look.margin, canvas - 2 * look.margin, canvas - 2 * look.margin);
    const double radius = tile.width() * 0.225;
    const QPainterPath path = rounded(tile, radius);
    if (look.hasFineParts) drawShadow(painter, path, 6, 20, 0.3);
    QLinearGradient night(tile.topLeft(), tile.bottomLeft());
    night.setColorAt(0, QColor(104, 119, 160));
    night.setColorAt(0.5, QColor(70, 82, 118));
    night.setColorAt(1, QColor(44, 53, 82));
    painter.fillPath(path, night);
    // A warm light from the square, so that the tile is no flat sheet.
    QRadialGradient glow(tile.center() + QPointF(8, -28), tile.width() * 0.46);
    glow.setColorAt(0, QColor(255, 176, 72, 70));
    glow.setColorAt(1, QColor(255, 176, 72, 0));
    painter.fillPath(path, glow);
    painter.save();
    painter.setClipPath(path);
    QLinearGradient edge(tile.topLeft(), tile.bottomLeft());
    edge.setColorAt(0, QColor(255, 255, 255, 90));
    edge.setColorAt(0.25, QColor(255, 255, 255, 36));
    edge.setColorAt(1, QColor(255, 255, 255, 30));
    painter.strokePath(path, QPen(QBrush(edge), look.edgeWidth));
    painter.restore();
}

/// At the edge of a pixel, so that the few pixels of small bars are sharp.
QRectF barOf(const Look& look) {
    const double pixel = canvas / look.side;
    const double top = std::round((352 - look.barHeight / 2) / pixel) * pixel;
    return {look.barInset, top, canvas - 2 * look.barInset, look.barHeight};
}

void drawBar(QPainter& painter, const Look& look) {
    const QRectF bar = barOf(look);
    const QPainterPath path = rounded(bar, look.barHeight / 2);
    if (look.hasFineParts) drawShadow(painter, path, 6, 18, 0.45);
    QLinearGradient white(bar.topLeft(), bar.bottomLeft());
    white.setColorAt(0, QColor(255, 255, 255));
    white.setColorAt(1, QColor(222, 226, 236));
    painter.fillPath(path, white);
}

/// Tilted as in the menu bar, with its lowest corner on the bar.
void drawSquare(QPainter& painter, const Look& look) {
    constexpr double tilt = -13;
    constexpr double pi = 3.14159265358979323846;
    const double side = look.squareSide;
    const double radius = side * 0.226;
    const double angle = -tilt * pi / 180;
    // A rounded corner reaches less far than a sharp one.
    const double reach = (side / 2 - radius) * (std::cos(angle) + std::sin(angle)) + radius;
    QTransform place;
    place.translate(canvas / 2 + 10, barOf(look).top() - look.squareRest - reach);
    place.rotate(tilt);
    const QPainterPath path = place.map(rounded({-side / 2, -side / 2, side, side}, radius));
    if (look.hasFineParts) drawShadow(painter, path, 8, 26, 0.5);
    const QRectF around = path.boundingRect();
    QLinearGradient orange(around.topLeft(), around.bottomRight());
    orange.setColorAt(0, QColor(255, 196, 92));
    orange.setColorAt(0.5, QColor(245, 160, 52));
    orange.setColorAt(1, QColor(226, 124, 26));
    painter.fillPath(path, orange);
    if (!look.hasFineParts) return;
    painter.save();
    painter.setClipPath(path);
    QLinearGradient edge(around.topLeft(), around.bottomLeft());
    edge.setColorAt(0, QColor(255, 244, 214, 210));
    edge.setColorAt(0.4, QColor(255, 244, 214, 40));
    edge.setColorAt(1, QColor(150, 70, 0, 70));
    painter.strokePath(path, QPen(QBrush(edge), 7));
    painter.restore();
}

QImage drawn(const Look& look) {
    QImage image(look.side, look.side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(look.side / canvas, look.side / canvas);
    drawTile(painter, look);
    drawBar(painter, look);
    drawSquare(painter, look);
    return image;
}

std::optional<int> parsedSide(std::string_view text) {
    constexpr int largest = 4096;
    int side = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), side);
    if (error != std::errc() || end != text.data() + text.size() || side < 1 || side > largest) return std::nullopt;
    return side;
}

int explainUse() {
    std::fputs("usage: draw_icon linux|macos FOLDER SIDE...\n", stderr);
    return 2;
}

}  // namespace

int main(int argumentCount, char** argumentValues) {
    const std::vector<std::string_view> arguments(argumentValues + 1, argumentValues + argumentCount);
    if (arguments.size() < 3 || (arguments[0] != "linux" && arguments[0] != "macos")) return explainUse();
    for (std::size_t i = 2; i < arguments.size(); ++i) {
        const auto side = parsedSide(arguments[i]);
        if (!side) return explainUse();
        const QString path = QString("%1/%2.png").arg(QString::fromLocal8Bit(argumentValues[2])).arg(*side);
        if (drawn(arguments[0] == "macos" ? macLook(*side) : linuxLook(*side)).save(path, "PNG")) continue;
        std::fprintf(stderr, "draw_icon: %s cannot be written\n", qPrintable(path));
        return 1;
    }
    return 0;
}
