#include "tests/linux/views/ViewDifference.h"

#include <QLayout>
#include <QShortcut>
#include <QTextDocumentFragment>
#include <algorithm>
#include <cmath>
#include <optional>
#include <set>
#include <variant>

#include "platform/linux/drawing/LedgeIcon.h"
#include "platform/linux/drawing/QtColors.h"
#include "platform/linux/drawing/QtIcons.h"
#include "platform/linux/views/DisclosureWidget.h"
#include "platform/linux/views/ImageWidget.h"
#include "platform/linux/views/ItemButton.h"
#include "platform/linux/views/LabelWidget.h"
#include "platform/linux/views/MenuBackgroundWidget.h"
#include "platform/linux/views/PushButtonWidget.h"
#include "platform/linux/views/SeparatorWidget.h"
#include "platform/linux/views/SidewaysScroller.h"
#include "platform/linux/views/StackWidget.h"
#include "platform/linux/views/TextButtonWidget.h"
#include "platform/linux/views/UprightScroller.h"
#include "tests/linux/views/Painting.h"

namespace ovin {
namespace {

const Font controlFont{13, Font::Weight::regular};

bool isHiddenByItself(const QWidget& widget) {
    return widget.isHidden() && widget.testAttribute(Qt::WA_WState_ExplicitShowHide);
}

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
    return QFont::Thin;
}

bool isFont(const QFont& shown, const Font& asked) {
    return shown.pixelSize() == qRound(asked.size) && shown.weight() == weight(asked.weight);
}

bool isColor(const QColor& shown, const Color& asked, const QPalette& palette) {
    const auto* fixed = std::get_if<SRGB>(&asked.base);
    QColor expected = fixed != nullptr ? QColor::fromRgbF(static_cast<float>(fixed->red), static_cast<float>(fixed->green),
                                                          static_cast<float>(fixed->blue))
                                       : qtColor({asked.base}, palette);
    if (asked.alpha != 1) expected.setAlphaF(static_cast<float>(asked.alpha));
    return shown.rgba() == expected.rgba();
}

bool isPath(const QPainterPath& shown, const QPainterPath& expected) {
    if (shown.elementCount() != expected.elementCount()) return false;
    for (int i = 0; i < shown.elementCount(); ++i) {
        const QPointF distance = QPointF(shown.elementAt(i)) - QPointF(expected.elementAt(i));
        if (shown.elementAt(i).type != expected.elementAt(i).type || distance.manhattanLength() > 0.001) return false;
    }
    return true;
}

QPainterPath rounded(const QRectF& rect, double radius) {
    QPainterPath path;
    path.addRoundedRect(rect, radius, radius);
    return path;
}

bool isPicture(const QImage& shown, const Image& asked) {
    const QImage expected = qtIcon(asked).pixmap(shown.size(), 1).toImage();
    return shown.convertToFormat(QImage::Format_ARGB32) == expected.convertToFormat(QImage::Format_ARGB32);
}

/// What a button shows of an image by now.
QImage pictureOf(const SizedImage& image, const QPalette& palette) {
    const int side = qRound(std::min(image.size.width, image.size.height));
    return ledgeIcon(image.image, side, palette.color(QPalette::WindowText)).value_or(QImage());
}

/// A letter and what it looks like. Blanks do not count, because where a line breaks there may be one or none.
struct Letter {
    QChar letter;
    QFont font;
    QColor color;
    bool isUnderlined;
};

std::vector<Letter> letters(const std::vector<Painting::Text>& texts) {
    std::vector<Letter> result;
    for (const Painting::Text& text : texts) {
        for (const QChar letter : text.text) {
            if (!letter.isSpace()) result.push_back({letter, text.font, text.color, text.isUnderlined});
        }
    }
    return result;
}

QString plain(const AttributedText& text) {
    QString result;
    for (const TextRun& run : text) result += QString::fromStdString(run.text);
    return result;
}

class Comparison {
public:
    void compare(QWidget& widget, const View& view) {
        const std::size_t outside = path_.size();
        path_ += " " + std::to_string(view.content.index());
        expect(isHiddenByItself(widget) == view.isHidden, "hidden");
        std::visit([&](const auto& content) { compareContent(widget, content); }, view.content);
        path_.resize(outside);
    }

