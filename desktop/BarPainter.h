#pragma once

#include <QFont>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QSize>

#include "desktop/BarLayout.h"

namespace ovin {

/// Draws the parts of the menu bar. All measures are logical pixels.
class BarPainter {
public:
    static constexpr int barHeight = 28;
    /// The size that symbolic icons are drawn for: others are blurred or fall back to it.
    static constexpr int iconHeight = 16;
    /// On each side of an icon.
    static constexpr int iconPadding = 7;
    static constexpr int expanderWidth = 30;

    BarPainter(QPainter& painter, const QPalette& palette, QSize bar);

    [[nodiscard]] static QFont font(QFont::Weight weight);
    /// The width of a clock's slot. It is the same for all times of a day.
    [[nodiscard]] static int clockWidth(QString time);
    /// Of icons that have no colours of their own, and of texts.
    [[nodiscard]] static QColor foreground(const QPalette& palette);

    void paintBackground();
    /// Behind an item that is pressed or whose menu is open.
    void paintHighlight(const BarSpan& span);
    void paintIcon(const BarSpan& span, const QPixmap& icon);
    /// The name of the active application, as far as there is room before `end`.
    void paintApplication(const QString& name, int end);
    void paintExpander(const BarSpan& span, bool isExpanded);
    void paintClock(const BarSpan& span, const QString& time);

private:
    QPainter& painter_;
    QColor background_;
    QColor foreground_;
    QSize bar_;
};

}  // namespace ovin
