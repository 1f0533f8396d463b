#pragma once

#include <QPainter>
#include <QTextLayout>

#include "platform/Views.h"

namespace ovin {

/// Text of several kinds, laid out in lines. What the text says is never taken for mark-up; a line feed begins a new line.
class TextLines {
public:
    /// Where the text has no font or colour of its own.
    struct Defaults {
        Font font;
        Color color;
    };

    /// Lines break at `wrapWidth`, or only where the text says so.
    TextLines(const AttributedText& text, const Defaults& defaults, const QPalette& palette,
              std::optional<double> wrapWidth = {}, double lineSpacing = 0);

    /// As wide as the longest line, and in whole pixels, so that nothing is cut off.
    [[nodiscard]] QSize size() const { return size_; }

    void draw(QPainter& painter, QPointF topLeft) const;

private:
    void breakLines(std::optional<double> wrapWidth, double lineSpacing);

    QTextLayout layout_;
    QColor color_;
    QSize size_;
};

/// The text without its kinds.
[[nodiscard]] QString plainText(const AttributedText& text);

}  // namespace ovin
