#pragma once

#include <QLayout>
#include <memory>
#include <vector>

#include "platform/Views.h"

namespace ovin {

/// Widgets one after the other, each at its preferred size. The toolkit's own layouts would distribute spare room, keep the
/// spacing after hidden widgets and have one spacing for all.
class StackLayout final : public QLayout {
public:
    StackLayout(Stack::Orientation orientation, Stack::Alignment alignment)
        : orientation_(orientation), alignment_(alignment) {}

    /// With a gap, in points, between the widget and the next one that is shown.
    void add(QWidget* widget, int gapAfter);

    void addItem(QLayoutItem* item) override;
    [[nodiscard]] int count() const override { return static_cast<int>(items_.size()); }
    [[nodiscard]] QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSize() const override { return sizeHint(); }
    void setGeometry(const QRect& rect) override;

private:
    struct Item {
        std::unique_ptr<QLayoutItem> item;
        int gapAfter;
    };
    struct Shown {
        QWidget* widget;
        QSize size;
        /// Before the next shown widget.
        int gap;
    };
    [[nodiscard]] std::vector<Shown> shown() const;
    [[nodiscard]] int along(QSize size) const;
    [[nodiscard]] int across(QSize size) const;
    [[nodiscard]] QSize contentSize(const std::vector<Shown>& views) const;
    [[nodiscard]] int offsetAcross(int room, int length) const;
    void giveFlexibleSpace(std::vector<Shown>& views, QSize room) const;

    const Stack::Orientation orientation_;
    const Stack::Alignment alignment_;
    std::vector<Item> items_;
};

/// The size that a widget takes when nothing limits it. Its hint alone is the size of its content, also where the view
/// states a width of its own.
[[nodiscard]] QSize naturalSize(const QWidget& widget);

/// Whether a widget itself was hidden, not only not shown yet because its parents are not.
[[nodiscard]] bool isHiddenOnPurpose(const QWidget& widget);

/// Whether a widget uses more width than it needs: a row with a flexible space in it.
[[nodiscard]] bool takesSpareWidth(const QWidget& widget);

}  // namespace ovin
