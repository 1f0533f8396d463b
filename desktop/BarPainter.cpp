#include "desktop/BarPainter.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainterPath>
#include <algorithm>

namespace ovin {
namespace {

constexpr int fontSize = 13;
constexpr int applicationX = 16;
constexpr int clockPadding = 8;
/// The clock's text ends as far from the right edge of the screen as the application's name begins from the left one.
constexpr int clockMargin = 16;

/// `mirrored` as a factor: 1 points left, -1 right.
QPainterPath chevron(QPointF tip, int mirrored) {
    constexpr double width = 4;
    constexpr double height = 4.5;
    QPainterPath path(tip + QPointF(width * mirrored, -height));
    path.lineTo(tip);
    path.lineTo(tip + QPointF(width * mirrored, height));
    return path;
}

}  // namespace

BarPainter::BarPainter(QPainter& painter, const QPalette& palette, QSize bar)
    : painter_(painter), background_(palette.color(QPalette::Window)), foreground_(foreground(palette)), bar_(bar) {
    painter_.setRenderHint(QPainter::Antialiasing);
}

QFont BarPainter::font(QFont::Weight weight) {
    QFont font;
    font.setFamilies(QGuiApplication::font().families());
    font.setPixelSize(fontSize);
    font.setWeight(weight);
    return font;
}

// Digits differ in width, so a clock as wide as its present time would push the items about each minute.
int BarPainter::clockWidth(QString time) {
    std::replace_if(
        time.begin(), time.end(), [](QChar c) { return c.isDigit(); }, QLatin1Char('0'));
    return clockPadding + QFontMetrics(font(QFont::Medium)).horizontalAdvance(time) + clockMargin;
}

QColor BarPainter::foreground(const QPalette& palette) { return palette.color(QPalette::WindowText); }

void BarPainter::paintBackground() {
    painter_.fillRect(QRect(QPoint(), bar_), background_);
    QColor edge = foreground_;
    edge.setAlphaF(0.14F);
    painter_.fillRect(QRectF(0, bar_.height() - 1, bar_.width(), 1), edge);
}

void BarPainter::paintHighlight(const BarSpan& span) {
    QColor color = foreground_;
    color.setAlphaF(0.16F);
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(color);
    painter_.drawRoundedRect(QRectF(span.x + 1, 3, span.width - 2, bar_.height() - 7), 5, 5);
}

void BarPainter::paintIcon(const BarSpan& span, const QPixmap& icon) {
    const QSizeF size = icon.deviceIndependentSize();
    const int x = span.x + static_cast<int>((span.width - size.width()) / 2);
    const int y = static_cast<int>((bar_.height() - 1 - size.height()) / 2);
    painter_.drawPixmap(x, y, icon);
}

void BarPainter::paintApplication(const QString& name, int end) {
    constexpr int gap = 12;
    const int room = end - gap - applicationX;
    if (room < gap) return;
    painter_.setFont(font(QFont::DemiBold));
    painter_.setPen(foreground_);
    const QString shown = painter_.fontMetrics().elidedText(name, Qt::ElideRight, room);
    painter_.drawText(QRect(applicationX, 0, room, bar_.height() - 1), Qt::AlignVCenter | Qt::AlignLeft, shown);
}

void BarPainter::paintExpander(const BarSpan& span, bool isExpanded) {
    constexpr double distance = 5.5;
    const int mirrored = isExpanded ? -1 : 1;
    const QPointF middle(span.x + span.width / 2.0, (bar_.height() - 1) / 2.0);
    painter_.setPen(QPen(foreground_, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter_.setBrush(Qt::NoBrush);
    for (const double offset : {-distance, 0.0})
        painter_.drawPath(chevron(middle + QPointF(offset * mirrored + 0.75 * mirrored, 0), mirrored));
}

void BarPainter::paintClock(const BarSpan& span, const QString& time) {
    painter_.setFont(font(QFont::Medium));
    painter_.setPen(foreground_);
    const QRect room(span.x, 0, span.width - clockMargin, bar_.height() - 1);
    painter_.drawText(room, Qt::AlignVCenter | Qt::AlignRight, time);
}

}  // namespace ovin
