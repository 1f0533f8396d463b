#pragma once

#include <QWidget>
#include <vector>

#include "platform/linux/views/StackLayout.h"
#include "platform/linux/views/ViewWidget.h"

namespace ovin {

/// Views one after the other, in front of a box where there is one.
class StackWidget final : public QWidget, public ViewWidget {
public:
    /// `views` are the widgets of the stack's views, in the same order.
    StackWidget(const Stack& stack, const std::vector<QWidget*>& views);

    [[nodiscard]] decltype(View::content) content() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] Insets insets() const;

    StackLayout* const layout_;
    /// All but the views.
    const Stack described_;
};

}  // namespace ovin
