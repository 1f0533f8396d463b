#pragma once

#include <QWidget>

#include "platform/linux/views/ViewWidget.h"

namespace ovin {

/// A thin horizontal line.
class SeparatorWidget final : public QWidget, public ViewWidget {
public:
    explicit SeparatorWidget(const Separator& separator);

    [[nodiscard]] decltype(View::content) content() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const double width_;
};

/// Nothing, of a height.
class SpacerWidget final : public QWidget, public ViewWidget {
public:
    explicit SpacerWidget(const Spacer& spacer);

    [[nodiscard]] decltype(View::content) content() const override;

private:
    const double height_;
};

/// Nothing, that takes what its row has to spare.
class FlexibleSpaceWidget final : public QWidget, public ViewWidget {
public:
    FlexibleSpaceWidget();

    [[nodiscard]] decltype(View::content) content() const override { return FlexibleSpace{}; }
    [[nodiscard]] QSize sizeHint() const override { return {0, 0}; }
};

}  // namespace ovin
