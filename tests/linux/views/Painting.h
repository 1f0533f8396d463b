#pragma once

#include <QColor>
#include <QFont>
#include <QImage>
#include <QPainterPath>
#include <QPen>
#include <QTransform>
#include <QWidget>
#include <vector>

namespace ovin {

/// What a widget paints by itself, without what stands in it, in its own coordinates and in the order of painting.
struct Painting {
    struct Text {
        QString text;
        QFont font;
        QColor color;
        bool isUnderlined;
        /// Where its base line begins, and what it takes above and below that.
        QPointF place;
        double ascent;
        double descent;
        double width;
    };
    struct Shape {
        QPainterPath path;
        QPen pen;
        QBrush brush;
        QTransform transform;
    };
    struct Picture {
        QRectF place;
        QImage image;
    };

    std::vector<Text> texts;
    std::vector<Shape> shapes;
    std::vector<Picture> pictures;
};

/// Has a widget painted. The widget need not be shown, but must have been laid out.
[[nodiscard]] Painting paintingOf(QWidget& widget);

}  // namespace ovin
