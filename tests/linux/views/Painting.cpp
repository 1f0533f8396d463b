#include "tests/linux/views/Painting.h"

#include <QPaintDevice>
#include <QPaintEngine>

namespace ovin {
namespace {

/// Takes what it is told to paint as it comes.
class Recorder final : public QPaintEngine {
public:
    explicit Recorder(Painting& painting) : QPaintEngine(AllFeatures), painting_(painting) {}

    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    [[nodiscard]] Type type() const override { return User; }

    void updateState(const QPaintEngineState& changed) override {
        if (changed.state() & DirtyPen) pen_ = changed.pen();
        if (changed.state() & DirtyBrush) brush_ = changed.brush();
        if (changed.state() & DirtyTransform) transform_ = changed.transform();
    }

    void drawTextItem(const QPointF& place, const QTextItem& item) override {
        painting_.texts.push_back({item.text(), item.font(), pen_.color(), item.renderFlags().testFlag(QTextItem::Underline),
                                   place, item.ascent(), item.descent(), item.width()});
    }
    void drawPath(const QPainterPath& path) override { painting_.shapes.push_back({path, pen_, brush_, transform_}); }
    void drawRects(const QRectF* rects, int count) override {
        for (int i = 0; i < count; ++i) {
            QPainterPath path;
            path.addRect(rects[i]);
            drawPath(path);
        }
    }
    void drawPixmap(const QRectF& place, const QPixmap& picture, const QRectF&) override {
        painting_.pictures.push_back({place, picture.toImage()});
    }
    void drawImage(const QRectF& place, const QImage& picture, const QRectF&, Qt::ImageConversionFlags) override {
        painting_.pictures.push_back({place, picture});
    }
    /// The lines below texts, of which their items tell, too.
    void drawLines(const QLineF*, int) override {}
    void drawPolygon(const QPointF*, int, PolygonDrawMode) override {}

private:
    Painting& painting_;
    QPen pen_;
    QBrush brush_;
    QTransform transform_;
};

class Paper final : public QPaintDevice {
public:
    Paper(Painting& painting, QSize size) : recorder_(painting), size_(size) {}

    [[nodiscard]] QPaintEngine* paintEngine() const override { return &recorder_; }

protected:
    [[nodiscard]] int metric(PaintDeviceMetric metric) const override {
        switch (metric) {
            case PdmWidth:
                return size_.width();
            case PdmHeight:
                return size_.height();
            case PdmDepth:
                return 32;
            case PdmDpiX:
            case PdmDpiY:
            case PdmPhysicalDpiX:
            case PdmPhysicalDpiY:
                return 96;
            case PdmDevicePixelRatio:
                return 1;
            case PdmDevicePixelRatioScaled:
                return static_cast<int>(devicePixelRatioFScale());
            default:
                return 0;
        }
    }

private:
    mutable Recorder recorder_;
    const QSize size_;
};

}  // namespace

Painting paintingOf(QWidget& widget) {
    Painting painting;
    Paper paper(painting, widget.size());
    widget.render(&paper, {}, {}, QWidget::RenderFlags());
    return painting;
}

}  // namespace ovin
