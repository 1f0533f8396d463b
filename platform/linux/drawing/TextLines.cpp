#include "platform/linux/drawing/TextLines.h"

#include <QTextCharFormat>
#include <QTextOption>
#include <cmath>
#include <limits>

#include "platform/linux/drawing/QtColors.h"
#include "platform/linux/drawing/QtFonts.h"

namespace ovin {
namespace {

/// Those of all controls that show such text.
constexpr Font defaultFont{13, Font::Weight::regular};
constexpr Color defaultColor{SystemColor::label};

QTextCharFormat format(const TextRun& run, const QPalette& palette) {
    QTextCharFormat result;
    result.setFont(qtFont(run.font.value_or(defaultFont)));
    result.setForeground(qtColor(run.color.value_or(defaultColor), palette));
    result.setFontUnderline(run.isUnderlined);
    return result;
}

QList<QTextLayout::FormatRange> formats(const AttributedText& text, const QPalette& palette) {
    QList<QTextLayout::FormatRange> ranges;
    int start = 0;
    for (const TextRun& run : text) {
        const auto length = static_cast<int>(QString::fromStdString(run.text).size());
        ranges.push_back({start, length, format(run, palette)});
        start += length;
    }
    return ranges;
}

}  // namespace

TextLines::TextLines(const AttributedText& text, const QPalette& palette, std::optional<double> wrapWidth,
                     double lineSpacing)
    : layout_(plainText(text).replace(QChar::LineFeed, QChar::LineSeparator),
              qtFont(text.empty() ? defaultFont : text.front().font.value_or(defaultFont))),
      color_(qtColor(defaultColor, palette)) {
    layout_.setFormats(formats(text, palette));
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