    [[nodiscard]] const std::vector<std::string>& found() const { return found_; }

private:
    void expect(bool isSo, const std::string& what) {
        if (!isSo) found_.push_back(path_ + ": " + what);
    }

    template <typename Widget>
    Widget* expectKind(QWidget& widget) {
        auto* const result = dynamic_cast<Widget*>(&widget);
        expect(result != nullptr, "kind");
        return result;
    }

    void expectWidth(const QWidget& widget, std::optional<double> width) {
        if (!width) return expect(widget.maximumWidth() == QWIDGETSIZE_MAX, "width");
        expect(widget.maximumWidth() == qRound(*width) && widget.minimumWidth() == qRound(*width), "width");
    }

    void expectSize(const QWidget& widget, Size size) {
        const QSize asked(qRound(size.width), qRound(size.height));
        expect(widget.minimumSize() == asked && widget.maximumSize() == asked, "size");
    }

    void expectText(const std::vector<Painting::Text>& texts, const AttributedText& asked, const QPalette& palette) {
        const std::vector<Letter> shown = letters(texts);
        auto letter = shown.begin();
        for (const TextRun& run : asked) {
            for (const QChar character : QString::fromStdString(run.text)) {
                if (character.isSpace()) continue;
                if (letter == shown.end()) return expect(false, "text is missing");
                expect(letter->letter == character, "text");
                expect(isFont(letter->font, run.font.value_or(controlFont)), "font");
                expect(isColor(letter->color, run.color.value_or(Color{SystemColor::label}), palette), "colour");
                expect(letter->isUnderlined == run.isUnderlined, "underline");
                ++letter;
            }
        }
        expect(letter == shown.end(), "more text");
    }

    void expectToolTip(const QWidget& widget, const std::string& toolTip) {
        // The toolkit takes a text that looks like mark-up for mark-up.
        const QString shown = widget.toolTip();
        const QString seen = Qt::mightBeRichText(shown) ? QTextDocumentFragment::fromHtml(shown).toPlainText() : shown;
        expect(seen.toStdString() == toolTip, "tool tip");
    }

    /// By the room that each line takes: that of its tallest text, above its base line and below.
    void expectLineSpacing(const std::vector<Painting::Text>& texts, double spacing) {
        std::optional<double> bottom;
        for (auto line = texts.begin(); line != texts.end();) {
            const auto next =
                std::find_if(line, texts.end(), [&](const auto& one) { return one.place.y() != line->place.y(); });
            double ascent = 0;
            double descent = 0;
            for (auto text = line; text != next; ++text) {
                ascent = std::max(ascent, text->ascent);
                descent = std::max(descent, text->descent);
            }
            const double top = line->place.y() - ascent;
            if (bottom) expect(std::abs(top - *bottom - std::round(spacing)) < 0.1, "line spacing");
            bottom = top + std::ceil(ascent + descent);
            line = next;
        }
    }

    void compareContent(QWidget& widget, const Stack& stack) {
        if (!expectKind<StackWidget>(widget)) return;
        expectWidth(widget, stack.width);
        expectBox(widget, stack.box);
        QLayout& layout = *widget.layout();
        if (layout.count() != static_cast<int>(stack.views.size())) return expect(false, "number of views");
        layout.invalidate();
        layout.setGeometry(widget.rect());
        expectPlaces(layout, stack);
        for (int i = 0; i < layout.count(); ++i)
            compare(*layout.itemAt(i)->widget(), stack.views[static_cast<std::size_t>(i)]);
    }

