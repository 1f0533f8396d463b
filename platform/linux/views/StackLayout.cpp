#include "platform/linux/views/StackLayout.h"

#include <QWidget>
#include <algorithm>

namespace ovin {

void StackLayout::add(QWidget* widget, int gapAfter) {
    addWidget(widget);
    items_.back().gapAfter = gapAfter;
}

void StackLayout::addItem(QLayoutItem* item) { items_.push_back({std::unique_ptr<QLayoutItem>(item), 0}); }

QLayoutItem* StackLayout::itemAt(int index) const {
    const bool isThere = index >= 0 && index < count();
    return isThere ? items_[static_cast<std::size_t>(index)].item.get() : nullptr;
}

QLayoutItem* StackLayout::takeAt(int index) {
    if (itemAt(index) == nullptr) return nullptr;
    const auto place = items_.begin() + index;
    QLayoutItem* const item = place->item.release();
    items_.erase(place);
    return item;
}

std::vector<StackLayout::Shown> StackLayout::shown() const {
    std::vector<Shown> result;
    for (const Item& item : items_) {
        QWidget* const widget = item.item->widget();
        if (widget != nullptr && !isHiddenOnPurpose(*widget))
            result.push_back({widget, naturalSize(*widget), item.gapAfter});
    }
    return result;
}

int StackLayout::along(QSize size) const {
    return orientation_ == Stack::Orientation::horizontal ? size.width() : size.height();
}

int StackLayout::across(QSize size) const {
    return orientation_ == Stack::Orientation::horizontal ? size.height() : size.width();
}

QSize StackLayout::contentSize(const std::vector<Shown>& views) const {
    int length = 0;
    int breadth = 0;
    int gap = 0;
    for (const Shown& view : views) {
        length += gap + along(view.size);
        breadth = std::max(breadth, across(view.size));
        gap = view.gap;
    }
    return orientation_ == Stack::Orientation::horizontal ? QSize(length, breadth) : QSize(breadth, length);
}

QSize StackLayout::sizeHint() const { return contentSize(shown()).grownBy(contentsMargins()); }

int StackLayout::offsetAcross(int room, int length) const {
    return alignment_ == Stack::Alignment::center ? (room - length) / 2 : 0;
}

void StackLayout::giveFlexibleSpace(std::vector<Shown>& views, QSize room) const {
    if (orientation_ == Stack::Orientation::vertical) {
        for (Shown& view : views) {
            if (takesSpareWidth(*view.widget)) view.size.setWidth(std::max(view.size.width(), room.width()));
        }
        return;
    }
    int spare = std::max(0, room.width() - contentSize(views).width());
    auto takers = std::count_if(views.begin(), views.end(), [](const Shown& view) { return takesSpareWidth(*view.widget); });
    for (Shown& view : views) {
        if (!takesSpareWidth(*view.widget)) continue;
        const int share = spare / static_cast<int>(takers--);
        spare -= share;
        view.size.rwidth() += share;
    }
}

void StackLayout::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    const QRect room = rect.marginsRemoved(contentsMargins());
    std::vector<Shown> views = shown();
    giveFlexibleSpace(views, room.size());
    int position = 0;
    for (const Shown& view : views) {
        const int offset = offsetAcross(across(room.size()), across(view.size));
        const bool isRow = orientation_ == Stack::Orientation::horizontal;
        view.widget->setGeometry(
            {room.topLeft() + (isRow ? QPoint(position, offset) : QPoint(offset, position)), view.size});
        position += along(view.size) + view.gap;
    }
}

QSize naturalSize(const QWidget& widget) {
    return widget.sizeHint().expandedTo(widget.minimumSize()).boundedTo(widget.maximumSize()).expandedTo({0, 0});
}

bool isHiddenOnPurpose(const QWidget& widget) {
    return widget.isHidden() && widget.testAttribute(Qt::WA_WState_ExplicitShowHide);
}

bool takesSpareWidth(const QWidget& widget) { return widget.sizePolicy().horizontalPolicy() == QSizePolicy::Expanding; }

}  // namespace ovin
