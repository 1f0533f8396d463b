#pragma once

#include <QWidget>
#include <optional>
#include <vector>

#include "platform/Views.h"

namespace ovin {

/// Views one after the other, in front of the stack's box if it has one.
class StackWidget final : public QWidget {
public:
    /// `views` are the widgets of the stack's views, in the same order.
    StackWidget(const Stack& stack, const std::vector<QWidget*>& views);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const std::optional<Box> box_;
};

}  // namespace ovin