    void expectPlaces(QLayout& layout, const Stack& stack) {
        const Insets& insets = stack.insets;
        const QMargins edges(qRound(insets.left), qRound(insets.top), qRound(insets.right), qRound(insets.bottom));
        const QRect room = layout.geometry().marginsRemoved(edges);
        const bool isRow = stack.orientation == Stack::Orientation::horizontal;
        int along = isRow ? room.x() : room.y();
        for (std::size_t i = 0; i < stack.views.size(); ++i) {
            const View& view = stack.views[i];
            if (view.isHidden) continue;
            const QWidget& widget = *layout.itemAt(static_cast<int>(i))->widget();
            const QRect place = widget.geometry();
            const int spare = isRow ? room.height() - place.height() : room.width() - place.width();
            const int across = stack.alignment == Stack::Alignment::center ? spare / 2 : 0;
            const QPoint expected = isRow ? QPoint(along, room.y() + across) : QPoint(room.x() + across, along);
            expect(place.topLeft() == expected, "place of view " + std::to_string(i));
            along += (isRow ? place.width() : place.height()) + qRound(view.spacingAfter.value_or(stack.spacing));
        }
        // The right and lower edges show in the size that a stack asks for.
        expect(layout.contentsMargins() == edges, "insets");
    }

    void expectBox(QWidget& widget, const std::optional<Box>& box) {
        const Painting painting = paintingOf(widget);
        if (widget.size().isEmpty()) return;
        expect(painting.shapes.size() == (box ? 1U : 0U), "box");
        if (!box || painting.shapes.empty()) return;
        const Painting::Shape& shape = painting.shapes.front();
        const double inset = box->borderWidth / 2;
        const QRectF edge = QRectF(widget.rect()).adjusted(inset, inset, -inset, -inset);
        expect(isPath(shape.path, rounded(edge, std::max(0.0, box->cornerRadius - inset))), "shape of the box");
        expect(isColor(shape.brush.color(), box->background, widget.palette()), "background");
        if (box->borderWidth == 0) return expect(shape.pen.style() == Qt::NoPen, "border");
        expect(shape.pen.widthF() == box->borderWidth, "border's width");
        expect(isColor(shape.pen.color(), box->border, widget.palette()), "border's colour");
    }

    void compareContent(QWidget& widget, const Label& label) {
        const auto* shown = expectKind<LabelWidget>(widget);
        if (shown == nullptr) return;
        expect(shown->text() == plain(label.text), "plain text");
        expect(shown->textFormat() == Qt::PlainText, "mark-up");
        expect(shown->wordWrap() == label.wrapWidth.has_value(), "wraps");
        expectWidth(widget, label.wrapWidth);
        const Painting painting = paintingOf(widget);
        expectText(painting.texts, label.text, widget.palette());
        expectLineSpacing(painting.texts, label.lineSpacing);
        for (const Painting::Text& text : painting.texts) {
            // A blank at the end of a line hangs over its edge.
            const bool isInside = text.place.x() >= 0 && text.place.x() < widget.width() &&
                                  (text.text.back().isSpace() || text.place.x() + text.width < widget.width() + 1);
            expect(isInside, "lines end at the wrap width");
        }
    }

    void compareContent(QWidget& widget, const Button& button) {
        const auto* shown = expectKind<ItemButton>(widget);
        if (shown == nullptr) return;
        expect(shown->text() == plain(button.title), "plain text");
        expectToolTip(widget, button.toolTip);
        expect(widget.accessibleName().toStdString() == button.toolTip, "name");
        const Painting painting = paintingOf(widget);
        const bool showsTitle = button.imagePosition != Button::ImagePosition::only;
        expectText(painting.texts, showsTitle ? button.title : AttributedText{}, widget.palette());
        const QRectF image = expectImage(painting, button, widget.palette());
        for (const Painting::Text& text : painting.texts) expect(text.place.x() >= image.right(), "image before the title");
        if (button.width) expectWidth(widget, button.width);
        const int least = button.height ? qRound(*button.height) : 0;
        expect(widget.minimumHeight() == least && widget.maximumHeight() == (button.height ? least : QWIDGETSIZE_MAX),
               "height");
    }

