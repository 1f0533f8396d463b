#pragma once

#include <QPainter>
#include <QTextLayout>

#include "platform/Views.h"

namespace ovin {

/// Text of several styles, laid out in lines. The text is never taken for mark-up; a line feed begins a new line.
class TextLines {
public:
    /// Lines wrap at `wrapWidth`; without it they break only at line feeds.
    TextLines(const AttributedText& text, const QPalette& palette, std::optional<double> wrapWidth = {},
              double lineSpacing = 0);

    /// As wide as the longest line, and in whole pixels, so that nothing is cut off.
    [[nodiscard]] QSize size() const { return size_; }

    void draw(QPainter& painter, QPointF topLeft) const;

private:
    void breakLines(std::optional<double> wrapWidth, double lineSpacing);

    QTextLayout layout_;
    QColor color_;
    QSize size_;
};

/// The text without its styles.
[[nodiscard]] QString plainText(const AttributedText& text);

}  // namespace ovin
