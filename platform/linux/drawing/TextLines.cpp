#include "platform/linux/drawing/TextLines.h"

#include <QTextCharFormat>
#include <QTextOption>
#include <cmath>
#include <limits>

#include "platform/linux/drawing/QtColors.h"
#include "platform/linux/drawing/QtFonts.h"

namespace ovin {
namespace {

QTextCharFormat format(const TextRun& run, const TextLines::Defaults& defaults, const QPalette& palette) {
    QTextCharFormat result;
    result.setFont(qtFont(run.font.value_or(defaults.font)));
    result.setForeground(qtColor(run.color.value_or(defaults.color), palette));
    result.setFontUnderline(run.isUnderlined);
    return result;
}

QList<QTextLayout::FormatRange> formats(const AttributedText& text, const TextLines::Defaults& defaults,
                                        const QPalette& palette) {
    QList<QTextLayout::FormatRange> ranges;
    int start = 0;
    for (const TextRun& run : text) {
        const auto length = static_cast<int>(QString::fromStdString(run.text).size());
        ranges.push_back({start, length, format(run, defaults, palette)});
        start += length;
    }
    return ranges;
}

}  // namespace

TextLines::TextLines(const AttributedText& text, const Defaults& defaults, const QPalette& palette,
                     std::optional<double> wrapWidth, double lineSpacing)
    : layout_(plainText(text).replace(QChar::LineFeed, QChar::LineSeparator),
              qtFont(text.empty() ? defaults.font : text.front().font.value_or(defaults.font))),
      color_(qtColor(defaults.color, palette)) {
    layout_.setFormats(formats(text, defaults, palette));
    QTextOption option;
    option.setWrapMode(wrapWidth ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::ManualWrap);
    layout_.setTextOption(option);
    breakLines(wrapWidth, lineSpacing);
}

void TextLines::breakLines(std::optional<double> wrapWidth, double lineSpacing) {
    double bottom = 0;
    double width = 0;
    layout_.beginLayout();
    for (QTextLine line = layout_.createLine(); line.isValid(); line = layout_.createLine()) {
        if (bottom > 0) bottom += lineSpacing;
        line.setLineWidth(wrapWidth ? std::round(*wrapWidth) : std::numeric_limits<int>::max() / 256);
        // Lines that begin between two pixels would be blurred.
        bottom = std::round(bottom);
        line.setPosition({0, bottom});
        bottom += std::ceil(line.height());
        width = std::max(width, line.naturalTextWidth());
    }
    layout_.endLayout();
    size_ = {static_cast<int>(std::ceil(width)), static_cast<int>(std::ceil(bottom))};
}

void TextLines::draw(QPainter& painter, QPointF topLeft) const {
    painter.setPen(color_);
    layout_.draw(&painter, topLeft);
}

QString plainText(const AttributedText& text) {
    QString plain;
    for (const TextRun& run : text) plain += QString::fromStdString(run.text);
    return plain;
}

}  // namespace ovin