    QRectF expectImage(const Painting& painting, const Button& button, const QPalette& palette) {
        const bool asksForImage = button.image && button.imagePosition != Button::ImagePosition::none;
        const QImage known = asksForImage ? pictureOf(*button.image, palette) : QImage();
        const bool showsImage = !known.isNull();
        expect(painting.pictures.size() == (showsImage ? 1U : 0U), "image");
        if (!showsImage || painting.pictures.empty()) return {};
        const Painting::Picture& picture = painting.pictures.front();
        const QSizeF asked(qRound(button.image->size.width), qRound(button.image->size.height));
        const QSizeF fitting = QSizeF(picture.image.size()).scaled(asked, Qt::KeepAspectRatio);
        expect(std::abs(picture.place.width() - fitting.width()) <= 1 &&
                   std::abs(picture.place.height() - fitting.height()) <= 1,
               "image's size");
        expect(picture.image.convertToFormat(QImage::Format_ARGB32) == known.convertToFormat(QImage::Format_ARGB32),
               "picture");
        return picture.place;
    }

    void compareContent(QWidget& widget, const PushButton& button) {
        const auto* shown = expectKind<PushButtonWidget>(widget);
        if (shown == nullptr) return;
        expect(shown->text().toStdString() == button.title, "plain text");
        expect(widget.accessibleName().toStdString() == button.title, "name");
        expectWidth(widget, button.width);
        std::set<QKeySequence> keys;
        for (const QShortcut* shortcut : widget.findChildren<QShortcut*>()) keys.insert(shortcut->key());
        expect(keys == keysOf(button.keyEquivalent) && shown->shortcut().isEmpty(), "keys");
        expectLook(widget, button);
    }

    static std::set<QKeySequence> keysOf(KeyEquivalent key) {
        if (key == KeyEquivalent::returnKey) return {Qt::Key_Return, Qt::Key_Enter};
        return key == KeyEquivalent::escape ? std::set<QKeySequence>{Qt::Key_Escape} : std::set<QKeySequence>{};
    }

    void expectLook(QWidget& widget, const PushButton& button) {
        const Painting painting = paintingOf(widget);
        QString painted;
        for (const Painting::Text& text : painting.texts) {
            painted += text.text;
            expect(isFont(text.font, button.font.value_or(controlFont)), "font");
        }
        expect(painted.toStdString() == button.title, "text");
        if (painting.shapes.size() != 1) return expect(false, "one shape");
        const QColor accent = widget.palette().color(QPalette::Highlight);
        const Painting::Shape& body = painting.shapes.front();
        const bool isFilled = body.brush.color().alpha() == 255 && body.brush.color().hue() == accent.hue();
        expect(isFilled == button.isProminent, "prominence");
        const bool hasAccentEdge = body.pen.style() != Qt::NoPen && body.pen.color() == accent;
        const bool isDefault = button.keyEquivalent == KeyEquivalent::returnKey && !button.isProminent;
        expect(hasAccentEdge == isDefault, "look of the default button");
    }

    void compareContent(QWidget& widget, const DisclosureTriangle& triangle) {
        const auto* shown = expectKind<DisclosureWidget>(widget);
        if (shown == nullptr) return;
        expect(shown->isChecked() == triangle.isOn, "on");
        expect(isFont(widget.font(), triangle.font), "font");
        expect(widget.accessibleName().toStdString() == triangle.accessibilityLabel, "name");
        const Painting painting = paintingOf(widget);
        if (painting.shapes.size() != 1) return expect(false, "one shape");
        const Painting::Shape& shape = painting.shapes.front();
        const QRectF place = shape.transform.map(shape.path).boundingRect();
        expect((place.width() > place.height()) == triangle.isOn, "direction");
        // Its base is about three quarters as long.
        const double base = std::max(place.width(), place.height()) / triangle.font.size;
        expect(base > 0.7 && base < 0.8, "size");
    }

    void compareContent(QWidget& widget, const TextButton& button) {
        const auto* shown = expectKind<TextButtonWidget>(widget);
        if (shown == nullptr) return;
        expect(shown->text() == plain(button.title), "plain text");
        expect(widget.accessibleName() == plain(button.title), "name");
        expect((widget.cursor().shape() == Qt::PointingHandCursor) == button.isLink, "link");
        expectToolTip(widget, button.toolTip);
        expectText(paintingOf(widget).texts, button.title, widget.palette());
    }

    void compareContent(QWidget& widget, const ImageView& image) {
        if (!expectKind<ImageWidget>(widget)) return;
        expectSize(widget, image.size);
        expect(widget.accessibleName().toStdString() == image.accessibilityLabel, "name");
        const Painting painting = paintingOf(widget);
        if (painting.shapes.size() != 1) return expect(qtIcon(image.image).isNull(), "one picture");
        const Painting::Shape& shape = painting.shapes.front();
        const QImage picture = shape.brush.textureImage();
        QSizeF size = QSizeF(picture.size()).scaled(image.size.width, image.size.height, Qt::KeepAspectRatio);
        // Sides that were rounded leave no gap.
        if (std::abs(size.width() - widget.width()) < 1 && std::abs(size.height() - widget.height()) < 1)
            size = widget.size();
        const QPointF corner((widget.width() - size.width()) / 2, (widget.height() - size.height()) / 2);
        expect(isPath(shape.path, rounded({corner, size}, image.cornerRadius)), "shape");
        expect(isPicture(picture, image.image), "picture");
    }

    void compareContent(QWidget& widget, const Separator& separator) {
        if (!expectKind<SeparatorWidget>(widget)) return;
        expectSize(widget, {separator.width, 1});
        const Painting painting = paintingOf(widget);
        if (painting.shapes.size() != 1) return expect(widget.size().isEmpty(), "line");
        const Painting::Shape& line = painting.shapes.front();
        expect(line.path.boundingRect() == QRectF(widget.rect()), "length");
        expect(isColor(line.brush.color(), {SystemColor::separator}, widget.palette()), "colour");
    }

    void compareContent(QWidget& widget, const Spacer& spacer) {
        expect(widget.metaObject() == &QWidget::staticMetaObject && widget.children().empty(), "kind");
        expectSize(widget, {1, spacer.height});
    }

    void compareContent(QWidget& widget, const FlexibleSpace&) {
        expect(widget.metaObject() == &QWidget::staticMetaObject && widget.children().empty(), "kind");
        expect(widget.minimumWidth() == 0 && widget.maximumWidth() == QWIDGETSIZE_MAX &&
                   widget.sizePolicy().horizontalPolicy() == QSizePolicy::Expanding,
               "flexible");
    }

    void compareContent(QWidget& widget, const ScrollView& scroll) {
        const bool isUpright = scroll.orientation == Stack::Orientation::vertical;
        auto* const area = isUpright ? static_cast<QScrollArea*>(expectKind<UprightScroller>(widget))
                                     : static_cast<QScrollArea*>(expectKind<SidewaysScroller>(widget));
        if (area == nullptr) return;
        expectSize(widget, scroll.size);
        compare(*area->widget(), *scroll.content);
    }

    void compareContent(QWidget& widget, const MenuBackground& background) {
        if (!expectKind<MenuBackgroundWidget>(widget)) return;
        widget.layout()->invalidate();
        widget.layout()->setGeometry(widget.rect());
        const Painting painting = paintingOf(widget);
        const int side = 2 * qCeil(background.cornerRadius);
        const QSize size = QSize(side, side).boundedTo(widget.size());
        const auto isPainted = [&](const QRectF& corner) {
            const auto outline = rounded(corner.adjusted(0.5, 0.5, -0.5, -0.5), background.cornerRadius - 0.5);
            return std::ranges::any_of(painting.shapes, [&](const auto& shape) { return isPath(shape.path, outline); });
        };
        for (const int x : {0, widget.width() - size.width()}) {
            for (const int y : {0, widget.height() - size.height()})
                expect(size.isEmpty() || isPainted(QRectF(QPoint(x, y), size)), "radius");
        }
        compare(*widget.layout()->itemAt(0)->widget(), *background.content);
    }

    std::string path_;
    std::vector<std::string> found_;
};

}  // namespace

std::vector<std::string> differences(QWidget& widget, const View& view) {
    if (widget.isWindow()) widget.resize(widget.sizeHint());
    Comparison comparison;
    comparison.compare(widget, view);
    return comparison.found();
}

}  // namespace ovin
